// Sits until the hero comes near, then hops and hops and is turned by nothing but walls.
#include "actors/ThingyManager.h"
#include "actors/enemies/Enemy.h"
#include "actors/enemies/Walking.h"
#include "resources/Unit.h"

using namespace Zelkor;

namespace {

constexpr struct {
    float health = 1;
    float wakeRadius = 87;
    float firstPause = 0.1f, pause = 0.25f; // seconds on the ground before a hop
    float hopSpeed = 46, hopRise = 150;
    float gravity = 300, fastestFall = 150;
    float bounce = -0.5f; // of its speed, off a wall
    float jumpClipSpeed = 0.7f;
    float feet = 3;
    float wallReach = 4, wallHeight = 4, headHeight = 10;
    Vec3 touchBelow{-3, 0, -14}, touchAbove{3, 6, 14};
    Vec3 bodyBelow{-4, 0, -14}, bodyAbove{4, 9, 14};
} bunny;

class EnemyBunny : public Enemy {
  public:
    explicit EnemyBunny(Unit& ownUnit) : Enemy(ownUnit, bunny.health) {
        chain("jump", "jump2", 0.1f);
        chain("land", "idle", 0.1f);
        play("idle");
    }

    void update(float time, float dt) override {
        fall(*this, bunny.gravity, bunny.fastestFall, dt);
        const bool grounded = standOnTiles(*this, bunny.feet);
        switch (state_) {
        case waiting:
            waitForHero();
            break;
        case pausing:
            pause_ -= dt;
            if (grounded && pause_ <= 0) hop();
            break;
        case hopping:
            fly(grounded);
            break;
        }
        touchHero(boxAround(position(), bunny.touchBelow, bunny.touchAbove));
        turn(dt);
        updateFlash(time, dt);
    }

  protected:
    Box hitBox() const override { return boxAround(position(), bunny.bodyBelow, bunny.bodyAbove); }
    void die(const Attack&) override {
        startEffect("animal_death", position());
        leave();
    }

  private:
    enum State { waiting, pausing, hopping };

    void waitForHero() {
        const Thingy* hero = nearestHero();
        if (!hero || distance(hero->position(), position()) > bunny.wakeRadius) return;
        facing = hero->position().x < position().x ? -1 : 1;
        state_ = pausing;
        pause_ = bunny.firstPause;
    }

    void hop() {
        velocity = {bunny.hopSpeed * static_cast<float>(facing), bunny.hopRise, 0};
        state_ = hopping;
        play("jump", 0.05f, bunny.jumpClipSpeed);
    }

    void fly(bool grounded) {
        if (grounded) {
            velocity = {};
            state_ = pausing;
            pause_ = bunny.pause;
            play("land", 0.05f);
            return;
        }
        if (wallAhead(*this, facing, bunny.wallReach, bunny.wallHeight)) {
            facing = -facing;
            velocity.x *= bunny.bounce;
        }
        if (velocity.y > 0 && solidAt(position() + Vec3{0, bunny.headHeight, 0})) velocity.y = 0;
    }

    State state_ = waiting;
    float pause_ = 0; // seconds left on the ground
};

const SpawnRow row{44, createActor<EnemyBunny>};

} // namespace
