// Triangles over shared positions: what every modelling step hands to the next. Counter-clockwise from
// outside.
#pragma once

#include "mesh/Box.h"
#include "mesh/Warp.h"

#include <array>
#include <vector>

namespace forge {

using Triangle = std::array<int, 3>;

struct Surface {
    std::vector<Zelkor::Vec3> positions;
    std::vector<Triangle> triangles;
};

Box boundsOf(const Surface& surface);

// Appends b's triangles to a.
void append(Surface& a, const Surface& b);

// Moves every position through the chain, splitting long edges first when the chain curves, and keeps the
// triangles' outside outside. `step` is the longest edge a curve may keep.
void applyWarps(Surface& surface, const WarpChain& chain, float step);

// Halves every edge longer than `longest` until none is; neighbours stay joined.
void splitLongEdges(Surface& surface, float longest);

// Joins positions that coincide and drops triangles without area.
void weld(Surface& surface);

// Drops triangles until at most `target` are left, keeping the shape as well as that allows; fewer removals
// when the topology holds it up.
void simplify(Surface& surface, int target);

// Per-position normals: the angle-weighted mean of the faces around.
std::vector<Zelkor::Vec3> smoothNormals(const Surface& surface);

} // namespace forge
