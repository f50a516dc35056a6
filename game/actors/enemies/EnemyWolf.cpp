// Runs its floor from end to end, leaps gaps and ledges after the hero, turns when he is behind.
#include "actors/ThingyManager.h"
#include "actors/enemies/Enemy.h"
#include "actors/enemies/Walking.h"
#include "animation/SkeletonInstance.h"
#include "core/Random.h"
#include "resources/Unit.h"
#include "world/TileGrid.h"

#include <algorithm>
#include <optional>

using namespace Zelkor;

namespace {

constexpr struct {
    float health = 2;
    float speed = 80, acceleration = 160;
    float gravity = 300, fastestFall = 300;
    float nearEnd = 10;                                      // of its floor
    Vec3 behindNear{10, -200, -40}, behindFar{910, 200, 40}; // from its feet, against its facing
    float seen = 1.1f;                                       // screen distance
    float narrowFloor = 21;                                  // no use in turning on a floor this short
    float ahead = 15, aheadHeight = 4;                       // the cell a jump is for
    int columns = 4, ledges = 4, steps = 3;                  // how far ahead and how high it tries
    float leastRise = 70;
    float margin = 5;                    // above a ledge
    float hopSpeed = 56, hopRise = 60;   // down
    int hopNearest = 2, hopFarthest = 5; // cells below its feet
    float climbSpeed = 48;
    float jumpPause = 0.1f, landPause = 0.06f; // seconds
    float fallClipBelow = 30;
    float restingClipSpeed = 0.15f; // of "run", where it has to stand
    float landed = 0.4f;            // of its speed is left
    float jumpLoopSpeed = 0.9f, fallLoopSpeed = 0.5f, landSpeed = 0.9f;
    float feet = 3, nose = 4;
    Vec3 touchBelow{-3, 0, -14}, touchAbove{3, 6, 14};
    Vec3 bodyBelow{0, -1, -14}, bodyAbove{4, 13.5f, 14};
    float thrownUp = 60, thrownLeast = 50, thrownMost = 80; // in death
    float deathSpin = 9;                                    // radians per second
    float gone = 1.2f;                                      // screen distance
} wolf;

class EnemyWolf : public Enemy {
  public:
    explicit EnemyWolf(Unit& ownUnit) : Enemy(ownUnit, wolf.health), floor_(floorUnder(ownUnit.position)) {
        chain("jump", "jump_loop", 0.05f);
        chain("fall", "fall_loop", 0.05f);
        chain("land", "run", 0.05f);
        setSpeed("jump_loop", wolf.jumpLoopSpeed);
        setSpeed("fall_loop", wolf.fallLoopSpeed);
        play("run");
        if (!solidAt(ownUnit.position - Vec3{0, 1, 0})) state_ = inAir;
    }

    void update(float time, float dt) override {
        if (screenDistance() < wolf.seen) seen_ = true;
        pause_ -= dt;
        switch (state_) {
        case running:
            run(dt);
            break;
        case inAir:
            fly(dt);
            break;
        case dying:
            tumble(dt);
            break;
        }
        if (state_ != dying) {
            touchHero(boxAround(position(), wolf.touchBelow, wolf.touchAbove));
            turn(dt);
        }
        updateFlash(time, dt);
    }

  protected:
    Box hitBox() const override { return boxAround(position(), wolf.bodyBelow, wolf.bodyAbove); }
    bool vulnerable() const override { return state_ != dying; }
    void die(const Attack& attack) override {
        state_ = dying;
        const float side = attack.direction.x < 0 ? -1.0f : 1.0f;
        velocity = {side * (wolf.thrownLeast + (wolf.thrownMost - wolf.thrownLeast) * randomUniform()),
                    wolf.thrownUp, 0};
        play("fall_loop", 0.1f, wolf.fallLoopSpeed);
    }

  private:
    enum State { running, inAir, dying };

    float side() const { return static_cast<float>(facing); }
    // So many columns ahead and in the row that begins so far above its feet.
    bool solid(int columnsAhead, int row) const {
        const float half = tileSize / 2;
        return solidAt(position() + Vec3{side() * tileSize * static_cast<float>(columnsAhead),
                                         tileSize * static_cast<float>(row) + half, 0});
    }

    // --- On its floor ---

    void run(float dt) {
        if (pause_ <= 0) walkTowards(*this, facing, wolf.speed, wolf.acceleration, dt);
        if (floor_.ahead(position().x, facing) < wolf.nearEnd) decideAtEnd();
        if (state_ == inAir) return;
        unit->position.x += velocity.x * dt;
        setSpeed("run", std::max(absolute(velocity.x) / wolf.speed, wolf.restingClipSpeed));
        if (!solidAt(position() + Vec3{-wolf.feet, -1, 0}) && !solidAt(position() + Vec3{wolf.feet, -1, 0}))
            state_ = inAir; // the ground has gone
    }

    void decideAtEnd() {
        const bool heroIsBehind = heroBehind();
        const bool waits = heroIsBehind || pause_ > 0;
        if (!waits && tryJump()) return;
        velocity.x = 0;
        if (pause_ > 0 || !seen_) return;
        if (floor_.length() > wolf.narrowFloor || heroIsBehind) facing = -facing;
    }

    bool heroBehind() const {
        const float back = -side();
        const float a = back * wolf.behindNear.x, b = back * wolf.behindFar.x;
        return heroIn(boxAround(position(), {std::min(a, b), wolf.behindNear.y, wolf.behindNear.z},
                                {std::max(a, b), wolf.behindFar.y, wolf.behindFar.z}));
    }

    // --- Jumps ---

    bool tryJump() {
        const bool blocked = solidAt(position() + Vec3{side() * wolf.ahead, wolf.aheadHeight, 0});
        const std::optional<Vec3> jump = blocked ? climb() : leap();
        if (!jump) return false;
        velocity = *jump;
        pause_ = wolf.jumpPause;
        state_ = inAir;
        falling_ = false;
        play("jump", 0.05f);
        return true;
    }

    // Over a gap, onto a ledge up to three cells higher, or down.
    std::optional<Vec3> leap() const {
        for (int column = 1; column <= wolf.columns; ++column) {
            if (!solid(column, -1)) continue;
            for (int ledge = 1; ledge <= wolf.ledges; ++ledge)
                if (!solid(column, ledge - 1) && !solid(column - 1, ledge - 1))
                    return leapOnto(column, ledge);
        }
        for (int column = 1; column <= wolf.columns; ++column)
            for (int below = wolf.hopNearest; below <= wolf.hopFarthest; ++below)
                if (solid(column, -below)) return Vec3{wolf.hopSpeed * side(), wolf.hopRise, 0};
        return std::nullopt;
    }

    Vec3 leapOnto(int column, int ledge) const {
        const float columns = static_cast<float>(column), height = tileSize * static_cast<float>(ledge);
        Vec3 jump{wolf.speed * side(),
                  std::max(0.5f * wolf.gravity * (columns + 1.5f) * tileSize / wolf.speed, wolf.leastRise),
                  0};
        const float rising = squareRoot(2 * (height - wolf.margin) / wolf.gravity); // seconds up to the ledge
        if (jump.y < wolf.gravity * rising) {
            jump.y = wolf.gravity * rising;
            jump.x = tileSize * columns * side() / rising;
        }
        return jump;
    }

    // Onto what stands in its way, where there is room above both.
    std::optional<Vec3> climb() const {
        for (int step = 1; step <= wolf.steps; ++step) {
            if (solid(0, step)) return std::nullopt;
            const float ahead = side() * wolf.ahead, height = tileSize * static_cast<float>(step);
            if (solidAt(position() + Vec3{ahead, height + tileSize / 2, 0})) continue;
            const float rising = squareRoot(2 * (height + wolf.margin) / wolf.gravity);
            return Vec3{wolf.climbSpeed * side(), wolf.gravity * rising, 0};
        }
        return std::nullopt;
    }

    // --- In the air ---

    void fly(float dt) {
        if (pause_ <= 0) {
            velocity.y = std::max(velocity.y - wolf.gravity * dt, -wolf.fastestFall);
            unit->position.y += velocity.y * dt;
        }
        if (!solidAt(position() + Vec3{side() * wolf.nose, 1, 0})) unit->position.x += velocity.x * dt;
        if (!falling_ && pause_ <= 0 && velocity.y < wolf.fallClipBelow) {
            falling_ = true;
            play("fall", 0.1f);
        }
        if (pause_ <= 0 && standOnTiles(*this, wolf.feet)) land();
    }

    void land() {
        state_ = running;
        velocity.x *= wolf.landed;
        pause_ = wolf.landPause;
        floor_ = floorUnder(position());
        play("land", 0.05f, wolf.landSpeed);
    }

    // --- Dying ---

    void tumble(float dt) {
        fall(*this, wolf.gravity, wolf.fastestFall, dt);
        Quat spun;
        unit->orientation = quatMultiply(
            spun, quatFromAxisAngle(-wolf.deathSpin * dt * (velocity.x < 0 ? -1.0f : 1.0f), {0, 0, 1}),
            unit->orientation);
        if (!solidAt(position()) && screenDistance() <= wolf.gone) return;
        startEffect("animal_death", position());
        leave();
    }

    void setSpeed(const char* clip, float speed) const {
        Animation* animation = unit->skeleton ? unit->skeleton->animation(clip) : nullptr;
        if (animation) animation->speed = speed;
    }

    FloorLimits floor_;
    State state_ = running;
    float pause_ = 0; // seconds
    bool seen_ = false, falling_ = false;
};

const SpawnRow row{31, createActor<EnemyWolf>};

} // namespace
