#include "rig/Easing.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace forge {
namespace {

constexpr float overshoot = 1.7f; // about a tenth of the way beyond the goal

float bounced(float u) {
    // Falls in a parabola, then two hops of a half and a quarter of the time.
    if (u < 0.5f) return 4 * u * u;
    const float hop = u < 0.8f ? (u - 0.65f) / 0.15f : (u - 0.9f) / 0.1f;
    const float height = u < 0.8f ? 0.2f : 0.06f;
    return 1 - height * (1 - hop * hop);
}

} // namespace

bool easingNamed(const std::string& name, Easing& out) {
    std::istringstream names(easingNames);
    int index = 0;
    for (std::string each; names >> each; ++index)
        if (each == name) {
            out = static_cast<Easing>(index);
            return true;
        }
    return false;
}

float eased(Easing easing, float u) {
    u = std::clamp(u, 0.0f, 1.0f);
    const float v = 1 - u;
    switch (easing) {
    case Easing::Smooth:
    case Easing::Linear:
        return u;
    case Easing::In:
        return u * u;
    case Easing::Out:
        return 1 - v * v;
    case Easing::InOut:
        return u * u * (3 - 2 * u);
    case Easing::Snap:
        return 1 - v * v * v * v;
    case Easing::Overshoot:
        return 1 - v * v * ((overshoot + 1) * v - overshoot);
    case Easing::Anticipate:
        return u * u * ((overshoot + 1) * u - overshoot);
    case Easing::Bounce:
        return bounced(u);
    case Easing::Hold:
        return u < 1 ? 0.0f : 1.0f;
    }
    return u;
}

} // namespace forge
