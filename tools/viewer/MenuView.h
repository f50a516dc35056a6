// Units together as the menus show them: each at the place its mesh gives it, before the menus' camera.
#pragma once

#include "Studio.h"

#include <string>
#include <vector>

namespace viewer {

struct MenuViewOptions {
    std::vector<std::string> units; // UNIT, or UNIT@X,Y moved by that much
    float erase = 0;                // how much of a map is still to be drawn, 0..1
    std::string file;               // of the picture, as large as the window
};

// False, with a word on standard error, when a unit is missing or the file cannot be written.
bool writeMenuView(Studio& studio, const MenuViewOptions& options);

} // namespace viewer
