// A trolley under a rail, steered by where its rider stands.
#include "actors/ThingyManager.h"
#include "actors/platforms/MovingPlatform.h"
#include "actors/platforms/RailPath.h"
#include "animation/SkeletonInstance.h"
#include "game/Game.h"
#include "game/Session.h"
#include "resources/Unit.h"
#include "world/TileGrid.h"

using namespace Zelkor;

namespace {

constexpr float rideSpeed = 40, steering = 80; // units per second, and per second squared
constexpr float braking = 40;                  // without a rider
constexpr float tilt = pi / 50;                // under a rider, radians
constexpr float wheelTurn = 0.1f;              // radians for a unit of way
constexpr int wheels = 3;
// From the lower middle of who is pushed sideways to the ground he would be dragged over.
constexpr float groundAcross = 4, groundBelow = 1;

class ControlledPlatform : public MovingPlatform {
  public:
    explicit ControlledPlatform(Unit& ownUnit)
        : MovingPlatform(ownUnit), rail_(Game::get().tileGrid(), ownUnit.position) {
        refreshPosition();
    }

    void update(float, float dt) override {
        const Vec3 from = position();
        if (hasRider) {
            const bool toStart = lastRiderPosition.x >= from.x;
            speed_ = moveTowards(speed_, toStart ? -rideSpeed : rideSpeed, steering * dt);
            unit->orientation = quatFromAxisAngle(toStart ? tilt : -tilt, {0, 0, 1});
        } else {
            speed_ = moveTowards(speed_, 0, braking * dt);
            unit->orientation = {};
        }
        const float wanted = way_ + speed_ * dt;
        way_ = clamp(wanted, 0, rail_.length());
        if (way_ != wanted) speed_ = 0;
        refreshPosition();
        turnWheels();
        finishMove(from);
    }

    void setParameter(int index, float value) override {
        if (index == 0) way_ = clamp(value, 0, rail_.length());
        if ((index == 1 || index == 2) && value != 0)
            rail_.showStop(Game::get().session->scene, index == 1);
        refreshPosition();
    }

    PlatformContact pushOut(Vec3& centre, const Vec3& half, const Vec3& actorVelocity) override {
        const PlatformContact contact = MovingPlatform::pushOut(centre, half, actorVelocity);
        const TileGrid* grid = Game::get().tileGrid();
        if (!contact.pushed || contact.normal.x == 0 || !grid) return contact;
        const Vec3 ground{contact.normal.x * groundAcross, -half.y - groundBelow, 0};
        if (grid->tileAt(centre + ground, TileType::solid)) hasRider = true;
        return contact;
    }

  protected:
    Vec3 pathPosition() const override { return rail_.at(way_); }

  private:
    void turnWheels() {
        if (!unit->skeleton) return;
        auto& overrides = unit->skeleton->overrides;
        const int count = unit->skeleton->jointCount() < wheels ? unit->skeleton->jointCount() : wheels;
        overrides.resize(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i) {
            JointOverride& wheel = overrides[static_cast<std::size_t>(i)];
            wheel.joint = i;
            wheel.overrideRotation = true;
            wheel.rotation = quatFromAxisAngle(wheelTurn * way_, {0, 0, 1});
        }
    }

    RailPath rail_;
    float way_ = 0;   // along the rail, world units
    float speed_ = 0; // units per second
};

const SpawnRow row{23, createActor<ControlledPlatform>};

} // namespace
