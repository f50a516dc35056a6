// A stage as its source describes it, with every position already in world units.
#pragma once

#include "math/Math.h"
#include "stage/TileCatalogue.h"
#include "text/Place.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace forge {

inline constexpr float cellSize = 10; // world units
// How far a zone that asks for feet reaches below the floor they rest in.
inline constexpr float feetMargin = 1;

struct StageTile {
    const TileKind* kind = nullptr;
    int column = 0, row = 0; // of the lowest and leftmost cell; for tiles of the play plane only
    char mark = 0;           // its character in the map, if it has one
    Zelkor::Vec3 position;
    Place place;
};

struct NamedTarget {
    std::string name;
    Place place;
};

struct StageEvent {
    std::string name;
    std::string keyword;
    std::string fields; // as the event file writes them, without the keyword
    std::vector<NamedTarget> triggers;
    std::vector<std::pair<int, float>> params;
    std::optional<Zelkor::Vec3> at; // where it spawns something
    std::optional<std::pair<Zelkor::Vec2, Zelkor::Vec2>> box;
    std::string actor, mesh;      // of what it spawns
    Zelkor::Vec2 direction{1, 0}; // the way that faces
    int number = -1;              // the direction of a camera edge, the menu of an OpenMenu
    bool instant = false;
    Place place;
};

struct Stage {
    int number = 0;
    std::string fileName;           // of its files, when it has no number
    bool unwalked = false;          // takes more to get through than the search knows
    Zelkor::Vec2 origin;            // world position of the centre of column 0, row 0
    std::vector<StageTile> tiles;   // the play plane, bottom row first
    std::vector<StageTile> scenery; // every other depth
    std::vector<StageEvent> events;
    std::vector<NamedTarget> startup;
    Place end; // of the source, for what is missing altogether

    float columnX(float column) const { return origin.x + cellSize * column; }
    float rowY(float row) const { return origin.y + cellSize * row; }
    // -1 when no event has that name.
    int eventIndex(const std::string& name) const;
};

// Throws SourceError, naming file, line and column, for anything that does not fit.
Stage parseStage(const std::string& file, const std::string& text, TileCatalogue& catalogue);

} // namespace forge
