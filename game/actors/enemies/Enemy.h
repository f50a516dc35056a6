// What every enemy is: faces a side, hurts the hero by touch or shot, takes hits in a box of its own, dies
// and tells the event that spawned it. What they do differently is in their update.
#pragma once

#include "actors/Thingy.h"

#include <string>
#include <vector>

namespace Zelkor {
class Animation;
}

// In world units; z takes no part in hits.
struct Box {
    Zelkor::Vec3 min, max;

    // Strictly, in x and y.
    bool overlaps(const Attack& attack) const;
};
// A box that reaches from `below` to `above`, both relative to a point.
Box boxAround(const Zelkor::Vec3& point, const Zelkor::Vec3& below, const Zelkor::Vec3& above);

class Enemy : public Thingy {
  public:
    // Faces where its orientation points: +1 right, -1 left. fullHealth 0 is for hazards.
    Enemy(Zelkor::Unit& ownUnit, float fullHealth);

    // Takes damage in its hitBox while it is vulnerable, with the sound "hit" and the flash, and dies of it.
    int onHit(const Attack& attack) override;

    int facing = 1;

  protected:
    static constexpr float turnRate = 7; // share of the remaining turn per second
    static constexpr float touchDamage = 1;

    // Where it can be hit.
    virtual Box hitBox() const = 0;
    virtual bool vulnerable() const { return true; }
    // Its health is gone.
    virtual void die(const Attack&) { leave(); }

    // Removed, and its event told.
    void leave();
    void turn(float dt, float rate = turnRate);
    // Hurts the first of a group that is in the box. True when it took it.
    bool touch(int whom, const Box& box, float damage = touchDamage);
    bool touchHero(const Box& box, float damage = touchDamage) { return touch(GROUP_PLAYER, box, damage); }

    // Null when there is none.
    Thingy* nearestHero() const;
    // A hero's position lies strictly inside, in all three axes.
    bool heroIn(const Box& box) const;
    // 1 is the edge of the screen.
    float screenDistance() const;
    // 0..1 from left to right and from top to bottom, beyond outside the screen; the middle without a camera.
    Zelkor::Vec2 screenPlace() const;

    // Clips; null when the unit has none of that name.
    Zelkor::Animation* play(const std::string& clip, float fade = 0, float speed = 1);
    // Holds its last pose.
    Zelkor::Animation* playOnce(const std::string& clip, float fade = 0, float speed = 1);
    // Whenever clip is played, next follows it, blended over so many seconds.
    void chain(const std::string& clip, const std::string& next, float blend);
    // A clip that is added to whatever plays below it, once at each play.
    void makeAdditive(const std::string& clip);

    // A clip that takes over the joints with these names and all that hangs on them, whatever plays
    // elsewhere.
    void playOnly(const std::string& clip, const std::vector<std::string>& joints, int layer);
    // Draws a joint, and what hangs on it, beside where its rest would be.
    void shiftJoint(const std::string& joint, const Zelkor::Vec3& offset);

    // A point in the frame of a joint, in the world; the unit's position plus the facing-turned fallback when
    // the unit has no such joint.
    Zelkor::Vec3 jointPoint(const std::string& joint, const Zelkor::Vec3& inJoint,
                            const Zelkor::Vec3& fallback) const;

    // A shot with its sound and flash from the muzzle of the gun on the joint "gunJoint", along the gun, to
    // the side it faces.
    void fireShot();
    // The same, towards a point.
    void fireShotAt(const Zelkor::Vec3& target);

  private:
    Zelkor::Vec3 muzzle() const;
    // Unit length, in the plane.
    Zelkor::Vec3 gunDirection() const;
    void shoot(const Zelkor::Vec3& direction);
};

// A particle effect that nobody moves.
void startEffect(const char* name, const Zelkor::Vec3& position);
