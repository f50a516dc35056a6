#include "actors/rides/Minecart.h"

#include "actors/ActorSound.h"
#include "actors/ThingyManager.h"
#include "actors/player/HeroConstants.h"
#include "actors/rides/RailThingy.h"
#include "animation/SkeletonInstance.h"
#include "game/Game.h"
#include "resources/Unit.h"
#include "world/TileGrid.h"

using namespace Zelkor;

namespace {

const SpawnRow row{SpawnType::minecart, createActor<Minecart>};

constexpr float acceleration = 100;
constexpr float slopeSpeed = 30; // lost uphill, gained downhill, at an upright rail
constexpr float jumpSpeed = 85, jumpHoldTime = 0.35f;
constexpr float jumpTilt = 0.15f;  // radians that a jump lifts the front by
constexpr float airTilt = -0.25f;  // where the front sinks to in the air
constexpr float airTiltRate = 0.7f, railTiltRate = 6; // radians per second
constexpr float hitUp = 40, hitBack = 30, hitTilt = 0.3f;
constexpr float catchBelow = 4;     // a falling cart is caught this far below the rails
constexpr float wallAhead = 16, wallAbove = 6; // where a wall stops it: before its rim, not inside it

} // namespace

Minecart::Minecart(Unit& ownUnit) : Thingy(ownUnit, GROUP_RIDES) {
    if (ownUnit.skeleton) ownUnit.skeleton->play("idle");
}

void Minecart::drive(float dt, bool jumpPressed, bool jumpHeld, float gravity, float heldJumpGravity) {
    if (stopped_) return;
    if (onRails_)
        runOnRails(dt, jumpPressed);
    else
        fly(dt, jumpHeld, gravity, heldJumpGravity);
    stopAtWall();
    unit->orientation = quatFromAxisAngle(tilt, {0, 0, 1});
}

void Minecart::runOnRails(float dt, bool jumpPressed) {
    const ThingyManager& actors = *Game::get().thingyManager;
    const auto here = RailThingy::find(actors, position());
    if (!here) {
        onRails_ = false;
        return;
    }
    if (jumpPressed) {
        onRails_ = false;
        velocity = {speed_, jumpSpeed, 0};
        holdTime_ = jumpHoldTime;
        tilt += jumpTilt;
        playSoundAt("cartjump", position());
        return;
    }
    speed_ = moveTowards(speed_, runSpeed - slopeSpeed * sine(here->tilt), acceleration * dt);
    const float climb = speed_ * sine(here->tilt);
    unit->position.x += speed_ * cosine(here->tilt) * dt;
    velocity = {speed_, climb, 0}; // what it flies off with where the rails end
    tilt = moveTowards(tilt, here->tilt, railTiltRate * dt);
    if (const auto next = RailThingy::find(actors, position() + Vec3{0, climb * dt, 0}))
        unit->position.y = next->height;
}

void Minecart::fly(float dt, bool jumpHeld, float gravity, float heldJumpGravity) {
    const bool holding = holdTime_ > 0 && velocity.y > 0 && jumpHeld;
    holdTime_ = holding ? holdTime_ - dt : 0;
    velocity.y -= (holdTime_ > 0 ? heldJumpGravity : gravity) * dt;
    velocity.y = clamp(velocity.y, -heroConstants.terminalSpeed, velocity.y);
    velocity.x = moveTowards(velocity.x, runSpeed, acceleration * dt);
    tilt = moveTowards(tilt, airTilt, airTiltRate * dt);
    const float before = position().y;
    unit->position += Vec3{velocity.x, velocity.y, 0} * dt;
    if (velocity.y > 0) return;
    const auto rails = RailThingy::find(*Game::get().thingyManager, position());
    if (!rails || position().y > rails->height || before < rails->height - catchBelow) return;
    onRails_ = true;
    speed_ = velocity.x;
    velocity.y = 0;
    unit->position.y = rails->height;
    playSoundAt("cartland", position());
}

void Minecart::throwUp() {
    onRails_ = false;
    velocity = {velocity.x - hitBack, hitUp, 0};
    tilt += hitTilt;
    holdTime_ = 0;
}

void Minecart::stopAtWall() {
    const TileGrid* grid = Game::get().tileGrid();
    if (!grid || !grid->tileAt(position() + Vec3{wallAhead, wallAbove, 0}, TileType::solid)) return;
    stopped_ = true;
    speed_ = 0;
    velocity = {};
}
