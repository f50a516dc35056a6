// Sleeps until the hero comes near, drops from its perch and follows him.
#include "actors/ThingyManager.h"
#include "actors/enemies/Enemy.h"
#include "actors/enemies/Walking.h"
#include "resources/Unit.h"
#include "world/TileGrid.h"

using namespace Zelkor;

namespace {

constexpr struct {
    float health = 1;
    float wakeRadius = 80;
    float wakeFall = -23;   // vertical speed when it lets go
    float steering = 50;    // units per second squared, towards the hero
    float drag = 1;         // share of its speed per second
    float closeEnough = 15; // nearer than this it flies straight on
    float feeler = 6;       // to solid cells
    float bounce = -0.5f;   // of its speed, off a cell it would fly into
    float slipTime = 0.6f;  // seconds it then flies along the cell before it turns to the hero again
    float turnSpeed = 4;    // units per second across, slower it keeps its side
    Vec3 touch{3, 3, 14}, body{4, 4, 14};
} bat;

class EnemyBat : public Enemy {
  public:
    explicit EnemyBat(Unit& ownUnit) : Enemy(ownUnit, bat.health) {
        aimOffset = {};
        play("sleep");
    }

    void update(float time, float dt) override {
        const Thingy* hero = nearestHero();
        if (!awake_ && hero && distance(hero->position(), position()) <= bat.wakeRadius) wake();
        if (awake_) {
            const Vec3 target = hero ? hero->position() + hero->aimOffset : position();
            steer(target, dt);
            avoidCells(target);
            unit->position += velocity * dt;
            if (absolute(velocity.x) > bat.turnSpeed) facing = velocity.x < 0 ? -1 : 1;
        }
        touchHero(boxAround(position(), -bat.touch, bat.touch));
        turn(dt);
        updateFlash(time, dt);
    }

  protected:
    Box hitBox() const override { return boxAround(position(), -bat.body, bat.body); }
    void die(const Attack&) override {
        startEffect("animal_death", position());
        leave();
    }

  private:
    void wake() {
        awake_ = true;
        velocity = {0, bat.wakeFall, 0};
        play("fly", 0.1f);
    }

    void steer(const Vec3& target, float dt) {
        slip_ -= dt;
        Vec3 way = target - position();
        way.z = 0;
        if (normalize(way) <= bat.closeEnough) return;
        if (slip_ > 0) way = slipWay_;
        velocity = velocity * (1 - bat.drag * dt) + way * (bat.steering * dt);
    }

    void avoidCells(const Vec3& target) {
        if (solidAt(position() + Vec3{velocity.x < 0 ? -bat.feeler : bat.feeler, 0, 0})) {
            velocity.x *= bat.bounce;
            slipAlong({0, target.y < position().y ? -1.0f : 1.0f, 0});
        }
        if (solidAt(position() + Vec3{0, velocity.y < 0 ? -bat.feeler : bat.feeler, 0})) {
            velocity.y *= bat.bounce;
            slipAlong({target.x < position().x ? -1.0f : 1.0f, 0, 0});
        }
    }

    // Towards the hero, or the other way where that is shut.
    void slipAlong(const Vec3& way) {
        if (slip_ > 0) return;
        slip_ = bat.slipTime;
        slipWay_ = solidAt(position() + way * tileSize) ? -way : way;
    }

    bool awake_ = false;
    float slip_ = 0; // seconds
    Vec3 slipWay_;
};

const SpawnRow row{35, createActor<EnemyBat>};

} // namespace
