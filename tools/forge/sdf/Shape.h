// Signed distances of single solids: negative inside, in model units, about right near the surface.
#pragma once

#include "math/Math.h"
#include "mesh/Box.h"
#include "mesh/Outline.h"
#include "mesh/Warp.h"

#include <memory>

namespace forge {

class Shape {
  public:
    virtual ~Shape() = default;
    virtual float distance(const Zelkor::Vec3& p) const = 0;
    virtual Box bounds() const = 0;
};

using ShapePointer = std::unique_ptr<const Shape>;

// Two spheres of their own radii and the hull around them; equal ends give one sphere.
ShapePointer capsuleShape(const Zelkor::Vec3& from, const Zelkor::Vec3& to, float fromRadius, float toRadius);
ShapePointer ellipsoidShape(const Zelkor::Vec3& centre, const Zelkor::Vec3& radii);
// `size` is the whole width, height and depth, the rounding included.
ShapePointer boxShape(const Zelkor::Vec3& centre, const Zelkor::Vec3& size, float round);
// Flat ends; a cylinder when the radii are equal.
ShapePointer coneShape(const Zelkor::Vec3& from, const Zelkor::Vec3& to, float fromRadius, float toRadius,
                       float round);
ShapePointer torusShape(const Zelkor::Vec3& centre, float majorRadius, float minorRadius, Axis axis);
// The outline in x,y, from -depth/2 to depth/2 along z.
ShapePointer extrusionShape(const Outline& outline, float depth, float round);
// The outline's x is the distance from the y axis.
ShapePointer latheShape(const Outline& outline, float round);
// A capsule chain; w of each knot is its radius.
ShapePointer tubeShape(const std::vector<Zelkor::Vec4>& knots);
// Everything below the plane through `point`.
ShapePointer halfSpaceShape(const Zelkor::Vec3& point, const Zelkor::Vec3& normal);

} // namespace forge
