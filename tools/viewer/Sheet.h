// Contact sheets: a row a clip with its moments side by side, or several units in a grid.
#pragma once

#include "Exhibit.h"
#include "Studio.h"

#include "picture/Canvas.h"

#include <string>
#include <vector>

namespace Zelkor {
struct Image;
}

namespace viewer {

struct SheetOptions {
    std::vector<std::string> units;
    std::vector<std::string> held = {};
    std::vector<std::string> clips = {}; // empty: all of one unit's, the first of several units'
    int moments = 8;
    int size = 200; // pixels of a cell
    float zoom = 0; // 0: as in the game, or less for what would not fit
    float scale = 0;
    float yaw = -1000; // degrees; below -360: figures from the side, things from the front
    bool silhouette = false;
    std::string file;
};

// The picture is drawn twice as large as it is written, so that lines are smooth.
inline constexpr int sheetLines = 1440;

// False, with a word on standard error, when a unit is missing or the file cannot be written.
bool writeSheet(Studio& studio, const SheetOptions& options);

// The middle of a picture, size pixels a side: each the mean of four of the picture's.
forge::Canvas crop(const Zelkor::Image& image, int size);

} // namespace viewer
