#include "gui/GuiObject.h"

#include "gui/GuiSprite.h"

namespace Zelkor {

void advanceSprites(GuiObject& object, float seconds) {
    if (object.kind == GuiKind::sprite) static_cast<GuiSprite&>(object).advance(seconds);
    if (const GuiChildren* children = object.children())
        for (const auto& child : *children)
            advanceSprites(*child, seconds);
}

} // namespace Zelkor
