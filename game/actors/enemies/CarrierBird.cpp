#include "actors/enemies/CarrierBird.h"

#include "actors/ThingyManager.h"
#include "actors/enemies/Bandit1.h"
#include "actors/enemies/Walking.h"
#include "resources/Unit.h"

#include <cmath>

using namespace Zelkor;

namespace {

const SpawnRow row{SpawnType::carrierBird, createActor<CarrierBird>};

constexpr float fullHealth = 1;
constexpr float halfWidth = 4, halfHeight = 3, halfDepth = 4;
constexpr float bobHeight = 2.5f, bobRate = 2.4f; // radians per second
constexpr float topSpeed = 35, acceleration = 30;
constexpr float swing = 0.8f;                     // of the way to the hero, as a speed per second
constexpr float turnDistance = 12;                // it turns to a hero who is farther than this aside
constexpr float wallReach = 12, riderMiddle = 15; // ahead, and below it
constexpr Vec3 awaySpeed{50, 60, 0};
constexpr float awayAcceleration = 60;
constexpr float clipBlend = 0.2f; // seconds

} // namespace

CarrierBird::CarrierBird(Unit& ownUnit) : Enemy(ownUnit, fullHealth), height_(ownUnit.position.y) {
    aimOffset = {};
    play("fly");
}

CarrierBird::~CarrierBird() {
    if (rider_) rider_->loseBird();
}

void CarrierBird::carry(Bandit1& newRider) {
    rider_ = &newRider;
    placeRider();
}

void CarrierBird::letGo() {
    if (rider_) rider_->loseBird();
    rider_ = nullptr;
    play("fly2", clipBlend);
    removeWhenOffscreen = true;
}

void CarrierBird::update(float time, float dt) {
    age_ += dt;
    if (rider_) {
        flyLoaded(dt);
    } else {
        velocity.x = moveTowards(velocity.x, awaySpeed.x * static_cast<float>(facing), awayAcceleration * dt);
        velocity.y = moveTowards(velocity.y, awaySpeed.y, awayAcceleration * dt);
        unit->position += velocity * dt;
    }
    turn(dt);
    if (rider_) placeRider();
    touchHero(hitBox());
    updateFlash(time, dt);
}

void CarrierBird::flyLoaded(float dt) {
    const Thingy* hero = nearestHero();
    const float dx = hero ? hero->position().x - position().x : 0;
    if (std::abs(dx) > turnDistance) facing = dx < 0 ? -1 : 1;
    velocity.x = moveTowards(velocity.x, clamp(swing * dx, -topSpeed, topSpeed), acceleration * dt);
    const float ahead = velocity.x < 0 ? -wallReach : wallReach;
    if (solidAt(position() + Vec3{ahead, 0, 0}) || solidAt(position() + Vec3{ahead, -riderMiddle, 0}))
        velocity.x = 0;
    unit->position.x += velocity.x * dt;
    unit->position.y = height_ + bobHeight * sine(bobRate * age_);
}

void CarrierBird::placeRider() const {
    Vec3 offset;
    quatRotate(offset, unit->orientation, aboveRider);
    rider_->facing = facing;
    rider_->unit->orientation = unit->orientation;
    rider_->unit->position = position() - offset;
}

Box CarrierBird::hitBox() const {
    return boxAround(position(), {-halfWidth, -halfHeight, -halfDepth}, {halfWidth, halfHeight, halfDepth});
}

void CarrierBird::die(const Attack&) {
    letGo();
    startEffect("animal_death", position());
    leave();
}
