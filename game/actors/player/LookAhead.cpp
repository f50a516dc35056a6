#include "actors/player/LookAhead.h"

namespace {

constexpr float above = 10;        // the view rests this far above the hero
constexpr float turnRate = 40;     // units per second, when up changes
constexpr float sideSpeed = 30;    // at full stick
constexpr float acceleration = 90; // of the side speed
constexpr float patience = 2;      // seconds without input before the view comes back
constexpr float easeIn = 0.5f;     // of the way back, per second
constexpr float returnRate = 0.1f; // share lost per second for each unit of offset

} // namespace

void LookAhead::update(float moveX, const Zelkor::Vec3& up, float limit, float dt) {
    if (Zelkor::absolute(up.x) > 0.5f) {
        offset.x = Zelkor::moveTowards(offset.x, up.x > 0 ? reach : -reach, turnRate * dt);
        offset.y = Zelkor::moveTowards(offset.y, 0, turnRate * dt);
        return;
    }
    offset.y = Zelkor::moveTowards(offset.y, up.y > 0.5f ? above : -above, turnRate * dt);
    idleTime = moveX == 0 ? idleTime + dt : 0;
    speed = Zelkor::moveTowards(speed, sideSpeed * moveX, acceleration * dt);
    offset.x = Zelkor::clamp(offset.x + speed * dt, -limit, limit);
    if (idleTime > patience) {
        const float ease = Zelkor::clamp((idleTime - patience) * easeIn, 0, 1);
        offset.x *= 1 - returnRate * Zelkor::absolute(offset.x) * ease * dt;
    }
}
