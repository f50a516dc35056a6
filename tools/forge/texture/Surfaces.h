// Grey maps that wrap, 1 is bare paper: what the paper and the drawn materials are made of.
#pragma once

#include "texture/Plate.h"

namespace forge {

// The tooth of drawing paper: fine fibres over soft clouds, every height equally frequent.
Plate paperGrain(int size, int seed);

// What the drawn surfaces share. Every one wraps.
struct SurfaceSettings {
    int size = 256;
    int seed = 1;
    float ink = 0.8f; // how dark the darkest lines get, 0..1
};

// Grain along x that flows around knots.
Plate woodGrain(const SurfaceSettings& settings, int lines, int knots);

// Facets parted by cracks, some of them hatched.
Plate rockFacets(const SurfaceSettings& settings, int facets);

// Courses of bricks outlined by hand, every second one shifted, some of them hatched.
Plate brickWork(const SurfaceSettings& settings, int courses, int bricksInCourse);

// Clumps of small curls.
Plate foliageCurls(const SurfaceSettings& settings, int clumps);

// A stain of water colour with darker rims.
Plate washStain(const SurfaceSettings& settings, int spots);

} // namespace forge
