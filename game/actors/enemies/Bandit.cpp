#include "actors/enemies/Bandit.h"

#include "actors/ThingyManager.h"
#include "resources/Unit.h"

using namespace Zelkor;

namespace {

constexpr float banditHealth = 1;
constexpr float chainBlend = 0.05f; // seconds
constexpr float puffTime = 0.08f;   // before the end, seconds
constexpr float belowTheWorld = -1000;
constexpr float woundHeight = 10; // above the feet
constexpr const char* pelvis = "bandit_rig|slaveskeleton|pelvis";

// What follows by itself when a clip has ended.
constexpr struct {
    const char *clip, *next;
} chains[] = {{"fire", "idle"},
              {"fire_up", "idle_up"},
              {"fire_down", "idle_down"},
              {"land", "run"},
              {"hangfire", "hang"},
              {"cover_shoot", "cover"},
              {"fire_aim", "idle_aim"},
              {"fire_aim_up", "idle_aim_up"},
              {"fire_aim_down", "idle_aim_down"},
              {"dynamite_throw", "dynamite_idle"}};

} // namespace

Bandit::Bandit(Unit& ownUnit) : Enemy(ownUnit, banditHealth) {
    for (const auto& [clip, next] : chains)
        chain(clip, next, chainBlend);
    makeAdditive("armfire");
}

void Bandit::startDying(const char* clip, float clipSpeed, float seconds) {
    dying_ = true;
    deathTimer_ = seconds;
    playOnce(clip, 0, clipSpeed);
    spawnBlood(position() + Vec3{0, woundHeight, 0}, static_cast<float>(facing));
}

void Bandit::dieStep(float dt) {
    flash = 1;
    deathTimer_ -= dt;
    if (deathTimer_ < puffTime && !puffed_) {
        puffed_ = true;
        startEffect("bandit_death", jointPoint(pelvis, {}, {}));
    }
    if (deathTimer_ < 0) leave();
}

void Bandit::leaveTargets() {
    baseColour = {1, 1, 1, 1};
    aimOffset = {0, belowTheWorld, 0};
}

bool Bandit::isFromBehind(const Attack& attack) const {
    const float attackX = (attack.boxMin.x + attack.boxMax.x) / 2;
    const float way = attack.direction.x != 0 ? attack.direction.x : position().x - attackX;
    return way * static_cast<float>(facing) > 0;
}
