// What lies on a sheet of the stage map, and where: in units of the board, from its lower left corner, y up.
#pragma once

#include "math/Math.h"

#include <string>
#include <vector>

struct MapItem {
    enum class Kind { stage, previousPage, nextPage };

    static constexpr float size = 12; // each is a square

    Kind kind = Kind::stage;
    int stage = 0;        // that it leads to, also of an arrow
    Zelkor::Vec2 corner;  // the lower left one
    Zelkor::Vec2 centre() const { return {corner.x + size / 2, corner.y + size / 2}; }
};

namespace MapPage {
inline constexpr int stages = 5, pages = 4;

// The way over the sheet, from left to right: arrow back, the stages, arrow on if the next sheet is open.
std::vector<MapItem> items(int page, int unlockedStage);
// Names of an animation of the icons: "cleared", "locked", "fifth" or "open".
const char* icon(int stage, int unlockedStage, int clearedMask);
// "maps/map1" to "maps/map4".
std::string picture(int page);
} // namespace MapPage
