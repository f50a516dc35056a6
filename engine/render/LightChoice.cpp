#include "render/LightChoice.h"

#include "resources/Scene.h"

#include <algorithm>

namespace Zelkor {

namespace {

// What reaches the unit, as a share of full brightness: 40 and 10 of 256.
constexpr float shadowThreshold = 0.15625f;
constexpr float lightThreshold = 0.0390625f;

float influence(const Light& light, const Vec3& boxMin, const Vec3& boxMax) {
    const float d = distance(light.position, clampVec3(light.position, boxMin, boxMax));
    return (light.red + light.green + light.blue) /
           (light.constantAttenuation + light.linearAttenuation * d + light.quadraticAttenuation * d * d);
}

} // namespace

LightChoice chooseLights(const Scene& scene, const Vec3& boxMin, const Vec3& boxMax) {
    LightChoice choice;
    const auto reaches = [&](const Light& light, float threshold) {
        return light.type == Light::directional || influence(light, boxMin, boxMax) > threshold;
    };
    const auto pick = [&choice](const Light& light) { choice.lights[choice.count++] = &light; };
    for (const Light& light : scene.lights) {
        if (choice.count == LightChoice::maxLights) break;
        if (!light.castsShadows || light.shadowIndex < 0 || !reaches(light, shadowThreshold)) continue;
        pick(light);
        if (choice.shadowCasters < LightChoice::maxShadowCasters)
            choice.shadowIndices[choice.shadowCasters++] = light.shadowIndex;
    }
    const auto firstPass = choice.lights.begin() + choice.count;
    for (const Light& light : scene.lights) {
        if (choice.count == LightChoice::maxLights) break;
        if (std::find(choice.lights.begin(), firstPass, &light) != firstPass) continue;
        if (reaches(light, lightThreshold)) pick(light);
    }
    return choice;
}

} // namespace Zelkor
