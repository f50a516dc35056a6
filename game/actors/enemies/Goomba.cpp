// The cactus bud and the duck: they walk on until something stands in their way.
#include "actors/ThingyManager.h"
#include "actors/enemies/Enemy.h"
#include "actors/enemies/Walking.h"

using namespace Zelkor;

namespace {

constexpr struct {
    float speed = 20, acceleration = 40; // units per second, and per second squared
    float gravity = 200, fastestFall = 150;
    float feet = 3;                      // from the middle
    float wallReach = 4, wallHeight = 4; // of the feeler that finds walls
    Vec3 touchBelow{-3, 0, -14}, touchAbove{3, 6, 14};
    Vec3 bodyBelow{-4, 0, -14}, bodyAbove{4, 9, 14};
} walker;

class Goomba : public Enemy {
  public:
    explicit Goomba(Unit& ownUnit, float fullHealth = 3) : Enemy(ownUnit, fullHealth) { play("walk"); }

    void update(float time, float dt) override {
        walkTowards(*this, facing, walker.speed, walker.acceleration, dt);
        fall(*this, walker.gravity, walker.fastestFall, dt);
        standOnTiles(*this, walker.feet);
        turnAtWall(*this, facing, walker.wallReach, walker.wallHeight);
        touchHero(boxAround(position(), walker.touchBelow, walker.touchAbove));
        turn(dt);
        updateFlash(time, dt);
    }

  protected:
    Box hitBox() const override { return boxAround(position(), walker.bodyBelow, walker.bodyAbove); }
    void die(const Attack&) override {
        startEffect("bomb1_explosion", position());
        dropLoot(position());
        leave();
    }
};

class EnemyDuck : public Goomba {
  public:
    explicit EnemyDuck(Unit& ownUnit) : Goomba(ownUnit, 1) {}

  protected:
    void die(const Attack& attack) override {
        startEffect("animal_death", position());
        spawnBlood(position() + aimOffset, attack.direction.x < 0 ? -1.0f : 1.0f);
        dropLoot(position());
        leave();
    }
};

const SpawnRow rows[] = {{13, createActor<Goomba>}, {30, createActor<EnemyDuck>}};

} // namespace
