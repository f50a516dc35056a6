// The bandit on a window sill: he follows the hero with his gun and shoots once he has had him in view for a
// while.
#include "actors/ThingyManager.h"
#include "actors/enemies/Bandit.h"
#include "resources/Unit.h"

#include <cmath>
#include <iterator>

using namespace Zelkor;

namespace {

constexpr float inView = 1.05f;             // screen distance
constexpr float viewTime = 0.5f, pause = 1; // seconds in view before the first shot, and between two
constexpr float steepest = pi / 4;
constexpr float aimRate = 8; // share of what his aim is off by, per second
constexpr float gunHeight = 12.5f, heroMiddle = 10;
constexpr float behind = 5; // his body sits so far behind his place
constexpr float halfWidth = 3, sill = 8, top = 19, halfDepth = 4;
constexpr float dieSpeed = 0.9f, deathTime = 0.6f;
constexpr float clipBlend = 0.15f;
constexpr int legLayer = 3;

// From steepest down to steepest up.
constexpr struct {
    const char *idle, *fire;
} aims[] = {{"idle_down", "fire_down"},
            {"idle_aim_down", "fire_aim_down"},
            {"idle_aim", "fire_aim"},
            {"idle_aim_up", "fire_aim_up"},
            {"idle_up", "fire_up"}};
constexpr int level = 2;
constexpr float aimStep = steepest / level; // radians between two of them

class WindowBandit final : public Bandit {
  public:
    explicit WindowBandit(Unit& ownUnit) : Bandit(ownUnit) {
        play("idle");
        playOnly("sit", {"R_thigh", "L_thigh"}, legLayer);
        shiftJoint("bandit_rig", {-behind, 0, 0});
    }

    void update(float time, float dt) override {
        if (dying()) {
            dieStep(dt);
        } else {
            watch(dt);
            touchHero(hitBox());
        }
        updateFlash(time, dt);
    }

  protected:
    Box hitBox() const override {
        const Vec3 middle = position() - Vec3{behind * static_cast<float>(facing), 0, 0};
        return boxAround(middle, {-halfWidth, sill, -halfDepth}, {halfWidth, top, halfDepth});
    }
    void die(const Attack&) override {
        startDying("die", dieSpeed, deathTime);
        leaveTargets();
        dropLoot(position());
    }

  private:
    void watch(float dt) {
        const Thingy* hero = nearestHero();
        if (!hero || screenDistance() >= inView) {
            seen_ = 0;
            return;
        }
        seen_ += dt;
        wait_ -= dt;
        const Vec3 way = hero->position() + Vec3{0, heroMiddle - gunHeight, 0} - position();
        const float angle = std::atan2(way.y, way.x * static_cast<float>(facing));
        const float share = clamp(aimRate * dt, 0, 1);
        aim_ = share * clamp(angle, -steepest, steepest) + (1 - share) * aim_;
        takeAim(level + static_cast<int>(std::lround(aim_ / aimStep)));
        if (seen_ < viewTime || wait_ > 0) return;
        wait_ = pause;
        play(aims[pose_].fire);
        fireShot();
    }

    void takeAim(int pose) {
        if (pose == pose_) return;
        pose_ = pose;
        play(aims[pose_].idle, clipBlend);
    }

    float aim_ = 0;             // radians, up from straight ahead
    int pose_ = -1;             // of aims; none before he has seen anybody
    float seen_ = 0, wait_ = 0; // seconds
};

const SpawnRow row{22, createActor<WindowBandit>};

} // namespace
