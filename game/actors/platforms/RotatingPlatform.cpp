// A plank on a pivot: a seesaw that tips under its rider, or a wheel that turns by itself.
#include "actors/ThingyManager.h"
#include "actors/platforms/Platform.h"
#include "resources/Unit.h"

#include <limits>

using namespace Zelkor;

namespace {

constexpr float halfWidth = 25, halfHeight = 10;
constexpr float tipping = 0.025f;     // radians per second in a frame of 1/60 s, for a unit off the pivot
constexpr float landingShare = -0.4f; // of the landing speed that counts as weight
constexpr float lightest = 1, heaviest = 60;
constexpr float frameRate = 60;
constexpr float friction = 1.7f;
constexpr float spring = 20, springSteepness = 10, springReach = 0.5f;
constexpr float maxSpeed = 2.3f;     // radians per second
constexpr float steepest = 0.5f;     // of an upper side that still carries: the y of its normal
constexpr float maxAngle = pi / 2;

class RotatingPlatform : public Platform {
  public:
    explicit RotatingPlatform(Unit& ownUnit) : Platform(ownUnit) { place(); }

    void update(float, float dt) override {
        const float before = angle_;
        if (seesaw_) tip(dt);
        angle_ += speed_ * dt;
        if (seesaw_) angle_ = clamp(angle_, -maxAngle, maxAngle);
        lastMove_ = hasRider_ ? swept(angle_ - before) : Vec3{};
        wasRidden_ = hasRider_;
        hasRider_ = false;
        place();
    }

    int onHit(const Attack&) override { return 0; }

    void setParameter(int index, float value) override {
        if (index == 0) {
            speed_ = value;
            seesaw_ = false;
        }
        if (index == 1) angle_ = restAngle_ = value;
        place();
    }

    Vec3 carry() const override { return lastMove_; }

    // The actor is felt for with four points of its box: feet, head and both sides. The shortest way out, up
    // or down or aside, is taken; steep sides do not carry.
    PlatformContact pushOut(Vec3& centre, const Vec3& half, const Vec3& actorVelocity) override {
        const Vec3 probes[] = {{0, -half.y, 0}, {0, half.y, 0}, {half.x, 0, 0}, {-half.x, 0, 0}};
        const Vec3 ways[] = {{0, 1, 0}, {0, -1, 0}, {-1, 0, 0}, {1, 0, 0}};
        float shortest = std::numeric_limits<float>::infinity();
        PlatformContact contact;
        for (int i = 0; i < 4; ++i) {
            const float way = wayOut(centre + probes[i], ways[i]);
            if (way <= 0 || way >= shortest) continue;
            if (i == 0 && absolute(cosine(angle_)) < steepest) continue;
            shortest = way;
            contact = {true, ways[i]};
        }
        if (!contact.pushed) {
            shortest = -gapBelow(centre + probes[0]);
            if (shortest == 0 || actorVelocity.y > 0) return contact;
            contact = {true, ways[0]};
        }
        centre += contact.normal * shortest;
        if (contact.normal.y > 0) {
            hasRider_ = true;
            rider_ = centre + probes[0];
            landingSpeed_ = actorVelocity.y;
        }
        return contact;
    }

    bool containsPoint(float x, float y) const override {
        const Vec3 p = toPlank({x - position().x, y - position().y, 0});
        return absolute(p.x) < halfWidth && absolute(p.y) < halfHeight;
    }

  private:
    void place() { unit->orientation = quatFromAxisAngle(angle_, {0, 0, 1}); }

    void tip(float dt) {
        if (hasRider_) {
            const float weight = clamp(landingShare * landingSpeed_, lightest, heaviest);
            speed_ -= (rider_.x - position().x) * tipping * weight * frameRate * dt;
        }
        speed_ = moveTowards(speed_, 0, friction * dt);
        speed_ +=
            spring * clamp(springSteepness * (restAngle_ - angle_), -springReach, springReach) * dt;
        speed_ = clamp(speed_, -maxSpeed, maxSpeed);
    }

    // How far the place of the rider moves when the plank turns.
    Vec3 swept(float turn) const {
        const Vec3 arm = rider_ - position();
        Vec3 turned;
        quatRotate(turned, quatFromAxisAngle(turn, {0, 0, 1}), {arm.x, arm.y, 0});
        return {turned.x - arm.x, turned.y - arm.y, 0};
    }

    Vec3 toPlank(const Vec3& v) const {
        Vec3 turned;
        return quatRotate(turned, quatFromAxisAngle(-angle_, {0, 0, 1}), v);
    }

    // From a point inside the plank along a direction until it is outside; 0 for a point outside.
    float wayOut(const Vec3& point, const Vec3& direction) const {
        if (!containsPoint(point.x, point.y)) return 0;
        const Vec3 p = toPlank({point.x - position().x, point.y - position().y, 0});
        const Vec3 d = toPlank(direction);
        const auto along = [](float from, float step, float half) {
            if (absolute(step) < 1e-6f) return std::numeric_limits<float>::infinity();
            return ((step > 0 ? half : -half) - from) / step;
        };
        const float x = along(p.x, d.x, halfWidth), y = along(p.y, d.y, halfHeight);
        return x < y ? x : y;
    }

    // From the feet of who stood on it a step ago down to where it is now; 0 when it is out of his reach. Without
    // it, who walks downhill would fall from step to step.
    float gapBelow(const Vec3& feet) const {
        if (!wasRidden_ || absolute(cosine(angle_)) < steepest) return 0;
        const float rise = wayOut(feet - Vec3{0, footReach, 0}, {0, 1, 0});
        return rise > 0 && rise < footReach ? footReach - rise : 0;
    }

    float angle_ = 0, restAngle_ = 0; // radians
    float speed_ = 0;                 // radians per second
    bool seesaw_ = true;
    bool hasRider_ = false, wasRidden_ = false;
    Vec3 rider_;             // where its feet were
    float landingSpeed_ = 0; // its vertical speed then
    Vec3 lastMove_;
};

const SpawnRow row{25, createActor<RotatingPlatform>};

} // namespace
