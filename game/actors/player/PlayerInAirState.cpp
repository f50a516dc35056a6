#include "actors/player/PlayerInAirState.h"

#include "actors/ActorSound.h"
#include "actors/player/HeroClips.h"
#include "actors/player/HeroConstants.h"
#include "actors/player/PlayerStandard.h"

using Zelkor::absolute;
using Zelkor::moveTowards;

void PlayerInAirState::enter(float /*time*/, int /*previousState*/) {
    holdTimer_ = hero.input.pressed(PlayerInputSnapshot::jump) ? heroConstants.jumpHoldTime : 0;
    fallPoseChosen_ = hero.velocity.y <= 0;
}

void PlayerInAirState::update(float /*time*/, float dt) {
    hero.standUpIfRoom();
    if (hero.grabLadder() || hero.boardCart()) return;
    if (hero.input.pressed(PlayerInputSnapshot::fire) && hero.fire(false)) {
        fallPoseChosen_ = true;
        playClip(*hero.unit, HeroClips::fallRecoil);
    }
    fall(dt);
    hero.stopAtCeiling();
    if (hero.velocity.y <= heroConstants.fallPoseSpeed && !fallPoseChosen_) {
        fallPoseChosen_ = true;
        playClip(*hero.unit, HeroClips::jumpTurn);
    }
    if (hero.velocity.y <= 0 && hero.groundSide > 0) land();
    steer(dt);
}

void PlayerInAirState::fall(float dt) {
    const bool holding = holdTimer_ > 0 && hero.velocity.y > 0 && hero.input.down(PlayerInputSnapshot::jump);
    holdTimer_ = holding ? holdTimer_ - dt : 0;
    hero.velocity.y -= (holdTimer_ > 0 ? hero.heldJumpGravity : hero.gravity) * dt;
    if (hero.velocity.y < -hero.terminalSpeed) hero.velocity.y = -hero.terminalSpeed;
}

// A jump pressed in the very step of a landing must not be lost: the ground would see it only as held.
void PlayerInAirState::land() {
    if (hero.velocity.y < -heroConstants.hardLandingSpeed) playSoundAt("land1", hero.position());
    hero.velocity.y = 0;
    hero.changeState(onGround);
    if (!hero.input.pressed(PlayerInputSnapshot::jump)) return;
    hero.startJump();
    hero.changeState(inAir);
}

void PlayerInAirState::steer(float dt) {
    const float x = hero.input.direction().x;
    if (absolute(x) < heroConstants.stickKeepRunning) {
        hero.velocity.x = moveTowards(hero.velocity.x, 0, heroConstants.airBraking * dt);
    } else {
        hero.face(x, dt);
        const float side = static_cast<float>(hero.facing);
        const float target = side * heroConstants.runSpeed;
        // Faster than a run already: the air takes that back as slowly as it brakes.
        const bool gains = (target - hero.velocity.x) * side > 0;
        hero.velocity.x = moveTowards(
            hero.velocity.x, target, (gains ? heroConstants.airAcceleration : heroConstants.airBraking) * dt);
    }
    hero.stopAtWall();
}
