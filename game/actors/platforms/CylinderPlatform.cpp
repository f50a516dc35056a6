// A log that rolls: under the feet of who stands off its middle, and away from who leans on it. It crushes
// enemies on its way.
#include "actors/ThingyManager.h"
#include "actors/platforms/Platform.h"
#include "game/Game.h"
#include "resources/Unit.h"
#include "world/TileGrid.h"

#include <algorithm>

using namespace Zelkor;

namespace {

constexpr float defaultRadius = 10;
constexpr float friction = 0.4f;   // radians per second squared
constexpr float maxSpeed = 3.5f;   // radians per second
constexpr float drawnRoll = 0.75f; // of the true roll
constexpr float standing = 5;      // radians per second squared, for a rider a whole radius off the middle
constexpr float walking = 0.6f;    // the same, for a rider who walks a radius a second
constexpr float pressing = 2.5f;   // radians per second squared
constexpr float topAngle = 1.0367f; // radians from the top within which feet stand
constexpr float crushReach = 0.7f;  // of the radius
constexpr float crushDamage = 10;

class CylinderPlatform : public Platform {
  public:
    explicit CylinderPlatform(Unit& ownUnit) : Platform(ownUnit), start_(ownUnit.position) {
        ownUnit.updateWorldBox();
        const float height = ownUnit.worldBoxMax.y - ownUnit.worldBoxMin.y;
        if (height > 1) radius_ = height / 2;
    }

    void update(float, float dt) override {
        const float x = position().x;
        speed_ = moveTowards(speed_ + push_ * dt, 0, friction * dt);
        speed_ = clamp(speed_, -maxSpeed, maxSpeed);
        push_ = 0;
        wasRidden_ = hasRider_;
        hasRider_ = false;
        unit->position.x -= speed_ * radius_ * dt;
        stopAtWall();
        roll_ += drawnRoll * speed_ * dt;
        unit->orientation = quatFromAxisAngle(roll_, {0, 0, 1});
        lastMove_ = {position().x - x, 0, 0};
        if (speed_ != 0) crush();
        if (limit_ > 0 && absolute(position().x - start_.x) > limit_) {
            removeMe = true;
            notifyDeath(*this);
        }
    }

    int onHit(const Attack&) override { return 0; }

    void setParameter(int index, float value) override {
        if (index == 0) speed_ = value;
        if (index == 1) limit_ = value;
    }

    Vec3 carry() const override { return lastMove_; }

    PlatformContact pushOut(Vec3& centre, const Vec3& half, const Vec3& actorVelocity) override {
        const float dx = centre.x - position().x;
        const Vec3 feet = centre - Vec3{0, half.y, 0};
        // Who stood on it a step ago walks downhill with it, instead of falling from step to step.
        const bool follows = wasRidden_ && actorVelocity.y <= 0 && standsOn(feet - Vec3{0, footReach, 0});
        if (follows || standsOn(feet)) {
            hasRider_ = true;
            const float rise = squareRoot(radius_ * radius_ - dx * dx);
            centre.y = position().y + rise + half.y;
            push_ -= standing * dx / radius_ + walking * actorVelocity.x / radius_;
            return {true, {0, 1, 0}};
        }
        // Beside or below it: the circle against the nearest point of the box.
        const Vec3 nearest{clamp(position().x, centre.x - half.x, centre.x + half.x),
                           clamp(position().y, centre.y - half.y, centre.y + half.y), 0};
        const Vec3 out{nearest.x - position().x, nearest.y - position().y, 0};
        const float depth = radius_ - length(out);
        if (depth <= 0) return {};
        if (absolute(out.x) >= absolute(out.y)) {
            const float side = dx < 0 ? -1.0f : 1.0f;
            const float reach = squareRoot(radius_ * radius_ - out.y * out.y);
            centre.x = position().x + side * (reach + half.x);
            if (actorVelocity.x * side < 0) push_ += pressing * side;
            return {true, {side, 0, 0}};
        }
        const float side = out.y < 0 ? -1.0f : 1.0f;
        // His box must not be lifted by its corner when he jumps off, nor hold him up beside the top where his feet
        // have yet to come down.
        if (side > 0 && (actorVelocity.y > 0 || isNearTop(dx))) return {};
        const float reach = squareRoot(radius_ * radius_ - out.x * out.x);
        centre.y = position().y + side * (reach + half.y);
        return {true, {0, side, 0}};
    }

    bool containsPoint(float x, float y) const override {
        const float dx = x - position().x, dy = y - position().y;
        return dx * dx + dy * dy < radius_ * radius_;
    }

  private:
    bool standsOn(const Vec3& feet) const {
        const float dx = feet.x - position().x, dy = feet.y - position().y;
        if (absolute(dx) >= radius_ || dy <= 0) return false;
        return isNearTop(dx) && containsPoint(feet.x, feet.y);
    }

    bool isNearTop(float dx) const { return absolute(dx) <= radius_ * sine(topAngle); }

    void stopAtWall() {
        const TileGrid* grid = Game::get().tileGrid();
        if (!grid || speed_ == 0) return;
        const float side = speed_ > 0 ? -1.0f : 1.0f;
        const Vec3 ahead = position() + Vec3{side * radius_, 5 - radius_, 0};
        if (!grid->tileAt(ahead, TileType::solid)) return;
        const float wall = grid->cellCentre(ahead).x - side * tileSize / 2;
        unit->position.x = wall - side * radius_;
        speed_ = 0;
    }

    void crush() {
        const float side = speed_ > 0 ? -1.0f : 1.0f;
        const float reach = crushReach * radius_;
        Attack attack;
        attack.attacker = this;
        attack.damage = crushDamage;
        attack.direction = {-speed_ * radius_, 0, 0};
        const float ahead = position().x + side * reach;
        attack.boxMin = {std::min(position().x, ahead), position().y - reach, 0};
        attack.boxMax = {std::max(position().x, ahead), position().y + reach, 0};
        Game::get().thingyManager->hitGroup(GROUP_ENEMIES, attack, true);
    }

    Vec3 start_;
    float radius_ = defaultRadius;
    float speed_ = 0; // radians per second, positive to the left
    float push_ = 0;  // of this frame's riders, radians per second squared
    float roll_ = 0;
    bool hasRider_ = false, wasRidden_ = false;
    float limit_ = 0; // of its way from the start; 0: none
    Vec3 lastMove_;
};

const SpawnRow row{26, createActor<CylinderPlatform>};

} // namespace
