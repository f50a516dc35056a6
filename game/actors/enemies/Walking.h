// How walkers feel their way over tiles and platforms.
#pragma once

#include "actors/Thingy.h"

// Where a floor ends to the left and to the right, world x.
struct FloorLimits {
    float left = 0, right = 0;

    float length() const { return right - left; }
    // Of the end it faces (+1 right, -1 left).
    float end(int facing) const { return facing < 0 ? left : right; }
    // How much floor is left between x and that end, negative beyond it.
    float ahead(float x, int facing) const { return (end(facing) - x) * static_cast<float>(facing); }
};

// A solid tile holds the point.
bool solidAt(const Zelkor::Vec3& point);
// The same, or a platform.
bool groundAt(const Zelkor::Vec3& point);
// Of the floor under feet: it ends where its cells end and where a wall stands on it, up to two cells high.
FloorLimits floorUnder(const Zelkor::Vec3& feet);

// Speeds up towards topSpeed to the side it faces.
void walkTowards(Thingy& walker, int facing, float topSpeed, float acceleration, float dt);
// A solid cell or a platform so far ahead of the feet and so high above them.
bool wallAhead(const Thingy& walker, int facing, float reach, float height);
// Turns at such a wall: the facing is reversed and it stands for the frame. True when it turned.
bool turnAtWall(Thingy& walker, int& facing, float reach, float height);
// No ground so far ahead and 5 below the feet.
bool edgeAhead(const Thingy& walker, int facing, float reach);
// Puts falling or standing feet onto the ground that they are in: tiles below either foot, feet that far
// apart from the middle, or platforms, whose movement it takes. False in the air; rising feet are.
bool standOnTiles(Thingy& walker, float footDistance);
// Gravity, up to a speed of falling; then moves by the velocity.
void fall(Thingy& walker, float gravity, float fastestFall, float dt);
