// A rock that drifts straight on, spinning, until it is shot or runs into something.
#include "actors/ThingyManager.h"
#include "actors/enemies/Enemy.h"
#include "actors/enemies/Walking.h"
#include "core/Random.h"
#include "resources/Unit.h"

using namespace Zelkor;

namespace {

constexpr struct {
    float health = 3, smallHealth = 2;
    float smallSize = 1; // and below: smallHealth
    float size = 1.5f, leastSize = 0.3f, mostSize = 20;
    float radius = 5; // for a size of 1
    float speed = 30; // to the side it faces
    float touchInset = 1;
    float feeler = 5;                        // ahead along its motion
    float spinLeast = 0.4f, spinMost = 1.6f; // radians per second
    float gone = 2;                          // screen distance
} rock;

class EnemyAsteroid : public Enemy {
  public:
    explicit EnemyAsteroid(Unit& ownUnit) : Enemy(ownUnit, rock.health) {
        velocity.x = rock.speed * static_cast<float>(facing);
        aimOffset = {};
        axis_ = {randomUniform() - 0.5f, randomUniform() - 0.5f, randomUniform() + 0.5f};
        normalize(axis_);
        spin_ = rock.spinLeast + (rock.spinMost - rock.spinLeast) * randomUniform();
        setSize(rock.size);
    }

    void setParameter(int index, float value) override {
        if (index == 0) setSize(clamp(value, rock.leastSize, rock.mostSize));
        if (index == 1) velocity.x = value;
        if (index == 2) velocity.y = value;
    }

    void update(float time, float dt) override {
        unit->position += velocity * dt;
        Quat spun;
        unit->orientation = quatMultiply(spun, quatFromAxisAngle(spin_ * dt, axis_), unit->orientation);
        const float half = radius() - rock.touchInset;
        touchHero(boxAround(position(), {-half, -half, -half}, {half, half, half}));
        Vec3 way = velocity;
        normalize(way);
        if (solidAt(position() + way * rock.feeler))
            burst();
        else if (screenDistance() > rock.gone)
            leave();
        updateFlash(time, dt);
    }

  protected:
    // The attack's nearest point lies within the ball.
    bool reachedBy(const Attack& attack) const {
        const Vec3 middle = position();
        const Vec3 nearest{clamp(middle.x, attack.boxMin.x, attack.boxMax.x),
                           clamp(middle.y, attack.boxMin.y, attack.boxMax.y), middle.z};
        return distance(nearest, middle) <= radius();
    }
    int onHit(const Attack& attack) override { return reachedBy(attack) ? Enemy::onHit(attack) : 0; }
    Box hitBox() const override {
        return boxAround(position(), -Vec3{1, 1, 1} * radius(), Vec3{1, 1, 1} * radius());
    }
    void die(const Attack&) override { burst(); }

  private:
    float radius() const { return rock.radius * size_; }

    void setSize(float size) {
        size_ = size;
        unit->scale = {size, size, size};
        health = maxHealth = size <= rock.smallSize ? rock.smallHealth : rock.health;
        hitPadding = {size, size, 0};
    }

    void burst() {
        if (removeMe) return;
        startEffect("bomb1_explosion", position());
        leave();
    }

    Vec3 axis_;
    float spin_ = 0, size_ = 1; // radians per second; radii of 5
};

const SpawnRow row{29, createActor<EnemyAsteroid>};

} // namespace
