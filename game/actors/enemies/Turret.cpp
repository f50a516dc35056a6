// A pepper pot on a wall: rises out of its sleeve, shoots to all sides at once, sinks back.
#include "actors/ActorSound.h"
#include "actors/ThingyManager.h"
#include "actors/enemies/Enemy.h"
#include "animation/SkeletonInstance.h"
#include "core/EngineManagers.h"
#include "fx/ParticleManager.h"
#include "game/Game.h"
#include "resources/Unit.h"

#include <algorithm>

using namespace Zelkor;

namespace {

constexpr struct {
    float health = 2;
    float firstVolley = 2, interval = 3; // seconds
    float shortestInterval = 0.25f;
    float warning = 1;               // seconds before a volley at which it begins to rise
    float rise = 3.5f, riseRate = 2; // units, and how often in a second it could rise and sink
    float onScreen = 1.2f;           // screen distance
    float holes = 5.4f, mouth = 6;   // of the sunken pot, above the wall; of a mouth, from their middle
    float touchHalf = 4, touchHeight = 6;
    float bodyHalf = 5, bodyHeight = 8.5f;
} turret;
constexpr float volley[] = {0, pi / 4, pi / 2, 3 * pi / 4, pi}; // radians about its view axis, from its right

class Turret : public Enemy {
  public:
    explicit Turret(Unit& ownUnit) : Enemy(ownUnit, turret.health) {
        hitPadding = {turret.rise, turret.rise, 0}; // what has risen is still within
        aimOffset = up() * turret.holes;
    }

    void setParameter(int index, float value) override {
        if (index == 0) interval_ = std::max(value, turret.shortestInterval);
        if (index == 1) timer_ = value;
    }

    void update(float time, float dt) override {
        timer_ -= dt;
        risen_ = moveTowards(risen_, timer_ < turret.warning ? 1.0f : 0.0f, turret.riseRate * dt);
        if (timer_ <= 0) {
            timer_ = std::max(timer_, -interval_) + interval_;
            if (screenDistance() < turret.onScreen) shootVolley();
        }
        placePot();
        touchHero(boxAlongUp(turret.touchHalf, turret.touchHeight));
        updateFlash(time, dt);
    }

  protected:
    Box hitBox() const override { return boxAlongUp(turret.bodyHalf, turret.bodyHeight); }
    void die(const Attack&) override {
        startEffect("bomb1_explosion", position());
        dropLoot(position());
        leave();
    }

  private:
    Vec3 up() const {
        Vec3 axis;
        return quatAxisY(axis, unit->orientation);
    }

    // From the wall to the height of the sunken pot, and further by what it has risen.
    Box boxAlongUp(float half, float height) const {
        Vec3 across;
        quatAxisX(across, unit->orientation);
        const Vec3 a = position() - across * half;
        const Vec3 b = position() + across * half + up() * (height + turret.rise * risen_);
        return {{std::min(a.x, b.x), std::min(a.y, b.y), 0}, {std::max(a.x, b.x), std::max(a.y, b.y), 0}};
    }

    void shootVolley() const {
        const Vec3 middle = position() + up() * (turret.holes + turret.rise * risen_);
        for (const float angle : volley) {
            Quat orientation;
            quatMultiply(orientation, unit->orientation, quatFromAxisAngle(angle, {0, 0, 1}));
            Vec3 out;
            const Vec3 mouth = middle + quatAxisX(out, orientation) * turret.mouth;
            engineManagers()->particleManager->createEffect("turret_flash", mouth, orientation);
            Game::get().thingyManager->spawn(SpawnType::bullet, "bullet", mouth, orientation);
        }
        playSoundAt("shot1", position());
    }

    void placePot() {
        if (!unit->skeleton || unit->skeleton->jointCount() == 0) return;
        auto& overrides = unit->skeleton->overrides;
        overrides.resize(1);
        overrides[0].joint = 0;
        overrides[0].offsetPosition = true;
        overrides[0].offset = {0, turret.rise * risen_, 0};
    }

    float timer_ = turret.firstVolley; // seconds to the next volley
    float interval_ = turret.interval;
    float risen_ = 0; // 0 in its sleeve, 1 all out
};

const SpawnRow row{6, createActor<Turret>};

} // namespace
