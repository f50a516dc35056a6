// Shakes when it is stepped on, then falls.
#include "actors/ThingyManager.h"
#include "actors/platforms/MovingPlatform.h"
#include "resources/Unit.h"

using namespace Zelkor;

namespace {

constexpr float shakeTime = 0.35f; // seconds
constexpr float shakeWidth = 0.5f, shakeRate = 80;
constexpr float fallAcceleration = 240, fallSpeed = 65;

class FallPlatform : public MovingPlatform {
  public:
    explicit FallPlatform(Unit& ownUnit) : MovingPlatform(ownUnit), place_(ownUnit.position) {}

    void update(float, float dt) override {
        const Vec3 from = position();
        if (hasRider) ridden_ = true;
        float shake = 0;
        if (ridden_ && shaken_ < shakeTime) {
            shaken_ += dt;
            shake = shakeWidth * sine(shakeRate * shaken_);
        } else if (ridden_) {
            speed_ = moveTowards(speed_, fallSpeed, fallAcceleration * dt);
            place_.y -= speed_ * dt;
            removeWhenOffscreen = true;
        }
        unit->position = place_ + Vec3{shake, 0, 0};
        finishMove(from);
    }
    void setParameter(int, float) override {}

  private:
    Vec3 place_; // without the shaking
    bool ridden_ = false;
    float shaken_ = 0; // seconds
    float speed_ = 0;  // downwards
};

const SpawnRow row{46, createActor<FallPlatform>};

} // namespace
