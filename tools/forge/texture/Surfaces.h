// Grey maps that wrap, 1 is bare paper: what the paper and the drawn materials are made of.
#pragma once

#include "texture/Plate.h"

namespace forge {

// The tooth of drawing paper: mean 0.5, fine fibres over soft clouds. `spread` is about how far it strays.
Plate paperGrain(int size, float spread, int seed);

} // namespace forge
