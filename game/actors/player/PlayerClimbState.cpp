#include "actors/player/PlayerClimbState.h"

#include "actors/player/HeroClips.h"
#include "actors/player/HeroConstants.h"
#include "actors/player/PlayerStandard.h"
#include "actors/rides/MovingLadder.h"
#include "resources/Unit.h"
#include "world/TileGrid.h"

#include <cmath>

using namespace Zelkor;

namespace {

constexpr float rungStep = 4.5f;
constexpr float restBelow = 2; // feet below a whole number of steps above the base
constexpr float asideRate = 30, climbRate = 50; // units per second
constexpr float gunShownTime = 1, shotPause = 0.1f; // seconds after a shot
constexpr float longAgo = -10;
constexpr float groundProbe = 2; // below the lowest rest

} // namespace

void PlayerClimbState::enter(float time, int /*previousState*/) {
    hero.velocity = {};
    hero.crouching = false;
    hero.aimAngle = static_cast<float>(hero.facing) * pi;
    hideGun();
    lastShot_ = longAgo;
    second_ = false;
    const float feet = hero.feet().y;
    const bool down = hero.input.direction().y < -heroConstants.stickClimb;
    direction_ = down ? -1 : 1;
    const bool fromTop = down && ladder.hasTop && feet >= ladder.usableTop;
    const float from = fromTop ? ladder.usableTop : feet;
    rung_ = ladder.base + rungStep * std::trunc((from - ladder.base) / rungStep) - restBelow;
    if (fromTop) {
        doing_ = Doing::fromTop;
        doneAt_ = time + playClipBackwards(*hero.unit, HeroClips::climbUp);
    } else {
        hang();
    }
}

void PlayerClimbState::leave(float /*time*/) {
    hero.yaw = hero.aimAngle = static_cast<float>(hero.facing) * pi / 2;
    hero.showGun(true);
    hero.climbCooldown = heroConstants.climbPause;
}

void PlayerClimbState::update(float time, float dt) {
    const auto now = ladder.now(hero.grid(), hero.actors());
    if (!now || hero.input.pressed(PlayerInputSnapshot::jump)) {
        playClip(*hero.unit, HeroClips::fall);
        hero.changeState(inAir);
        return;
    }
    rung_ += now->base - ladder.base;
    ladder = *now;
    follow(dt);
    if (doing_ == Doing::overTop) {
        if (time < doneAt_ || hero.feet().y < rung_) return;
        hero.changeState(onGround);
        return;
    }
    if (direction_ < 0 && hero.groundSide > 0 && doing_ != Doing::fromTop) {
        hero.changeState(onGround);
        return;
    }
    shoot(time);
    climb(time);
}

// Where the ladder goes, he goes; over it, aside to its middle and up or down to his rung.
void PlayerClimbState::follow(float dt) {
    const Vec3 feet = hero.feet();
    Vec3 move = ladder.actor ? ladder.actor->carry() : Vec3{};
    move.x += moveTowards(feet.x + move.x, ladder.x, asideRate * dt) - (feet.x + move.x);
    move.y += moveTowards(feet.y + move.y, rung_, climbRate * dt) - (feet.y + move.y);
    hero.bodyCentre += move;
}

// Also in the middle of a step: the shot's pose takes the place of the step's, and the feet still arrive.
void PlayerClimbState::shoot(float time) {
    turn(hero.input.direction().x);
    const bool free = doing_ == Doing::hanging || doing_ == Doing::stepping;
    if (free && hero.input.pressed(PlayerInputSnapshot::fire)) {
        doing_ = Doing::hanging;
        const bool rightwards = hero.facing > 0;
        playClip(*hero.unit, second_ ? (rightwards ? HeroClips::climbShoot2Right : HeroClips::climbShoot2Left)
                                     : (rightwards ? HeroClips::climbShoot1Right : HeroClips::climbShoot1Left));
        hero.showGun(true);
        gunShown_ = true;
        hero.poseGun(); // the shot leaves from where the arm is now
        hero.fire(false);
        lastShot_ = time;
    } else if (gunShown_ && time - lastShot_ > gunShownTime) {
        hideGun();
        if (doing_ == Doing::hanging) hang();
    }
}

void PlayerClimbState::hideGun() {
    gunShown_ = false;
    hero.showGun(false);
}

// He faces the ladder either way; half a turn is the same half turn to both sides.
void PlayerClimbState::turn(float x) {
    if (absolute(x) < heroConstants.stickRun) return;
    hero.facing = x < 0 ? -1 : 1;
    const float aim = static_cast<float>(hero.facing) * pi;
    hero.yaw += aim - hero.aimAngle;
    hero.aimAngle = aim;
}

void PlayerClimbState::climb(float time) {
    if (doing_ != Doing::hanging) {
        if (time < doneAt_) return;
        hang();
    }
    const float y = hero.input.direction().y;
    if (absolute(y) < heroConstants.stickClimb || time - lastShot_ < shotPause) return;
    if (y < 0) {
        if (stepsDown()) startStep(time, -1);
    } else if (rung_ + rungStep < ladder.usableTop) {
        startStep(time, 1);
    } else if (ladder.hasTop) {
        climbOver(time);
    }
}

// Not off the lower end of a ladder that hangs in the air.
bool PlayerClimbState::stepsDown() const {
    const float lowest = ladder.base - restBelow;
    if (rung_ - rungStep >= lowest - 0.01f) return true;
    const Vec3 ground{ladder.x, lowest - rungStep - groundProbe + rungStep / 2, 0};
    return hero.grid() && hero.grid()->tileAt(ground, TileType::solid);
}

void PlayerClimbState::startStep(float time, int direction) {
    direction_ = direction;
    rung_ += static_cast<float>(direction) * rungStep;
    doing_ = Doing::stepping;
    // From one hand to the other, and the same way back.
    const bool leadsSecond = direction > 0 ? second_ : !second_;
    const HeroClip& clip = leadsSecond ? HeroClips::climb2 : HeroClips::climb1;
    doneAt_ = time + (direction > 0 ? playClip(*hero.unit, clip) : playClipBackwards(*hero.unit, clip));
    second_ = !second_;
}

void PlayerClimbState::climbOver(float time) {
    direction_ = 1;
    rung_ = ladder.surface - heroConstants.footing; // standing, not just above: else he would fall first
    doing_ = Doing::overTop;
    doneAt_ = time + playClip(*hero.unit, HeroClips::climbUp);
}

void PlayerClimbState::hang() {
    doing_ = Doing::hanging;
    playClip(*hero.unit, second_ ? HeroClips::climbIdle2 : HeroClips::climbIdle1);
}
