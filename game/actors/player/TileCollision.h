// How the hero's body is pushed out of the tiles: a function of the grid and of the body alone.
#pragma once

#include "math/Math.h"

class TileGrid;

// The axis-aligned box that collides, in world units.
struct HeroBox {
    Zelkor::Vec3 centre;
    Zelkor::Vec3 half;         // x and y
    int verticalAxis;          // 0: world x, 1: world y
    Zelkor::Vec3 toBodyCentre; // from the box centre
};

// The box of a body that stands along up (a unit vector along a world axis).
HeroBox heroBox(const Zelkor::Vec3& bodyCentre, const Zelkor::Vec3& up, bool crouching);

struct TileBody {
    Zelkor::Vec3 bodyCentre;
    Zelkor::Vec3 up{0, 1, 0};
    Zelkor::Vec3 lastPosition; // of the feet, at the end of the previous frame
    Zelkor::Vec3 velocity;     // in the world, over this frame
    float dt = 0;
    bool crouching = false;
    // Tile types that a probe below the box centre (in the world) meets, and every other probe.
    int lowerMask = 0, upperMask = 0;
    // Contacts already found in this frame: the world sign of a push along the horizontal axis, and of one
    // along the vertical axis.
    float wallSide = 0, groundSide = 0;
};

struct TileContact {
    Zelkor::Vec3 bodyCentre;
    float wallSide = 0;
    float groundSide = 0; // +1 ground under the feet, -1 a ceiling, whatever way up is
    bool killed = false;  // by a deadly tile; the body has not moved
};

TileContact collideWithTiles(const TileGrid& grid, const TileBody& body);
