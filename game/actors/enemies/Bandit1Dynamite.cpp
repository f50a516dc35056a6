// Bandit1 with dynamite: he shows it, throws it, and walks on with the next stick.
#include "actors/ThingyManager.h"
#include "actors/enemies/Bandit1.h"
#include "actors/enemies/FlyingRobotHeadBomb.h"
#include "actors/player/HeldGun.h"
#include "game/Game.h"
#include "resources/Unit.h"

#include <cmath>

using namespace Zelkor;

namespace {

// Seconds.
constexpr float showTime = 0.9f, walkTime = 0.8f;
constexpr float throwTime = 0.8f, releaseTime = 0.38f; // of the clip, and when it leaves the hand
constexpr float clipBlend = 0.1f;

constexpr float throwReach = 130; // to a hero no farther away in x
constexpr float tooNear = 55;     // from here on he backs off
constexpr const char* hand = "gunJoint";
constexpr Vec3 chest{3, 14, 0}; // of who has no such joint

} // namespace

void Bandit1::takeStick() {
    stick_ = std::make_unique<HeldGun>(*unit, "dynamite", hand);
    timer_ = showTime;
}

void Bandit1::dynamiteStep(float dt) {
    timer_ -= dt;
    if (step_ == holding) {
        faceHero();
        if (timer_ <= 0) throwOrWalk();
    } else if (step_ == throwing) {
        if (stick_ && timer_ <= throwTime - releaseTime) throwStick();
        if (timer_ > 0) return;
        takeStick();
        walkWithStick();
    } else {
        hurry(dt);
        if (timer_ > 0 && !atFloorEnd()) return;
        step_ = holding;
        velocity.x = 0;
        timer_ = showTime;
        play("dynamite_idle", clipBlend);
    }
}

void Bandit1::throwOrWalk() {
    const Thingy* hero = nearestHero();
    if (!hero || !onScreen() || std::abs(hero->position().x - position().x) > throwReach)
        return walkWithStick();
    step_ = throwing;
    timer_ = throwTime;
    play("dynamite_throw", clipBlend);
}

// Off a hero who is too near, else towards him.
void Bandit1::walkWithStick() {
    const Thingy* hero = nearestHero();
    faceHero();
    if (hero && std::abs(hero->position().x - position().x) < tooNear) facing = -facing;
    step_ = walking;
    timer_ = walkTime;
    play("dynamite_walk", clipBlend);
}

void Bandit1::throwStick() {
    const Vec3 from = jointPoint(hand, {}, chest);
    stick_.reset();
    auto* bomb = dynamic_cast<FlyingRobotHeadBomb*>(
        Game::get().thingyManager->spawn(SpawnType::bomb, "dynamite", {from.x, from.y, 0}));
    const Thingy* hero = nearestHero();
    if (bomb)
        bomb->throwAt(hero ? hero->position()
                           : position() + Vec3{tooNear * static_cast<float>(facing), 0, 0});
}
