// Sleeps until the hero comes near, drops from its perch and follows him.
#include "actors/ThingyManager.h"
#include "actors/enemies/Enemy.h"
#include "actors/enemies/Walking.h"
#include "resources/Unit.h"

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
            if (hero) steer(hero->position() + hero->aimOffset, dt);
            avoidCells();
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
        Vec3 way = target - position();
        way.z = 0;
        if (normalize(way) > bat.closeEnough)
            velocity = velocity * (1 - bat.drag * dt) + way * (bat.steering * dt);
    }

    void avoidCells() {
        if (solidAt(position() + Vec3{velocity.x < 0 ? -bat.feeler : bat.feeler, 0, 0}))
            velocity.x *= bat.bounce;
        if (solidAt(position() + Vec3{0, velocity.y < 0 ? -bat.feeler : bat.feeler, 0}))
            velocity.y *= bat.bounce;
    }

    bool awake_ = false;
};

const SpawnRow row{35, createActor<EnemyBat>};

} // namespace
