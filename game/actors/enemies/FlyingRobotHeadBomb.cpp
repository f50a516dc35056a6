#include "actors/enemies/FlyingRobotHeadBomb.h"

#include "actors/ThingyManager.h"
#include "actors/enemies/Walking.h"
#include "resources/Unit.h"

#include <cmath>

using namespace Zelkor;

namespace {

const SpawnRow row{SpawnType::bomb, createActor<FlyingRobotHeadBomb>};

constexpr float gravity = 200, fastestFall = 150;
constexpr float halfSize = 3, halfDepth = 14;
constexpr float blastRadius = 7;
constexpr float spin = 0.12f;                               // radians for a unit of its way across
constexpr float throwSpeed = 80;                            // across
constexpr float shortestThrow = 0.55f, longestThrow = 1.4f; // seconds
constexpr float lost = 2.4f;                                // screen distance

} // namespace

FlyingRobotHeadBomb::FlyingRobotHeadBomb(Unit& ownUnit) : Enemy(ownUnit, 0) {}

void FlyingRobotHeadBomb::throwAt(const Vec3& target) {
    const Vec3 way = target - position();
    const float time = clamp(std::abs(way.x) / throwSpeed, shortestThrow, longestThrow);
    velocity = {way.x / time, way.y / time + gravity * time / 2, 0};
}

void FlyingRobotHeadBomb::update(float time, float dt) {
    fall(*this, gravity, fastestFall, dt);
    if (velocity.x != 0)
        quatMultiply(unit->orientation, quatFromAxisAngle(-spin * velocity.x * dt, {0, 0, 1}),
                     unit->orientation);
    if (touchHero(hitBox())) {
        explode();
    } else if (groundAt(position())) {
        // Who stands beside it is hurt as well.
        const Vec3 blast{blastRadius, blastRadius, halfDepth};
        touchHero(boxAround(position(), blast * -1, blast));
        explode();
    } else if (screenDistance() > lost) {
        leave();
    }
    updateFlash(time, dt);
}

Box FlyingRobotHeadBomb::hitBox() const {
    return boxAround(position(), {-halfSize, -halfSize, -halfDepth}, {halfSize, halfSize, halfDepth});
}

void FlyingRobotHeadBomb::explode() {
    startEffect("bomb1_explosion", position());
    leave();
}
