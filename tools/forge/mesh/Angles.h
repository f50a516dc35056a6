// Angles as people write them.
#pragma once

#include "math/Math.h"

namespace forge {

inline float radians(float degrees) {
    return degrees * (Zelkor::pi / 180);
}

// Degrees about the fixed axes: y (twist) first, then x (lean), then z (swing).
Zelkor::Quat quatFromDegrees(const Zelkor::Vec3& degrees);

// The shortest rotation that takes unit vector a to unit vector b.
Zelkor::Quat quatBetween(const Zelkor::Vec3& a, const Zelkor::Vec3& b);

inline Zelkor::Quat operator*(const Zelkor::Quat& a, const Zelkor::Quat& b) {
    Zelkor::Quat out;
    return Zelkor::quatMultiply(out, a, b);
}
inline Zelkor::Quat inverse(const Zelkor::Quat& q) {
    Zelkor::Quat out;
    return Zelkor::quatInverse(out, q);
}
inline Zelkor::Vec3 rotate(const Zelkor::Quat& q, const Zelkor::Vec3& v) {
    Zelkor::Vec3 out;
    return Zelkor::quatRotate(out, q, v);
}
inline Zelkor::Vec3 normalized(Zelkor::Vec3 v) {
    Zelkor::normalize(v);
    return v;
}

} // namespace forge
