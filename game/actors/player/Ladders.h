// Ladders within the hero's reach: tiles, and ladders that move.
#pragma once

#include "math/Math.h"

#include <optional>

class MovingLadder;
class PlayerStandard;
class ThingyManager;
class TileGrid;

// World units. A ladder of tiles stands still; one that moves is read again in every step.
struct Ladder {
    float x = 0;
    float base = 0;      // the middle of its lowest cell, from which rungs are counted
    float usableTop = 0; // feet have to be below
    bool hasTop = false; // a ladder top to climb onto
    float surface = 0;   // of that top
    MovingLadder* actor = nullptr;

    // The ladder as it is now; none when it has gone.
    std::optional<Ladder> now(const TileGrid* grid, const ThingyManager* actors) const;
};

// What holding the stick up or down, as far as directionY, makes the hero take hold of.
std::optional<Ladder> ladderToGrab(const TileGrid* grid, const ThingyManager* actors,
                                   const Zelkor::Vec3& feet, float directionY);
