// The base of everything that lives in a stage and does something.
#pragma once

#include "math/Math.h"

namespace Zelkor {
class Unit;
struct GameTimer;
} // namespace Zelkor

enum ThingyGroup {
    GROUP_PLAYER = 0,
    GROUP_BULLETS = 1,
    GROUP_ENEMIES = 2,
    GROUP_PLATFORMS = 3,
    GROUP_SCENERY = 4,
    GROUP_PICKUPS = 5,
    GROUP_RAILS = 6,
    GROUP_RIDES = 7,
    GROUP_BACKDROP = 8,
};
inline constexpr int groupCount = 10; // group 9 holds nothing

class Thingy;

// One attack, as a target is told of it.
struct Attack {
    Thingy* attacker = nullptr;
    Zelkor::Vec3 boxMin, boxMax; // world units; z is ignored
    float damage = 0;
    int kind = 0;
    Zelkor::Vec3 direction; // the attacker's velocity, zero for blasts
};

class Thingy {
  public:
    // The unit is the actor's place in the world; the manager releases it with the actor. Bound to the timer
    // "game".
    Thingy(Zelkor::Unit& unit, int group);
    virtual ~Thingy() = default;
    Thingy(const Thingy&) = delete;

    // time and delta of the actor's timer, seconds.
    virtual void update(float /*time*/, float /*dt*/) {}
    virtual void teleport(const Zelkor::Vec3& /*position*/) {}
    // 0: the hit does not concern this actor and the attack goes on. Positive: hit. Negative: hit, and the
    // attack stops at once even when it was meant for everything in range.
    virtual int onHit(const Attack& attack);
    virtual void setParameter(int /*index*/, float /*value*/) {}
    virtual void activate() {}
    // Fades the red of a hit, in a third of a second.
    virtual void updateFlash(float time, float dt);

    Zelkor::Vec3 position() const;
    // The timer whose time and delta update is given, and that the unit's animations follow. While it is
    // paused the actor stands still.
    void bindTimer(Zelkor::GameTimer& other);

    Zelkor::Vec3 velocity; // world units per second
    int spawnType = 0;
    Zelkor::Unit* unit;
    Zelkor::GameTimer* timer = nullptr;
    const int group; // a ThingyGroup, fixed by the class
    bool removeMe = false;
    bool removeWhenOffscreen = false;
    float health = 0;
    float maxHealth = 0;
    int linkedEvent = -1; // the event that spawned it, -1 for none
    float flash = -1;     // hit flash 0..1; -1 forces one colour refresh
    Zelkor::Vec4 baseColour{1, 1, 1, 1};
    Zelkor::Vec3 aimOffset{0, 5, 0}; // where homing shots steer at, from the unit's position
    Zelkor::Vec3 hitPadding;         // half-sizes added to the unit's box when it is a target

  protected:
    // Every sub-mesh colour becomes baseColour x (1 - t) + red x t.
    void tint(float t);
};
