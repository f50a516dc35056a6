// Grey maps that wrap, 1 is bare paper: what the paper and the drawn materials are made of.
#pragma once

#include "texture/Plate.h"

namespace forge {

// The tooth of drawing paper: fine fibres over soft clouds, every height equally frequent.
Plate paperGrain(int size, int seed);

} // namespace forge
