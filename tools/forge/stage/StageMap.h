// A whole stage at a glance: cells by kind, camera areas, exits, events, and the places the hero can get to.
#pragma once

#include "stage/Reach.h"
#include "stage/Stage.h"
#include "stage/StageGrid.h"

#include <cstdint>
#include <vector>

namespace forge {

struct MapPicture {
    int width = 0, height = 0;
    std::vector<std::uint8_t> rgb; // top row first
};

MapPicture drawStageMap(const Stage& stage, const StageGrid& grid, const ReachResult& reach);

// False when the file cannot be written.
bool writePng(const MapPicture& picture, const std::string& file);

} // namespace forge
