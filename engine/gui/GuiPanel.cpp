#include "gui/GuiPanel.h"

#include "core/EngineManagers.h"
#include "gui/GuiShapes.h"
#include "gui/GuiSprite.h"
#include "gui/GuiTileArray.h"
#include "gui/OverlayManager.h"

#include <algorithm>

namespace Zelkor {

namespace {

std::unique_ptr<GuiObject> makeObject(GuiKind kind, const Vec3& position, float width, float height) {
    switch (kind) {
    case GuiKind::rect:
        return std::make_unique<GuiRect>(position, width, height);
    case GuiKind::bitmap:
        return std::make_unique<GuiBitmap>(position, width, height);
    case GuiKind::text:
        return std::make_unique<GuiText>(position, width, height);
    case GuiKind::panel:
        return std::make_unique<GuiPanel>(position, width, height);
    case GuiKind::sprite:
        return std::make_unique<GuiSprite>(position, width, height);
    case GuiKind::tileArray:
        return std::make_unique<GuiTileArray>(position, width, height);
    }
    return nullptr;
}

} // namespace

GuiObject* GuiPanel::createChild(GuiKind what, float x, float y, float z, float wide, float high) {
    auto object = makeObject(what, {x, y, z}, wide, high);
    return object ? children_.emplace_back(std::move(object)).get() : nullptr;
}

void GuiPanel::removeChild(const GuiObject* object) {
    std::erase_if(children_, [object](const auto& child) { return child.get() == object; });
}

GuiSprite* GuiPanel::createSprite(const std::string& definition, const Vec3& at) {
    auto sprite = std::make_unique<GuiSprite>(at, 0.0f, 0.0f);
    GuiSprite* made = sprite.get();
    made->setDefinition(engineManagers()->overlayManager->spriteDef(definition));
    children_.push_back(std::move(sprite));
    return made;
}

} // namespace Zelkor
