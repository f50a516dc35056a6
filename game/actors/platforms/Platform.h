// What the hero stands on, is pushed by and rides.
#pragma once

#include "actors/Thingy.h"

// A platform has pushed an actor's box out.
struct PlatformContact {
    bool pushed = false;
    Zelkor::Vec3 normal; // the side of the platform that was touched
};

// How far below the feet of a rider a surface that turns away from them still carries him, world units.
inline constexpr float footReach = 2.5f;

class Platform : public Thingy {
  public:
    explicit Platform(Zelkor::Unit& ownUnit) : Thingy(ownUnit, GROUP_PLATFORMS) {}

    // The displacement a rider takes this frame, world units.
    virtual Zelkor::Vec3 carry() const = 0;
    // Moves an actor's box (centre, half extents) out of the platform. velocity: the actor's, units a second.
    virtual PlatformContact pushOut(Zelkor::Vec3& centre, const Zelkor::Vec3& halfSize,
                                    const Zelkor::Vec3& actorVelocity) = 0;
    // Strictly inside, in x and y.
    virtual bool containsPoint(float x, float y) const = 0;
};
