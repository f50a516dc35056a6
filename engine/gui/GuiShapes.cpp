#include "gui/GuiShapes.h"

#include "core/EngineManagers.h"
#include "render/MaterialManager.h"
#include "render/Renderer.h"

namespace Zelkor {

GuiCorners cornersOf(float left, float top, float right, float bottom) {
    return {left, top, right, top, left, bottom, right, bottom};
}

void GuiBitmap::setTexture(const std::string& name) {
    texture_ = engineManagers()->renderer->getTexture(name);
}

void GuiBitmap::setTextureRect(float left, float top, float right, float bottom) {
    corners_ = cornersOf(left, top, right, bottom);
}

float GuiText::textWidth() const {
    const Font* font = engineManagers()->materialManager->font(font_);
    if (!font) return 0;
    float aspects = 0;
    for (const char c : text_)
        aspects += font->glyph(c).aspect();
    return aspects * charHeight_;
}

void GuiText::setFont(const std::string& name) {
    font_ = engineManagers()->materialManager->findFont(name);
}

} // namespace Zelkor
