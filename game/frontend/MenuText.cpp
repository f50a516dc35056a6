#include "frontend/MenuText.h"

#include "core/EngineManagers.h"
#include "gui/GuiPanel.h"
#include "render/Renderer.h"

using namespace Zelkor;

GuiObject& sceneText(GuiPanel& parent, const char* font, const std::string& text, const Vec3& position,
                     float height) {
    GuiObject& object = *parent.createChild(GuiKind::text, position.x, position.y, position.z, 1, height);
    object.setFont(font);
    object.setText(text);
    object.setTextParam(height);
    return object;
}

GuiObject& screenText(GuiPanel& parent, const char* font, const std::string& text, const Vec3& position,
                      float height) {
    GuiObject& object = sceneText(parent, font, text, position, height);
    keepLetterShape(object);
    return object;
}

void keepLetterShape(GuiObject& text) {
    const float aspect = engineManagers()->renderer->aspect;
    text.setCharHeight(aspect > 0 ? 1 / aspect : 1);
}
