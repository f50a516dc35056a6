// Texts on a menu's screen.
#pragma once

#include "math/Math.h"

#include <string>

namespace Zelkor {
class GuiObject;
class GuiPanel;
} // namespace Zelkor

// position: of its top left corner; height of a line: both in fractions of the screen.
Zelkor::GuiObject& screenText(Zelkor::GuiPanel& parent, const char* font, const std::string& text,
                              const Zelkor::Vec3& position, float height);
// In the menus' scene: position and height in its units.
Zelkor::GuiObject& sceneText(Zelkor::GuiPanel& parent, const char* font, const std::string& text,
                             const Zelkor::Vec3& position, float height);
// Letters on a screen are as wide as they should be only for its shape: to be called in every update.
void keepLetterShape(Zelkor::GuiObject& text);
