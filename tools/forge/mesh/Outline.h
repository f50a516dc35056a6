// Closed and open 2D outlines.
#pragma once

#include "math/Math.h"

#include <array>
#include <vector>

namespace forge {

using Outline = std::vector<Zelkor::Vec2>;

// Twice the enclosed area; positive when counter-clockwise.
float signedArea2(const Outline& outline);
void makeCounterClockwise(Outline& outline);

// Negative inside.
float signedDistance(const Outline& outline, const Zelkor::Vec2& p);

// A smooth curve through the points (centripetal in effect: uniform Catmull-Rom), `steps` pieces each.
Outline splineThrough(const Outline& points, bool closed, int steps);
std::vector<Zelkor::Vec3> splineThrough(const std::vector<Zelkor::Vec3>& points, bool closed, int steps);

// Moves every side inwards by `by` (corners by the mitre, at most twice that). Counter-clockwise outlines.
Outline inset(const Outline& outline, float by);

// Splits sides longer than `step` and pushes the new points in and out by up to `amount`; the given corners
// stay, so that neighbours still meet.
Outline roughened(const Outline& outline, float amount, float step, int seed);

// Ear clipping; indices into the outline, counter-clockwise. Empty when the outline crosses itself so that
// its parts cancel out or no triangulation is found.
std::vector<std::array<int, 3>> triangulate(const Outline& outline);

} // namespace forge
