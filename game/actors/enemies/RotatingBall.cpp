// A spiked ball on a chain around the point it is spawned at. Shots stop on it.
#include "actors/ThingyManager.h"
#include "actors/enemies/Enemy.h"
#include "game/Game.h"
#include "game/Session.h"
#include "resources/Scene.h"
#include "resources/Unit.h"

#include <vector>

using namespace Zelkor;

namespace {

constexpr struct {
    float radius = 30, speed = 1.5f; // of the circle; radians per second
    float wobble = 15;               // degrees
    float linkLength = 5;
    int mostLinks = 40;
    Vec3 touch{6, 6, 14}, body{8, 8, 14};
} ball;

class RotatingBall : public Enemy {
  public:
    explicit RotatingBall(Unit& ownUnit)
        : Enemy(ownUnit, 0), scene_(Game::get().session->scene), centre_(ownUnit.position) {
        aimOffset = {};
        hitPadding = {1, 1, 0};
        forgeChain();
    }
    ~RotatingBall() override { dropChain(); }

    int onHit(const Attack& attack) override { return hitBox().overlaps(attack) ? 1 : 0; }

    void setParameter(int index, float value) override {
        if (index == 0) angle_ = value;
        if (index == 1) {
            radius_ = value;
            forgeChain();
        }
        if (index == 2) speed_ = value;
        place();
    }

    void update(float time, float dt) override {
        angle_ += speed_ * dt;
        velocity = Vec3{-sine(angle_), cosine(angle_), 0} * (speed_ * radius_);
        place();
        unit->orientation = quatFromAxisAngle(ball.wobble * pi / 180 * sine(time), {0, 0, 1});
        touchHero(boxAround(position(), -ball.touch, ball.touch));
        updateFlash(time, dt);
    }

  protected:
    Box hitBox() const override { return boxAround(position(), -ball.body, ball.body); }

  private:
    void place() {
        const Vec3 out{cosine(angle_), sine(angle_), 0};
        unit->position = centre_ + out * radius_;
        float along = ball.linkLength / 2;
        for (Unit* link : links_) {
            link->position = centre_ + out * along;
            link->orientation = quatFromAxisAngle(angle_, {0, 0, 1});
            along += ball.linkLength;
        }
    }

    void forgeChain() {
        dropChain();
        for (int i = 0; i < ball.mostLinks && ball.linkLength * static_cast<float>(i + 1) < radius_; ++i)
            links_.push_back(scene_.createUnit("enemies/chainlink"));
        place();
    }

    void dropChain() {
        for (Unit* link : links_)
            scene_.removeUnit(link);
        links_.clear();
    }

    Scene& scene_;
    Vec3 centre_;
    std::vector<Unit*> links_;
    float angle_ = 0, radius_ = ball.radius, speed_ = ball.speed; // radians, units, radians per second
};

const SpawnRow row{15, createActor<RotatingBall>};

} // namespace
