// The bandit in a mine cart of his own: he waits on the rails, then keeps his distance from the hero and
// shoots.
#include "actors/ThingyManager.h"
#include "actors/enemies/Bandit.h"
#include "actors/rides/Minecart.h"
#include "actors/rides/RailThingy.h"
#include "core/EngineManagers.h"
#include "game/Game.h"
#include "resources/Unit.h"
#include "resources/UnitManager.h"

#include <cmath>
#include <memory>

using namespace Zelkor;

namespace {

constexpr float halfWidth = 3, height = 20, halfDepth = 4;
constexpr float wakeReach = 130, wakeHeight = 80; // of the hero
constexpr float keptDistance = 60;                // from him
constexpr float closing = 0.8f;                   // of what that is off by, as a speed per second
constexpr float fasterThanHero = 35, topSpeed = 150;
// Ahead of the hero he is no faster than this: a hero in a cart gains on him, and his shots reach him.
constexpr float speedAhead = 60;
constexpr float railAhead = 10;                    // where his rails end, he jumps
constexpr float gravity = 300, risingGravity = 60; // of his cart, like the hero's
constexpr float aimTime = 0.8f, shotPause = 1.4f;  // seconds
constexpr float lostDistance = 2.4f;               // screen distance
constexpr float deathTime = 0.75f;
constexpr Vec3 wreckThrow{0, 70, 0};
constexpr const char* cartUnit = "minecart";

class MinecartBandit final : public Bandit {
  public:
    explicit MinecartBandit(Unit& ownUnit)
        : Bandit(ownUnit), upright_(ownUnit.orientation),
          cartUnit_(engineManagers()->unitManager->createUnit(cartUnit)), cart_(*cartUnit_) {
        cartUnit_->position = ownUnit.position;
        ownUnit.attach(cartUnit_.get());
        play("idle");
        cart_.runSpeed = 0;
        stepIn();
    }
    ~MinecartBandit() override { unit->detach(cartUnit_.get()); }

    void update(float time, float dt) override {
        if (awake_)
            ride(dt);
        else
            watch();
        stepIn();
        turnUpright(dt);
        if (dying())
            dieInCart(dt);
        else
            touchHero(hitBox());
        updateFlash(time, dt);
    }

  protected:
    Box hitBox() const override {
        return boxAround(position(), {-halfWidth, 0, -halfDepth}, {halfWidth, height, halfDepth});
    }
    void die(const Attack&) override {
        startDying("die2", 1, deathTime);
        cart_.runSpeed = topSpeed; // it runs away, out of the hero's
        dropLoot(position());
    }

  private:
    void watch() {
        const Thingy* hero = nearestHero();
        if (!hero) return;
        const Vec3 way = hero->position() - position();
        awake_ = std::abs(way.x) < wakeReach && std::abs(way.y) < wakeHeight;
        heroX_ = hero->position().x;
    }

    void ride(float dt) {
        const Thingy* hero = dying() ? nullptr : nearestHero();
        if (hero) follow(*hero, dt);
        const bool railsEnd = cart_.onRails() && !RailThingy::find(*Game::get().thingyManager,
                                                                   cart_.position() + Vec3{railAhead, 0, 0});
        cart_.drive(dt, railsEnd && cart_.velocity.x > 0, true, gravity, risingGravity);
        velocity = cart_.velocity;
        if (!dying() && screenDistance() > lostDistance) leave();
    }

    // On the side of him that he is on, as fast as he is, if he can.
    void follow(const Thingy& hero, float dt) {
        const float x = hero.position().x;
        const float heroSpeed = dt > 0 ? (x - heroX_) / dt : 0;
        heroX_ = x;
        const bool ahead = position().x > x;
        const float off = x + (ahead ? keptDistance : -keptDistance) - position().x;
        cart_.runSpeed = clamp(heroSpeed + clamp(closing * off, -fasterThanHero, fasterThanHero), 0,
                               ahead ? speedAhead : topSpeed);
        facing = ahead ? -1 : 1;
        timer_ -= dt;
        if (timer_ > 0) return;
        timer_ = shotPause;
        play("fire");
        fireShot();
    }

    void stepIn() { unit->position = cart_.position() + Vec3{0, Minecart::floorHeight, 0}; }

    // Turns to his side and leans with his cart.
    void turnUpright(float dt) {
        unit->orientation = upright_;
        turn(dt);
        upright_ = unit->orientation;
        quatMultiply(unit->orientation, quatFromAxisAngle(cart_.tilt, {0, 0, 1}), upright_);
    }

    void dieInCart(float dt) {
        dieStep(dt);
        if (!removeMe) return;
        if (Thingy* wreck = Game::get().thingyManager->spawn(SpawnType::tileFall, cartUnit, cart_.position(),
                                                             cartUnit_->orientation))
            wreck->velocity = cart_.velocity + wreckThrow;
    }

    Quat upright_; // how he would stand on level rails
    std::unique_ptr<Unit> cartUnit_;
    Minecart cart_;
    bool awake_ = false;
    float heroX_ = 0; // in the previous frame
    float timer_ = aimTime;
};

const SpawnRow row{43, createActor<MinecartBandit>};

} // namespace
