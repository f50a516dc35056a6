// The corners of particles as quads that face the camera.
#pragma once

#include "math/Math.h"

#include <cstdint>
#include <vector>

namespace Zelkor {

class ParticleSystem;

struct BillboardVertex {
    Vec3 position; // in the world
    Vec2 texCoord;
    std::uint32_t colour; // bytes from the lowest: red, green, blue, alpha
};

// 0..1 each, what lies beyond is cut.
std::uint32_t billboardColour(const Vec4& colour);

// Four vertices for each live particle, in the order of the pool, anticlockwise from the upper left. The
// pivot is the point of the quad that lies on the particle and that it turns about, in widths and heights
// from its middle; its z moves the quad towards the viewer, in world units. right and up: of the camera.
// Returns the number of particles; vertices only ever grows, so that one buffer serves every set.
int buildBillboards(const ParticleSystem& system, const Vec3& right, const Vec3& up,
                    std::vector<BillboardVertex>& vertices);

} // namespace Zelkor
