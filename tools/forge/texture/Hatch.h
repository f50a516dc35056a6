// The hatch: one grey map that turns any tone into pencil strokes. A texel is inked where the tone is below
// it.
#pragma once

#include "texture/Plate.h"

namespace forge {

struct HatchSettings {
    int size = 512;
    int seed = 1;
    float angle = 38;            // degrees the strokes fall to the right
    float scatter = 3;           // degrees, either way
    float cross = 0.5f;          // tone below which strokes cross
    float crossAngle = 64;       // degrees between the two directions
    float length[2] = {70, 190}; // texels
    float halfWidth[2] = {1.0f, 1.5f};
};

// Of all texels, the share above any tone t is 1 - t: tone in is tone out. Wraps at every edge.
Plate hatchThresholds(const HatchSettings& settings);

// The share of ink a tone gets: ink = smoothstep(tone - soft, tone + soft, texel), averaged.
float hatchCoverage(const Image& hatch, float tone, float soft);

} // namespace forge
