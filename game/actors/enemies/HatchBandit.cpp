// The bandit in a hatch: he waits under the floor until the hero comes near, pops up to the belt, shoots
// twice and ducks. Only while he is up he can be hurt, and hurt by touch.
#include "actors/ThingyManager.h"
#include "actors/enemies/Bandit.h"
#include "animation/SkeletonInstance.h"
#include "resources/Unit.h"

#include <cmath>

using namespace Zelkor;

namespace {

constexpr float halfWidth = 3, height = 9, halfDepth = 4;
constexpr float watchReach = 40, nearReach = 7; // of the hero, in x and y; in x
constexpr float watchTime = 0.35f;              // seconds for which the hero is ahead of him
constexpr float upSpeed = 1.5f, downSpeed = 1.5f;
constexpr float dieSpeed = 0.85f, deathTime = 0.75f;
constexpr float lootHeight = 4;
constexpr const char* rootJoint = "bandit_rig";
constexpr float standsBelow = 8; // the floor: he shows himself from the belt up
constexpr float thrownOut = 40;  // units a second that he comes out of it by, shot

// What he does from the moment he pops up until he waits again.
struct ScriptStep {
    const char* clip; // none: he is under the floor
    float clipSpeed;
    float seconds;
    bool shoots;
};
constexpr ScriptStep script[] = {{"up", upSpeed, 0.55f, false},
                                 {"fire", 1, 0.6f, true},
                                 {"fire", 1, 0.8f, true},
                                 {"down", downSpeed, 0.3f, false},
                                 {nullptr, 1, 1.2f, false}};

class HatchBandit final : public Bandit {
  public:
    explicit HatchBandit(Unit& ownUnit) : Bandit(ownUnit) {
        play("idle_down");
        ownUnit.visible = false;
        sinkBy(standsBelow);
    }

    void update(float time, float dt) override {
        if (dying())
            comeOut(dt);
        else if (step_ < 0)
            watch(dt);
        else
            playScript(dt);
        if (vulnerable()) touchHero(hitBox());
        updateFlash(time, dt);
    }

  protected:
    Box hitBox() const override {
        return boxAround(position(), {-halfWidth, 0, -halfDepth}, {halfWidth, height, halfDepth});
    }
    bool vulnerable() const override { return Bandit::vulnerable() && step_ >= 0 && script[step_].clip; }
    void die(const Attack&) override {
        startDying("die", dieSpeed, deathTime);
        leaveTargets();
        dropLoot(position() + Vec3{0, lootHeight, 0});
    }

  private:
    void watch(float dt) {
        const Thingy* hero = nearestHero();
        const Vec3 way = hero ? hero->position() - position() : Vec3{watchReach, 0, 0};
        if (std::abs(way.x) >= watchReach || std::abs(way.y) >= watchReach) {
            timer_ = 0;
            return;
        }
        if (way.x * static_cast<float>(facing) > 0) timer_ += dt;
        if (timer_ > watchTime || std::abs(way.x) < nearReach) startStep(0);
    }

    void playScript(float dt) {
        timer_ -= dt;
        if (timer_ > 0) return;
        if (step_ + 1 < static_cast<int>(std::size(script))) return startStep(step_ + 1);
        step_ = -1;
        timer_ = 0;
    }

    void startStep(int step) {
        step_ = step;
        const ScriptStep& now = script[step];
        timer_ = now.seconds;
        unit->visible = now.clip;
        if (now.clip) playOnce(now.clip, 0, now.clipSpeed);
        if (now.shoots) fireShot();
    }

    void comeOut(float dt) {
        sinkBy(moveTowards(sunk_, 0, thrownOut * dt));
        dieStep(dt);
    }

    // Draws him so far below his place.
    void sinkBy(float depth) {
        sunk_ = depth;
        shiftJoint(rootJoint, {0, -depth, 0});
    }

    int step_ = -1;   // of the script, -1 while he waits
    float timer_ = 0; // seconds: the hero has been ahead, or what is left of the step
    float sunk_ = 0;
};

const SpawnRow row{21, createActor<HatchBandit>};

} // namespace
