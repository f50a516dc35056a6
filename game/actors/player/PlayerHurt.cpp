#include "actors/player/PlayerHurt.h"

#include "actors/player/HeroClips.h"
#include "actors/player/HeroConstants.h"
#include "actors/player/PlayerStandard.h"

void PlayerHurt::enter(float time, int /*previousState*/) {
    entered_ = time;
}

void PlayerHurt::update(float time, float dt) {
    hero.standUpIfRoom();
    const float braking = hero.dead ? heroConstants.deadBraking : heroConstants.hurtBraking;
    hero.velocity.x = Zelkor::moveTowards(hero.velocity.x, 0, braking * dt);
    hero.velocity.y -= hero.gravity * dt;
    hero.stopAtCeiling();
    if (hero.dead) {
        // The fall ends with the hero hanging in his last pose.
        if (hero.velocity.y < 0) hero.velocity.y = 0;
    } else if (time - entered_ >= heroConstants.hurtTime) {
        playClip(*hero.unit, HeroClips::fall);
        hero.changeState(inAir);
    }
}
