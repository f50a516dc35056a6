// A flat region with holes, however many pieces it falls into: outlines joined and cut from one another.
#pragma once

#include "mesh/Outline.h"
#include "mesh/Surface.h"

#include <memory>

struct GEOSGeom_t;

namespace forge {

class Region {
  public:
    Region(); // empty
    // What the outlines enclose an odd number of times: letters, whose holes are outlines of their own.
    explicit Region(const std::vector<Outline>& outlines);

    bool empty() const;
    double area() const;

    Region joined(const Region& other) const;
    // Keeps every corner of both outlines.
    Region without(const Region& other) const;
    Region within(const Region& other) const;
    // Every edge moved outwards by so much, inwards when negative; corners stay corners.
    Region grown(float by) const;

    // The outlines: what they enclose lies to their left, holes run clockwise.
    std::vector<Outline> outlines() const;
    // Triangles between the corners of the outlines, counter-clockwise, at z = 0.
    Surface triangulated() const;

  private:
    using Geometry = std::shared_ptr<const GEOSGeom_t>;
    explicit Region(Geometry shape) : geometry(std::move(shape)) {}
    // Takes what an operation has made, on the grid; `tidied` also drops corners that are none.
    static Region owned(GEOSGeom_t* result);
    static Region tidied(GEOSGeom_t* result);

    Geometry geometry;
};

// The region from -depth/2 to depth/2 along z, the rim of its front cut off by `bevel`; closed.
Surface cutoutSurface(const Region& shape, float depth, float bevel);

} // namespace forge
