// Blades that cut whoever touches them: back and forth like a platform, or along rails. Shots stop on them.
#include "actors/ThingyManager.h"
#include "actors/enemies/Enemy.h"
#include "actors/platforms/EasedPath.h"
#include "actors/platforms/RailPath.h"
#include "game/Game.h"
#include "game/Session.h"
#include "resources/Unit.h"

using namespace Zelkor;

namespace {

constexpr struct {
    Vec3 touch{3, 3, 14}, body{4, 4, 14};
    float spin = 5 * pi;     // radians for a unit of phase
    float railSpeed = 40;    // units per second
    float railSpin = 0.2f;   // radians for a unit of way
    float searchStep = 2.5f; // units of rail, in the search for the place it is spawned at
} saw;

class Blade : public Enemy {
  public:
    explicit Blade(Unit& ownUnit) : Enemy(ownUnit, 0) { aimOffset = {}; }

    int onHit(const Attack& attack) override { return hitBox().overlaps(attack) ? 1 : 0; }

  protected:
    Box hitBox() const override { return boxAround(position(), -saw.body, saw.body); }
    // Ends an update.
    void cut(float angle, float time, float dt) {
        unit->orientation = quatFromAxisAngle(angle, {0, 0, 1});
        touchHero(boxAround(position(), -saw.touch, saw.touch));
        updateFlash(time, dt);
    }
};

class EnemySawBlade : public Blade {
  public:
    explicit EnemySawBlade(Unit& ownUnit) : Blade(ownUnit) {
        path_.start = ownUnit.position;
        quatAxisX(path_.direction, ownUnit.orientation);
    }

    void setParameter(int index, float value) override {
        path_.setParameter(index, value);
        unit->position = path_.position();
    }

    void update(float time, float dt) override {
        const Vec3 from = position();
        path_.advance(dt);
        unit->position = path_.position();
        if (dt > 0) velocity = (position() - from) * (1 / dt);
        cut(saw.spin * path_.phase, time, dt);
    }

  private:
    EasedPath path_;
};

class EnemySawBladePath : public Blade {
  public:
    explicit EnemySawBladePath(Unit& ownUnit)
        : Blade(ownUnit), rail_(Game::get().tileGrid(), ownUnit.position) {
        for (float way = 0; way <= rail_.length(); way += saw.searchStep)
            if (distance(rail_.at(way), ownUnit.position) < distance(rail_.at(way_), ownUnit.position))
                way_ = way;
        ownUnit.position = rail_.at(way_);
    }

    void setParameter(int index, float value) override {
        if (index == 0) speed_ = value;
        if ((index == 1 || index == 2) && value != 0) rail_.showStop(Game::get().session->scene, index == 1);
    }

    void update(float time, float dt) override {
        const Vec3 from = position();
        advance(speed_ * dt);
        unit->position = rail_.at(way_);
        if (dt > 0) velocity = (position() - from) * (1 / dt);
        cut(saw.railSpin * way_, time, dt);
    }

  private:
    void advance(float step) {
        const float end = rail_.length();
        way_ += step;
        if (way_ >= 0 && way_ <= end) return;
        if (rail_.closed()) {
            way_ += way_ < 0 ? end : -end;
        } else {
            speed_ = -speed_;
            way_ = way_ < 0 ? -way_ : 2 * end - way_;
        }
        way_ = clamp(way_, 0, end); // a step longer than the whole path
    }

    RailPath rail_;
    float way_ = 0; // along the rail, world units
    float speed_ = saw.railSpeed;
};

const SpawnRow rows[] = {{24, createActor<EnemySawBlade>}, {47, createActor<EnemySawBladePath>}};

} // namespace
