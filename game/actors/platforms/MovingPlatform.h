// A platform that runs back and forth along a straight path, and what every box-shaped platform shares.
#pragma once

#include "actors/platforms/EasedPath.h"
#include "actors/platforms/Platform.h"

// The box a platform is in the world, in x and y.
struct PlatformBox {
    float left = 0, bottom = 0, right = 0, top = 0;

    // The nearest way out of an actor's box (centre, half extents) that overlaps: up, down, left or right, in
    // that order where two are equally near. Moves centre.
    PlatformContact pushOut(Zelkor::Vec3& centre, const Zelkor::Vec3& halfSize) const;
};

class MovingPlatform : public Platform {
  public:
    explicit MovingPlatform(Zelkor::Unit& ownUnit);

    void update(float time, float dt) override;
    int onHit(const Attack&) override { return 0; }
    // Those of the path.
    void setParameter(int index, float value) override;
    Zelkor::Vec3 carry() const override { return lastMove; }
    PlatformContact pushOut(Zelkor::Vec3& centre, const Zelkor::Vec3& halfSize,
                            const Zelkor::Vec3& actorVelocity) override;
    bool containsPoint(float x, float y) const override;
    PlatformBox box() const;

    EasedPath path;
    Zelkor::Vec3 size{20, 10, 20};
    Zelkor::Vec3 offset{5, 5, 10}; // the box starts at position - offset
    Zelkor::Vec3 lastMove;
    Zelkor::Vec3 lastRiderPosition; // of the pushed box's lower middle
    bool hasRider = false;          // something stood on top in this frame

  protected:
    // Where the platform is now.
    virtual Zelkor::Vec3 pathPosition() const { return path.position(); }
    void refreshPosition();
    // Ends an update: what riders are carried by, and nobody stands on it yet.
    void finishMove(const Zelkor::Vec3& from);

  private:
    void spinWheel(float time);
};
