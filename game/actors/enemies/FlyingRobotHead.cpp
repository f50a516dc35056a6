// A steam gull's head that crosses the stage and drops what it has swallowed on whoever is below.
#include "actors/ThingyManager.h"
#include "actors/enemies/Enemy.h"
#include "actors/enemies/LostWatch.h"
#include "actors/enemies/Walking.h"
#include "animation/SkeletonInstance.h"
#include "core/Random.h"
#include "game/Game.h"
#include "resources/Unit.h"

using namespace Zelkor;

namespace {

constexpr struct {
    float health = 2;
    float speed = 45;
    float behind = 8, onPlane = 3, depthSpeed = 30;          // z inside cells and outside, units per second
    Vec3 rangeBelow{-45, -120, -40}, rangeAbove{45, -5, 40}; // where a hero is worth a bomb
    float firstDrop = 0.4f, dropEvery = 1.5f;                // seconds that the beak is open
    float staysOpen = 0.5f;                                  // seconds after the hero has left
    Vec3 gullet{5, -5, 0};                                   // for who faces right
    int rarely = 127;                                        // mask of the draw that gives a round bomb
    int beakLayer = 2;
    Vec3 touch{4, 3, 14}, body{6, 5, 14};
} gull;

class FlyingRobotHead : public Enemy {
  public:
    explicit FlyingRobotHead(Unit& ownUnit) : Enemy(ownUnit, gull.health) {
        velocity.x = gull.speed * static_cast<float>(facing);
        aimOffset = {};
        for (const char* clip : {"openbeak", "closedbeak"})
            if (Animation* beak = unit->skeleton ? unit->skeleton->animation(clip) : nullptr)
                beak->layer = gull.beakLayer;
        play("fly");
    }

    void setParameter(int index, float value) override {
        if (index == 0) velocity.x = value * static_cast<float>(facing);
    }

    void update(float time, float dt) override {
        unit->position.x += velocity.x * dt;
        unit->position.z =
            moveTowards(position().z, solidAt(position()) ? gull.behind : gull.onPlane, gull.depthSpeed * dt);
        useBeak(dt);
        touchHero(boxAround(position(), -gull.touch, gull.touch));
        turn(dt);
        if (watch_.lost(screenDistance())) removeMe = true;
        updateFlash(time, dt);
    }

  protected:
    Box hitBox() const override { return boxAround(position(), -gull.body, gull.body); }
    void die(const Attack&) override {
        startEffect("animal_death", position());
        leave();
    }

  private:
    void useBeak(float dt) {
        const bool wasOpen = open_ > 0;
        open_ -= dt;
        if (heroIn(boxAround(position(), gull.rangeBelow, gull.rangeAbove))) open_ = gull.staysOpen;
        if (open_ > 0 && !wasOpen) {
            drop_ = gull.firstDrop;
            playOnce("openbeak");
        }
        if (open_ <= 0 && wasOpen) playOnce("closedbeak");
        if (open_ <= 0) return;
        drop_ -= dt;
        if (drop_ > 0) return;
        drop_ += gull.dropEvery;
        const char* swallowed = (randomInt() & gull.rarely) == 0 ? "bomb1" : "bombfish";
        const Vec3 from = position() + Vec3{gull.gullet.x * static_cast<float>(facing), gull.gullet.y, 0};
        Game::get().thingyManager->spawn(SpawnType::bomb, swallowed, {from.x, from.y, 0});
    }

    float open_ = 0; // seconds that the beak stays open
    float drop_ = 0; // seconds to the next bomb
    LostWatch watch_;
};

const SpawnRow row{4, createActor<FlyingRobotHead>};

} // namespace
