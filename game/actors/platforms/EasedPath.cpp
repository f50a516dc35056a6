#include "actors/platforms/EasedPath.h"

namespace {

// The share of a leg that is covered while accelerating, over the ease as a share of the leg.
constexpr float easeShare = 0.7f;

} // namespace

void EasedPath::setParameter(int index, float value) {
    switch (index) {
    case 0: length = value; break;
    case 1:
        period = value;
        phaseSpeed = 2 / value;
        break;
    case 2: phase = value; break;
    case 3: easeTime = value; break;
    case 4:
        period = 2 * length / value;
        phaseSpeed = 2 / period;
        break;
    default: break;
    }
}

void EasedPath::advance(float dt) {
    phase += phaseSpeed * dt;
    if (phase > 2) phase -= 2;
    if (phase < 0) phase += 2;
}

float EasedPath::eased(float t) const {
    if (easeTime <= 0) return t;
    const float e = 2 * easeTime / period;
    if (t < e) return easeShare * t * t / e;
    if (t > 1 - e) return 1 - easeShare * (1 - t) * (1 - t) / e;
    return easeShare * e + (t - e) * (1 - 2 * easeShare * e) / (1 - 2 * e);
}

float EasedPath::share() const {
    return returning() ? 1 - eased(phase - 1) : eased(phase);
}
