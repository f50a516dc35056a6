// A cart on rails: it runs, leaves the rails, jumps and lands on them again. Who rides it drives it.
#pragma once

#include "actors/Thingy.h"

class Minecart : public Thingy {
  public:
    // Of the floor that a rider's feet stand on, above the rails; and of the tub around it.
    static constexpr float floorHeight = 4;
    static constexpr float halfWidth = 14, depth = 21; // within which it pushes who does not ride it

    explicit Minecart(Zelkor::Unit& ownUnit);

    int onHit(const Attack&) override { return 0; }
    float top() const { return position().y + floorHeight; }

    // One step with a rider. jumpPressed and jumpHeld: his button. Gravities: his, units per second squared.
    void drive(float dt, bool jumpPressed, bool jumpHeld, float gravity, float heldJumpGravity);
    // Thrown up by a hit.
    void throwUp();
    // Runs to the next wall. True once it stands there for good: nobody rides it any more.
    bool stopped() const { return stopped_; }
    bool onRails() const { return onRails_; }

    float tilt = 0;       // radians, drawn
    float runSpeed = 100; // on level rails, to the right

  private:
    void runOnRails(float dt, bool jumpPressed);
    void fly(float dt, bool jumpHeld, float gravity, float heldJumpGravity);
    void stopAtWall();

    bool onRails_ = true;
    bool stopped_ = false;
    float speed_ = 0;    // along the rails, or across in the air
    float holdTime_ = 0; // seconds for which a held jump still rises further
};
