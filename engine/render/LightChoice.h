// Which lights of a scene shine on one unit.
#pragma once

#include "math/Math.h"

#include <array>

namespace Zelkor {

struct Light;
class Scene;

struct LightChoice {
    static constexpr int maxLights = 8;
    static constexpr int maxShadowCasters = 4;

    std::array<const Light*, maxLights> lights{}; // in the order picked: the shadow casters first
    int count = 0;
    std::array<int, maxShadowCasters> shadowIndices{};
    int shadowCasters = 0;
};

// boxMin and boxMax: the unit's world box.
LightChoice chooseLights(const Scene& scene, const Vec3& boxMin, const Vec3& boxMax);

} // namespace Zelkor
