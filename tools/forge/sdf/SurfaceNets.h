// Polygonises a field.
#pragma once

#include "mesh/Surface.h"
#include "sdf/Field.h"

namespace forge {

// One vertex in each grid cell the surface passes through, moved onto the surface along the gradient. The
// result is closed. Cells are `cell` wide, or wider when the grid would pass 160 a side.
Surface surfaceNets(const Field& field, float cell);

} // namespace forge
