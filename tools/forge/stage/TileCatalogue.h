// What the stage compiler knows about tiles: which exist, how many cells each covers and what it does there.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace forge {

// Collision kinds as the tile definitions number them.
namespace tile_type {
inline constexpr int solid = 1;
inline constexpr int ladder = 2;
inline constexpr int ladderTop = 4;
inline constexpr int deadly = 8;     // together with solid or ladderTop; alone: rails of trolleys
inline constexpr int bridge = 0x100; // breaks
} // namespace tile_type

struct TileKind {
    std::string name;          // unit name, "tiles/area1/rock1"
    int width = 1, height = 1; // cells
    int type = tile_type::solid;
    bool stretchX = false, stretchY = false;
};

// Parses a tile definition file; entry names come out with the prefix before them. An entry without its ';'
// is left out, as the game leaves it out.
std::vector<TileKind> readTileKinds(const std::string& text, const std::string& prefix);

// Tiles found under an assets folder: models/NAME.model is the drawing, units/tiles/SET/tiledef.txt the
// rules.
class TileCatalogue {
  public:
    explicit TileCatalogue(std::filesystem::path assetsFolder) : assets(std::move(assetsFolder)) {}

    // Null when no model source has that name. A tile without a definition is one solid cell.
    const TileKind* find(const std::string& unitName);

  private:
    void loadSet(const std::string& set);

    std::filesystem::path assets;
    std::map<std::string, bool> loadedSets;
    std::map<std::string, TileKind> kinds; // defined ones, and default ones once asked for
};

} // namespace forge
