// The text formats of a stage's tiles as plain records: levels and tile definitions. Reading them touches
// nothing else, whatever the text holds.
#pragma once

#include "math/Math.h"

#include <string>
#include <vector>

namespace Zelkor {
class TokenReader;
}

struct TileDef {
    std::string name;                        // tile set folder + entry name, "tiles/area1/" + the entry
    Zelkor::Vec3 size{1, 1, 1};              // cells, each 0..maxTileSize
    int type = 1;                            // bits of TileType
    bool stretchX = false, stretchY = false; // runs merge into one mesh
};

struct TilePlacement {
    int name = 0; // in LevelData::names
    Zelkor::Vec3 position;
};

struct LevelData {
    float originX = 0, originY = 0;   // centre of cell (0, 0)
    int width = 0, height = 0;        // cells, at most maxGridCells in all
    std::vector<std::string> names;   // of the tiles' units, each once
    std::vector<TilePlacement> tiles; // in file order
};

inline constexpr int maxGridCells = 1'000'000; // five times a large stage
inline constexpr float worldLimit = 1e6f;      // of any coordinate in a stage, world units
inline constexpr float maxTileSize = 100;      // cells

// Reads a tile definition file's entries, each name with prefix before it, and appends them. An entry that
// the end of the data cuts off before its ";" is dropped.
void readTileDefs(Zelkor::TokenReader& reader, const std::string& prefix, std::vector<TileDef>& defs);

// A header that asks for more than maxGridCells, or for less than nothing, counts as 0 x 0: the tiles then
// grow the grid as far as they need. Dropped: the entry that the end of the data cuts off, and entries beyond
// worldLimit.
LevelData readLevelData(Zelkor::TokenReader& reader);
