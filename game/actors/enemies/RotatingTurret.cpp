// A floating pot with a gun of two mouths that turns by eighths of a circle between its shots.
#include "actors/ActorSound.h"
#include "actors/ThingyManager.h"
#include "actors/enemies/Enemy.h"
#include "animation/SkeletonInstance.h"
#include "core/EngineManagers.h"
#include "core/Random.h"
#include "fx/ParticleManager.h"
#include "game/Game.h"
#include "resources/Unit.h"

using namespace Zelkor;

namespace {

constexpr struct {
    float health = 3;
    float bob = 2; // units
    // Seconds of its cycle: it turns between the first two, shoots at the third, begins anew at the last.
    float turnFrom = 0.375f, turnUntil = 1.5f, shootAt = 1.7f, period = 1.9f;
    float turnSpeed = 4 * pi / 3; // radians per second
    float onScreen = 1.1f;        // screen distance
    float mouth = 10;             // from its middle
    Vec3 touch{6, 6, 14}, body{8, 8, 14};
} turret;
constexpr float mouths[] = {pi / 2, 3 * pi / 2}; // radians from the angle of the gun

class RotatingTurret : public Enemy {
  public:
    explicit RotatingTurret(Unit& ownUnit) : Enemy(ownUnit, turret.health), height_(ownUnit.position.y) {
        ownUnit.orientation = {};
        aimOffset = {};
    }

    void update(float time, float dt) override {
        unit->position.y = height_ + turret.bob * sine(time);
        const float before = cycle_;
        cycle_ += dt;
        if (cycle_ > turret.turnFrom && before < turret.turnUntil)
            angle_ = moveTowards(angle_, target_, turret.turnSpeed * dt);
        if (before < turret.shootAt && cycle_ >= turret.shootAt && screenDistance() < turret.onScreen)
            shootBoth();
        if (cycle_ >= turret.period) {
            cycle_ -= turret.period;
            target_ = static_cast<float>((randomInt() & 3) - 1) * pi / 4;
        }
        placeGun();
        touchHero(boxAround(position(), -turret.touch, turret.touch));
        updateFlash(time, dt);
    }

  protected:
    Box hitBox() const override { return boxAround(position(), -turret.body, turret.body); }
    void die(const Attack&) override {
        startEffect("bomb1_explosion", position());
        dropLoot(position());
        leave();
    }

  private:
    void shootBoth() const {
        for (const float mouth : mouths) {
            const Quat orientation = quatFromAxisAngle(angle_ + mouth, {0, 0, 1});
            Vec3 out;
            const Vec3 place = position() + quatAxisX(out, orientation) * turret.mouth;
            engineManagers()->particleManager->createEffect("turret_flash", place, orientation);
            Game::get().thingyManager->spawn(SpawnType::bullet, "bullet", place, orientation);
        }
        playSoundAt("shot1", position());
    }

    void placeGun() {
        if (!unit->skeleton || unit->skeleton->jointCount() == 0) return;
        auto& overrides = unit->skeleton->overrides;
        overrides.resize(1);
        overrides[0].joint = 0;
        overrides[0].overrideRotation = true;
        overrides[0].rotation = quatFromAxisAngle(angle_, {0, 0, 1});
    }

    float height_;                 // of the middle of its bobbing
    float cycle_ = 0;              // seconds
    float angle_ = 0, target_ = 0; // of the gun, radians from upright
};

const SpawnRow row{19, createActor<RotatingTurret>};

} // namespace
