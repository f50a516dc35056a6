// A mushroom that wobbles under who lands on it. The hero himself does the bouncing.
#include "actors/ThingyManager.h"
#include "actors/platforms/MovingPlatform.h"
#include "resources/Unit.h"

#include <algorithm>

using namespace Zelkor;

namespace {

constexpr float cooldown = 0.3f;   // seconds between two wobbles
constexpr float fade = 0.6f;       // of the wobble timer, per second
constexpr float steepness = 1.2f;  // of the fading
constexpr float wobbleRate = 19;   // radians over the whole timer
constexpr float softWobble = 0.3f, hardWobble = 0.5f;
constexpr float hardLanding = -100; // units per second
constexpr float boxHeight = 10;     // at rest

class BounceShroom : public MovingPlatform {
  public:
    explicit BounceShroom(Unit& ownUnit) : MovingPlatform(ownUnit) {}

    void update(float time, float dt) override {
        MovingPlatform::update(time, dt);
        cooldown_ = std::max(cooldown_ - dt, 0.0f);
        timer_ = std::max(timer_ - fade * dt, 0.0f);
        const float amplitude = std::min(steepness * timer_ * timer_, 1.0f) * strength_;
        const float a = amplitude * -sine(wobbleRate * (1 - timer_));
        unit->scale = {1 - a, 1 + a, 1 - a};
        // Who stands on it goes up and down with its top: else he would hop on it for ever and never bounce.
        lastMove.y += boxHeight * unit->scale.y - size.y;
        size.y = boxHeight * unit->scale.y;
    }

    PlatformContact pushOut(Vec3& centre, const Vec3& halfSize, const Vec3& actorVelocity) override {
        const PlatformContact contact = MovingPlatform::pushOut(centre, halfSize, actorVelocity);
        const bool landed = contact.pushed && contact.normal.y > 0 && actorVelocity.y <= 0;
        if (landed && cooldown_ <= 0) {
            timer_ = 1;
            cooldown_ = cooldown;
            strength_ = actorVelocity.y < hardLanding ? hardWobble : softWobble;
        }
        return contact;
    }

  private:
    float timer_ = 0, cooldown_ = 0; // seconds
    float strength_ = softWobble;
};

const SpawnRow row{45, createActor<BounceShroom>};

} // namespace
