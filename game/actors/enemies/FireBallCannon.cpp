// A mortar that opens its mouth when the hero comes near and lobs fire upwards until he has gone.
#include "actors/ThingyManager.h"
#include "actors/enemies/Enemy.h"
#include "actors/enemies/LostWatch.h"
#include "actors/enemies/Walking.h"
#include "core/EngineManagers.h"
#include "core/Random.h"
#include "fx/ParticleManager.h"
#include "game/Game.h"
#include "game/GameCamera.h"
#include "game/Session.h"
#include "resources/Scene.h"
#include "resources/Unit.h"

using namespace Zelkor;

namespace {

constexpr int shotType = 12;

constexpr struct {
    float health = 4;
    float lookEvery = 4;                                  // seconds
    Vec3 wakeBelow{-50, -70, -40}, wakeAbove{50, 50, 40}; // where a hero is in reach
    Vec3 keepBelow{-60, -80, -40}, keepAbove{60, 50, 40}; // and where he stays so
    float opening = 1.1f, shotEvery = 0.8f;               // seconds
    int leastShots = 3;
    float spread = 0.5f;  // radians to either side of up
    float blend = 0.05f;  // seconds between clips
    Vec3 mouth{0, 14, 0}; // without a skeleton
    Vec3 lootAt{0, 10, 0};
    Vec3 touchBelow{-3, 2, -14}, touchAbove{3, 18, 14};
    Vec3 bodyBelow{-4, 1, -14}, bodyAbove{4, 19, 14};
} cannon;

constexpr struct {
    float speed = 130;
    float gravity = 200, fastestFall = 100;
    float timeScale = 0.9f;         // it takes its time
    float depth = 6, depthRate = 4; // z, and the share of the way there in a second
    float spin = 7;                 // radians per second
    float half = 2.5f;              // of what it hurts with
    float damage = 1;
} fireball;

class FireBallCannon : public Enemy {
  public:
    explicit FireBallCannon(Unit& ownUnit) : Enemy(ownUnit, cannon.health) {
        aimOffset = cannon.lootAt;
        for (const char* passing : {"look", "to_idle"})
            chain(passing, "idle", cannon.blend);
        for (const char* passing : {"to_fire", "fire"})
            chain(passing, "idle2", cannon.blend);
        play("idle");
    }

    void update(float time, float dt) override {
        timer_ -= dt;
        if (firing_)
            keepFiring();
        else
            wait();
        touchHero(boxAround(position(), cannon.touchBelow, cannon.touchAbove));
        turn(dt);
        updateFlash(time, dt);
    }

  protected:
    Box hitBox() const override { return boxAround(position(), cannon.bodyBelow, cannon.bodyAbove); }
    void die(const Attack&) override {
        startEffect("bomb1_explosion", position());
        dropLoot(position() + cannon.lootAt);
        leave();
    }

  private:
    void wait() {
        if (heroIn(boxAround(position(), cannon.wakeBelow, cannon.wakeAbove))) {
            firing_ = true;
            shots_ = 0;
            timer_ = cannon.opening;
            play("to_fire", cannon.blend);
        } else if (timer_ <= 0) {
            timer_ = cannon.lookEvery;
            play("look", cannon.blend);
        }
    }

    void keepFiring() {
        if (shots_ >= cannon.leastShots &&
            !heroIn(boxAround(position(), cannon.keepBelow, cannon.keepAbove))) {
            firing_ = false;
            timer_ = cannon.lookEvery;
            play("to_idle", cannon.blend);
            return;
        }
        if (timer_ > 0) return;
        timer_ += cannon.shotEvery;
        ++shots_;
        play("fire", cannon.blend);
        const float angle = pi / 2 + cannon.spread * (2 * randomUniform() - 1);
        const Quat upwards = quatFromAxisAngle(angle, {0, 0, 1});
        const Vec3 mouth = jointPoint("head|jaw", {}, cannon.mouth);
        engineManagers()->particleManager->createEffect("turret_flash", mouth, upwards);
        Game::get().thingyManager->spawn(shotType, "tiles/box", mouth, upwards);
    }

    bool firing_ = false;
    float timer_ = cannon.lookEvery; // seconds to the next look, or shot
    int shots_ = 0;
};

class FireBallCannonShot : public Thingy {
  public:
    explicit FireBallCannonShot(Unit& ownUnit)
        : Thingy(ownUnit, GROUP_BULLETS), scene_(Game::get().session->scene),
          flames_(scene_.createUnit("fireball", ownUnit.position)) {
        ownUnit.visible = false; // it is a place only
        Vec3 forward;
        velocity = quatAxisX(forward, ownUnit.orientation) * fireball.speed;
    }
    ~FireBallCannonShot() override { scene_.removeUnit(flames_); }

    int onHit(const Attack&) override { return 0; }

    void update(float, float dt) override {
        const float step = fireball.timeScale * dt;
        fall(*this, fireball.gravity, fireball.fastestFall, step);
        Vec3& place = unit->position;
        place.z += (fireball.depth - place.z) * clamp(fireball.depthRate * step, 0, 1);
        spin_ += fireball.spin * step;
        flames_->position = place;
        flames_->orientation = quatFromAxisAngle(spin_, {0, 0, 1});
        if (hitsHero() || solidAt(place)) {
            startEffect("bullet_hit", place);
            removeMe = true;
        } else if (watch_.lost(distanceOnScreen(), velocity.y <= -fireball.fastestFall)) {
            removeMe = true;
        }
    }

  private:
    bool hitsHero() {
        Attack attack;
        attack.attacker = this;
        attack.boxMin = position() - Vec3{fireball.half, fireball.half, fireball.half};
        attack.boxMax = position() + Vec3{fireball.half, fireball.half, fireball.half};
        attack.damage = fireball.damage;
        attack.direction = velocity;
        return Game::get().thingyManager->hitGroup(GROUP_PLAYER, attack, false) != 0;
    }

    float distanceOnScreen() const {
        const GameCamera* camera = Game::get().camera();
        return camera ? camera->screenDistance(position()) : 0;
    }

    Scene& scene_;
    Unit* flames_;
    float spin_ = 0; // radians
    LostWatch watch_;
};

const SpawnRow rows[] = {{11, createActor<FireBallCannon>}, {shotType, createActor<FireBallCannonShot>}};

} // namespace
