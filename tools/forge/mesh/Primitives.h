// Exact solids, each about its own origin, closed unless said, counter-clockwise from outside.
#pragma once

#include "mesh/Outline.h"
#include "mesh/Surface.h"

namespace forge {

// Edges and corners cut off by `bevel`: 44 triangles, 12 without.
Surface boxSurface(const Zelkor::Vec3& size, float bevel);

// The outline in x,y, from -depth/2 to depth/2 along z, its front and back rims cut off by `bevel`. Empty
// when the outline crosses itself.
Surface prismSurface(Outline outline, float depth, float bevel);

// A profile of (distance from the axis, height), turned about the y axis through `arc` degrees; 360 closes
// it. A profile that starts and ends on the axis, or whose ends meet, is closed.
Surface latheSurface(const std::vector<Zelkor::Vec2>& profile, int sides, float arc);

// Rings of equally many points joined in order; `capped` closes the first and the last ring by a fan. The
// rings run counter-clockwise seen from the last one.
Surface loftSurface(const std::vector<std::vector<Zelkor::Vec3>>& rings, bool capped);

// A round tube along a path; w of each knot is the radius. A closed path joins its end to its start.
Surface tubeSurface(const std::vector<Zelkor::Vec4>& knots, int sides, bool closed);

// A rectangle facing +z; two-sided ones get a back as well.
Surface planeSurface(const Zelkor::Vec2& size, bool twoSided);

// A ribbon between two rows of points, facing the viewer when `left` is seen left of `right`.
Surface stripSurface(const std::vector<Zelkor::Vec3>& left, const std::vector<Zelkor::Vec3>& right,
                     bool twoSided);

// A board along x: `wobble` moves its long edges, `chip` its ends, both in units; never two alike for two
// seeds.
Surface plankSurface(const Zelkor::Vec3& size, float bevel, float wobble, float chip, float step, int seed);

// A convex lump cut by `cuts` chance planes inside the box of that size, with about `triangles` triangles.
Surface rockSurface(const Zelkor::Vec3& size, int cuts, int triangles, int seed);

} // namespace forge
