// Sheets of what the interface is made of: the letters of a font, the animations of a sprite.
#pragma once

#include "Studio.h"

#include <string>

namespace viewer {

// The size that they are meant to be read at.
inline constexpr int guiSheetWidth = 1280, guiSheetHeight = 720;

// All letters, and samples at the sizes that menus use. False, with a word on standard error, when there is
// no such font or the file cannot be written.
bool writeFontSheet(Studio& studio, const std::string& font, const std::string& file);

// A row an animation, its frames side by side as playing shows them. The same for the definition of a file.
bool writeSpriteSheet(Studio& studio, const std::string& definition, const std::string& file);

} // namespace viewer
