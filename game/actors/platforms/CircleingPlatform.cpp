// A platform on a circle, round and round or swinging between two angles.
#include "actors/ThingyManager.h"
#include "actors/platforms/MovingPlatform.h"
#include "resources/Unit.h"

using namespace Zelkor;

namespace {

constexpr float degrees = pi / 180;

class CircleingPlatform : public MovingPlatform {
  public:
    explicit CircleingPlatform(Unit& ownUnit) : MovingPlatform(ownUnit) {}

    void update(float, float dt) override {
        const Vec3 from = position();
        if (pauseLeft_ > 0)
            pauseLeft_ -= dt;
        else
            advance(dt);
        refreshPosition();
        finishMove(from);
    }

    void setParameter(int index, float value) override {
        switch (index) {
        case 0: path.phase = value; break;
        case 1:
            path.period = value;
            path.phaseSpeed = (swings_ ? 2 : 1) / value;
            break;
        case 2: swings_ = value != 0; break;
        case 3: path.easeTime = value; break;
        case 4: setSpeed(value * degrees); break;
        case 5: swing_[0] = value * degrees; break;
        case 6: swing_[1] = value * degrees; break;
        case 7: radius_ = value; break;
        case 8: pauseTime_ = value; break;
        default: break;
        }
        refreshPosition();
    }

  protected:
    // Spawned at the centre. The middle of the box's upper side goes round it.
    Vec3 pathPosition() const override {
        const float angle = swings_ ? swingAngle() : 2 * pi * path.phase;
        return path.start + radius_ * Vec3{sine(angle), cosine(angle), 0} - Vec3{offset.x, offset.y, 0};
    }

  private:
    float swingAngle() const { return swing_[0] + (swing_[1] - swing_[0]) * path.share(); }

    void setSpeed(float radiansPerSecond) {
        const float speed = absolute(radiansPerSecond);
        const float way = swings_ ? 2 * absolute(swing_[1] - swing_[0]) : 2 * pi;
        path.period = way / speed;
        path.phaseSpeed = (swings_ ? 2 : 1) / path.period;
        if (radiansPerSecond < 0) path.phaseSpeed = -path.phaseSpeed;
    }

    void advance(float dt) {
        const bool wasReturning = path.returning();
        path.advance(dt);
        if (swings_ && path.returning() != wasReturning) pauseLeft_ = pauseTime_;
    }

    bool swings_ = false;
    float swing_[2] = {-pi / 2, pi / 2}; // radians from straight up, clockwise
    float radius_ = 30;
    float pauseTime_ = 0, pauseLeft_ = 0; // seconds, at each end of a swing
};

const SpawnRow row{37, createActor<CircleingPlatform>};

} // namespace
