// Bandit1 on the loose: running, leaping, falling, and hanging under his bird.
#include "actors/ThingyManager.h"
#include "actors/enemies/Bandit1.h"
#include "actors/enemies/CarrierBird.h"
#include "actors/player/HeldGun.h"
#include "game/Game.h"
#include "resources/Unit.h"

#include <algorithm>

using namespace Zelkor;

namespace {

constexpr float liftedLimits = 300; // to each side

constexpr float shotTime = 1.2f, leapTime = 1.6f, firstLeapTime = 0.2f; // seconds into the run
constexpr float screenBeyond = 0.4f; // of its width: so far beside it he is gone
constexpr float leapSpeed = 90, gapSpeed = 60;
constexpr float wallReach = 8, wallHeight = 5; // before and above his feet
constexpr float gapReach = 5;
constexpr float leapBlend = 0.05f, dropBlend = 0.1f; // seconds
constexpr float leapClipSpeed = 0.5f, dropClipSpeed = 0.5f, fallClipSpeed = 0.2f, landClipSpeed = 0.7f;

constexpr float floatTime = 0.3f, floatGravity = 60; // at the beginning of a leap
constexpr float fallPoseSpeed = 15, shotSpeed = -15; // upwards
constexpr float screensBelow = 2.4f;                 // screen distance
constexpr float headHeight = 20, footDistance = 2;

constexpr float hangPause = 1.2f;  // seconds between two shots
constexpr float heroBelow = 15;    // and farther he shoots at him
constexpr Vec3 heroChest{0, 9, 0}; // from his feet
constexpr float inView = 1.1f;     // screen distance

} // namespace

void Bandit1::liftLimits() {
    patrol = {position().x - liftedLimits, position().x + liftedLimits};
}

// --- Running
// ------------------------------------------------------------------------------------------------

void Bandit1::startRun() {
    mode = run;
    timer_ = 0;
    shots_ = 0;
    velocity = {};
    liftLimits();
}

void Bandit1::runStep(float dt) {
    hurry(dt);
    timer_ += dt;
    const float x = screenPlace().x;
    if (facing > 0 ? x > 1 + screenBeyond : x < -screenBeyond) return leave();
    if (timer_ >= shotTime && shots_ == 0) {
        ++shots_;
        playOnce("armfire");
        fireShot();
    }
    if (timer_ > leapTime)
        leap(leapSpeed);
    else if (timer_ > firstLeapTime && wallAhead(*this, facing, wallReach, wallHeight))
        leap(leapSpeed);
    else if (timer_ > firstLeapTime && edgeAhead(*this, facing, gapReach))
        leap(gapSpeed);
}

// --- In the air
// ---------------------------------------------------------------------------------------------

void Bandit1::startFall(int phase, float upwards) {
    mode = fall;
    timer_ = 0;
    step_ = phase;
    velocity.y = upwards;
    crouched = false;
    platform_ = nullptr;
    stick_.reset();
    liftLimits();
}

void Bandit1::leap(float speed) {
    startFall(rising, speed);
    playOnce("jump", leapBlend, leapClipSpeed);
}

void Bandit1::drop() {
    startFall(falling, 0);
    velocity.x = 0;
    faceHero();
    play("fall", dropBlend, dropClipSpeed);
}

void Bandit1::fallStep(float dt) {
    timer_ += dt;
    const float gravity = timer_ <= floatTime ? floatGravity : BanditPace::gravity;
    velocity.y = std::max(velocity.y - gravity * dt, -BanditPace::fastestFall);
    if (velocity.y > 0 && solidAt(position() + Vec3{0, headHeight, 0})) velocity.y = 0;
    if (step_ == rising && velocity.y < fallPoseSpeed) {
        step_ = falling;
        play("fall", dropBlend, fallClipSpeed);
    }
    if (step_ == falling && velocity.y < shotSpeed) {
        step_ = shotFired;
        playOnce("armfire");
        fireShot();
    }
    if (standOnTiles(*this, footDistance)) return land();
    if (2 * screenPlace().y - 1 > screensBelow) leave();
}

void Bandit1::land() {
    startRun();
    play("land", 0, landClipSpeed);
}

// --- Under the bird
// -----------------------------------------------------------------------------------------

void Bandit1::startHanging() {
    timer_ = hangPause;
    velocity = {};
    ThingyManager& actors = *Game::get().thingyManager;
    Vec3 place;
    quatRotate(place, unit->orientation, CarrierBird::aboveRider);
    Thingy* bird = actors.spawn(SpawnType::carrierBird, "carrierbird", position() + place, unit->orientation);
    bird_ = dynamic_cast<CarrierBird*>(bird);
    if (bird_) bird_->carry(*this);
}

void Bandit1::hangStep(float dt) {
    if (!bird_) return drop();
    timer_ -= dt;
    if (timer_ > 0) return;
    timer_ = hangPause;
    const Thingy* hero = nearestHero();
    if (!hero || position().y - hero->position().y <= heroBelow || screenDistance() > inView) return;
    playOnce("hangfire");
    fireShotAt(hero->position() + heroChest);
}
