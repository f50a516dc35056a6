#include "mesh/Angles.h"

#include <cmath>

namespace forge {

using Zelkor::Quat;
using Zelkor::Vec3;

Quat quatFromDegrees(const Vec3& degrees) {
    const Quat twist = Zelkor::quatFromAxisAngle(radians(degrees.y), {0, 1, 0});
    const Quat lean = Zelkor::quatFromAxisAngle(radians(degrees.x), {1, 0, 0});
    const Quat swing = Zelkor::quatFromAxisAngle(radians(degrees.z), {0, 0, 1});
    return swing * (lean * twist);
}

Quat quatBetween(const Vec3& a, const Vec3& b) {
    const float c = Zelkor::dot(a, b);
    if (c < -0.99999f) { // opposite: half a turn about anything square to a
        const Vec3 side = normalized(cross(a, std::fabs(a.x) < 0.9f ? Vec3{1, 0, 0} : Vec3{0, 1, 0}));
        return {0, side.x, side.y, side.z};
    }
    const Vec3 axis = cross(a, b);
    Quat q{1 + c, axis.x, axis.y, axis.z};
    Zelkor::quatNormalize(q);
    return q;
}

} // namespace forge
