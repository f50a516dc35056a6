// A barrel of powder that rolls over whoever stands in its way and goes off at the first knock.
#include "actors/ThingyManager.h"
#include "actors/enemies/Enemy.h"
#include "actors/enemies/LostWatch.h"
#include "actors/enemies/Walking.h"
#include "game/Game.h"
#include "game/GameCamera.h"
#include "resources/Unit.h"
#include "world/TileGrid.h"

using namespace Zelkor;

namespace {

constexpr struct {
    float radius = 5;
    float speed = 50; // units per second, at first
    float gravity = 300, fastestFall = 280;
    float roll = -0.1f; // radians for a unit of way
    float bounce = -0.5f;
    Vec3 touchBelow{-4, -4, -4}, touchAbove{3, 3, 3};
    float knockReach = 7; // how near to its middle a hit sets it off
    float bridgeReach = 12, bridgeForce = 1;
    Vec3 blast{5, 5, 10};
    float shake = 0.6f, shakeDecay = 2;
} barrel;

class EnemyBarrel : public Enemy {
  public:
    explicit EnemyBarrel(Unit& ownUnit) : Enemy(ownUnit, 0) {
        velocity.x = barrel.speed * static_cast<float>(facing);
        hitPadding = {barrel.knockReach - barrel.radius, barrel.knockReach - barrel.radius, 0};
        aimOffset = {};
        ownUnit.orientation = {};
    }

    void setParameter(int index, float value) override {
        if (index == 0) velocity.x = value * static_cast<float>(facing);
    }

    void update(float time, float dt) override {
        rollOn(dt);
        const Box box = boxAround(position(), barrel.touchBelow, barrel.touchAbove);
        touchHero(box);
        if (touch(GROUP_ENEMIES, box)) explode();
        if (watch_.lost(screenDistance(), velocity.y <= -barrel.fastestFall)) removeMe = true;
        updateFlash(time, dt);
    }

    int onHit(const Attack& attack) override {
        if (attack.attacker == this || removeMe || !hitBox().overlaps(attack)) return 0;
        explode();
        return 1;
    }

  protected:
    Box hitBox() const override {
        const Vec3 reach{barrel.knockReach, barrel.knockReach, barrel.knockReach};
        return boxAround(position(), -reach, reach);
    }

  private:
    void rollOn(float dt) {
        fall(*this, barrel.gravity, barrel.fastestFall, dt);
        // It stands on its lowest point.
        unit->position.y -= barrel.radius;
        standOnTiles(*this, 0);
        unit->position.y += barrel.radius;
        const float side = velocity.x < 0 ? -1.0f : 1.0f;
        if (velocity.x != 0 && groundAt(position() + Vec3{side * barrel.radius, 0, 0}))
            velocity.x *= barrel.bounce;
        angle_ += barrel.roll * velocity.x * dt;
        unit->orientation = quatFromAxisAngle(angle_, {0, 0, 1});
    }

    void explode() {
        if (removeMe) return;
        leave();
        if (TileGrid* grid = Game::get().tileGrid())
            grid->breakBridges(position(), barrel.bridgeReach, barrel.bridgeForce);
        Attack blast;
        blast.attacker = this;
        blast.boxMin = position() - barrel.blast;
        blast.boxMax = position() + barrel.blast;
        blast.damage = touchDamage;
        Game::get().thingyManager->hitGroup(GROUP_PLAYER, blast, true);
        startEffect("bomb1_explosion", position());
        if (GameCamera* camera = Game::get().camera()) {
            camera->shakeAmplitude = barrel.shake;
            camera->shakeDecay = barrel.shakeDecay;
        }
    }

    float angle_ = 0; // radians
    LostWatch watch_;
};

const SpawnRow row{33, createActor<EnemyBarrel>};

} // namespace
