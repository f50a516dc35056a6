// A lamp that drifts through the stage in waves, behind its own smoke, and walks through walls by stepping
// aside.
#include "actors/ThingyManager.h"
#include "actors/enemies/Enemy.h"
#include "actors/enemies/LostWatch.h"
#include "actors/enemies/Walking.h"
#include "core/EngineManagers.h"
#include "fx/ParticleManager.h"
#include "resources/Unit.h"

using namespace Zelkor;

namespace {

constexpr struct {
    float health = 2;
    float speed = 40;                                // units per second
    float waveHeight = 20, waveRate = 2.5f;          // units to either side, radians per second
    float inFront = 12, onPlane = 4, stepSpeed = 50; // z, and units per second between them
    float lookAside = 0.6f;                          // radians it is turned to where it flies
    Vec3 touch{3, 3, 14}, body{4, 4, 14};
} medusa;

class MedusaHead : public Enemy {
  public:
    explicit MedusaHead(Unit& ownUnit)
        : Enemy(ownUnit, medusa.health), height_(ownUnit.position.y),
          smoke_(engineManagers()->particleManager->createEffect("medusa_smoke", ownUnit.position)) {
        aimOffset = {};
        velocity.x = medusa.speed * static_cast<float>(facing);
        ownUnit.orientation = quatFromAxisAngle(medusa.lookAside * static_cast<float>(facing), {0, 1, 0});
    }
    ~MedusaHead() override {
        if (const EngineManagers* managers = engineManagers()) managers->particleManager->release(smoke_);
    }

    void setParameter(int index, float value) override {
        if (index == 0) velocity.x = value * static_cast<float>(facing);
        if (index == 1) waveHeight_ = value;
        if (index == 2) waveRate_ = value;
    }

    void update(float time, float dt) override {
        age_ += dt;
        Vec3& place = unit->position;
        place.x += velocity.x * dt;
        place.y = height_ + waveHeight_ * sine(waveRate_ * age_);
        place.z = moveTowards(place.z, inCells() ? medusa.inFront : medusa.onPlane, medusa.stepSpeed * dt);
        smoke_->setTransform(place, {});
        touchHero(boxAround(place, -medusa.touch, medusa.touch));
        if (watch_.lost(screenDistance())) removeMe = true;
        updateFlash(time, dt);
    }

  protected:
    Box hitBox() const override { return boxAround(position(), -medusa.body, medusa.body); }
    void die(const Attack&) override {
        startEffect("bomb1_explosion", position());
        dropLoot(position());
        leave();
    }

  private:
    bool inCells() const {
        for (const float x : {-medusa.touch.x, medusa.touch.x})
            for (const float y : {-medusa.touch.y, medusa.touch.y})
                if (solidAt(position() + Vec3{x, y, 0})) return true;
        return false;
    }

    float height_; // of the middle of its wave
    EffectInstance* smoke_;
    float waveHeight_ = medusa.waveHeight, waveRate_ = medusa.waveRate;
    float age_ = 0; // seconds
    LostWatch watch_;
};

const SpawnRow row{9, createActor<MedusaHead>};

} // namespace
