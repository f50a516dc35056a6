#include "actors/player/PlayerOnGroundState.h"

#include "actors/ThingyManager.h"
#include "actors/platforms/Platform.h"
#include "actors/player/HeroClips.h"
#include "actors/player/HeroConstants.h"
#include "actors/player/PlayerStandard.h"

using Zelkor::absolute;
using Zelkor::moveTowards;

void PlayerOnGroundState::enter(float /*time*/, int previousState) {
    bounceTimer_ = 0;
    turnTime_ = 0;
    if (previousState == inAir) {
        land();
    } else {
        doing_ = Doing::idle;
        playClip(*hero.unit, HeroClips::idle);
    }
}

void PlayerOnGroundState::land() {
    const Zelkor::Vec2 direction = hero.input.direction();
    playClip(*hero.unit, HeroClips::land);
    // Still crouched: there was no room to stand up on the way down.
    if (direction.y < -heroConstants.stickCrouch || hero.crouching) {
        doing_ = Doing::crouch;
        playClip(*hero.unit, hero.facing < 1 ? HeroClips::landToCrouchFlipped : HeroClips::landToCrouch);
    } else if (absolute(direction.x) > heroConstants.stickRun) {
        doing_ = Doing::run;
        playClip(*hero.unit, HeroClips::landToRun);
    } else {
        doing_ = Doing::idle;
        playClip(*hero.unit, HeroClips::landToIdle);
    }
}

void PlayerOnGroundState::leave(float /*time*/) {
    hero.standUpIfRoom();
}

void PlayerOnGroundState::update(float time, float dt) {
    switch (doing_) {
    case Doing::idle:
        idle(dt);
        break;
    case Doing::run:
        run(dt);
        break;
    case Doing::crouch:
        crouch(time, dt);
        break;
    }

    if (hero.groundSide <= 0) {
        hero.changeState(inAir);
        playClip(*hero.unit, HeroClips::fall);
        return;
    }
    hero.velocity.y = 0;
    if (jumps(dt))
        hero.changeState(inAir);
    else
        hero.grabLadder();
}

// A jump, or the bounce that a shroom gives whoever stands on it for long enough.
bool PlayerOnGroundState::jumps(float dt) {
    const bool onShroom = hero.standingOn && hero.standingOn->spawnType == SpawnType::bounceShroom;
    if (onShroom) bounceTimer_ += dt;
    const bool pressed = hero.input.pressed(PlayerInputSnapshot::jump);
    if (!pressed && bounceTimer_ <= heroConstants.bounceWait) return false;
    hero.startJump();
    if (onShroom && bounceTimer_ > heroConstants.bounceReady)
        hero.velocity.y = pressed ? heroConstants.bounceJumpSpeed : heroConstants.bounceSpeed;
    return true;
}

void PlayerOnGroundState::idle(float dt) {
    const Zelkor::Vec2 direction = hero.input.direction();
    if (firesShot()) playClip(*hero.unit, HeroClips::idleRecoil);
    if (direction.y < -heroConstants.stickCrouch) {
        startCrouch();
    } else if (absolute(direction.x) > heroConstants.stickRun) {
        doing_ = Doing::run;
        playClip(*hero.unit, HeroClips::run);
    }
    hero.velocity.x = moveTowards(hero.velocity.x, 0, heroConstants.idleBraking * dt);
    if (hero.movesIntoWall()) hero.velocity.x = 0;
}

void PlayerOnGroundState::run(float dt) {
    const Zelkor::Vec2 direction = hero.input.direction();
    if (firesShot()) playArmRecoil(*hero.unit);
    if (direction.y < -heroConstants.stickCrouchRunning) {
        startCrouch();
    } else if (absolute(direction.x) >= heroConstants.stickKeepRunning) {
        hero.face(direction.x, dt);
        hero.velocity.x =
            moveTowards(hero.velocity.x, static_cast<float>(hero.facing) * heroConstants.runSpeed,
                        heroConstants.runAcceleration * dt);
        hero.stopAtWall();
    } else {
        doing_ = Doing::idle;
        playClip(*hero.unit, HeroClips::idle);
    }
}

bool PlayerOnGroundState::firesShot() {
    return hero.input.pressed(PlayerInputSnapshot::fire) && hero.fire(false);
}

void PlayerOnGroundState::startCrouch() {
    doing_ = Doing::crouch;
    playClip(*hero.unit, hero.facing < 1 ? HeroClips::crouchFlipped : HeroClips::crouch);
}

void PlayerOnGroundState::crouch(float time, float dt) {
    const Zelkor::Vec2 direction = hero.input.direction();
    hero.crouching = true;
    if (firesShot())
        playClip(*hero.unit, hero.facing < 1 ? HeroClips::crouchFlippedRecoil : HeroClips::crouchRecoil);
    if (direction.x * static_cast<float>(hero.facing) < 0 && time >= turnTime_) turnCrouched(time);
    hero.velocity.x = moveTowards(hero.velocity.x, 0, heroConstants.crouchBraking * dt);
    if (direction.y > -heroConstants.stickKeepCrouching && hero.hasHeadRoom()) {
        hero.crouching = false;
        doing_ = Doing::idle;
        playClip(*hero.unit, HeroClips::idle);
    }
}

void PlayerOnGroundState::turnCrouched(float time) {
    turnTime_ = time + heroConstants.crouchTurnPause;
    playClip(*hero.unit, hero.facing > 0 ? HeroClips::crouchTurn : HeroClips::crouchTurn2);
    hero.facing = -hero.facing;
    hero.aimAngle = static_cast<float>(hero.facing) * Zelkor::pi / 2;
}
