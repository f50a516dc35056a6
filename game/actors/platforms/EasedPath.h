// There and back along a straight line, with acceleration at both ends.
#pragma once

#include "math/Math.h"

struct EasedPath {
    Zelkor::Vec3 start, direction{1, 0, 0};
    float length = 60;       // world units
    float phase = 0;         // 0 to 1 outward, 1 to 2 back
    float phaseSpeed = 0.5f; // per second
    float period = 4;        // seconds out and back
    float easeTime = 0.4f;   // seconds of acceleration at each end

    // 0 length, 1 period, 2 phase, 3 ease time, 4 speed in units per second.
    void setParameter(int index, float value);
    void advance(float dt);
    bool returning() const { return phase > 1; }
    // The share of the line behind it, from the start.
    float share() const;
    Zelkor::Vec3 position() const { return start + direction * (length * share()); }

  private:
    float eased(float t) const;
};
