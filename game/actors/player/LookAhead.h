// How far the view runs ahead of the hero, towards where he is going.
#pragma once

#include "math/Math.h"

struct LookAhead {
    static constexpr float reach = 20, cartReach = 40; // to either side

    // moveX: the horizontal input, -1..1; up: the hero's up vector; limit: a reach; seconds.
    void update(float moveX, const Zelkor::Vec3& up, float limit, float dt);

    Zelkor::Vec2 offset{0, 10}; // added to the hero's position, world units
    float speed = 0;            // of offset.x, units per second
    float idleTime = 0;         // seconds without horizontal input
};
