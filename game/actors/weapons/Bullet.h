// What flies out of guns: moves, hits its target group, stops at tiles and platforms.
#pragma once

#include "actors/Thingy.h"
#include "fx/SpriteLists.h"

struct TileRecord;

class Bullet : public Thingy {
  public:
    explicit Bullet(Zelkor::Unit& ownUnit, const char* spriteList = "bullet");

    void update(float time, float dt) override;
    int onHit(const Attack&) override { return 0; }
    // Along its forward axis, units per second.
    void setSpeed(float speed);

    int targetGroup;
    int shotId = -1;

  protected:
    // Half the size of what it hits with.
    struct Reach {
        Zelkor::Vec3 half;
        float damage;
    };
    Zelkor::Vec3 forward() const;
    // Of the actors in its target group; whether one was hit.
    bool hits(const Reach& reach, bool all = false);
    // A solid tile or a platform is where it is.
    bool inWall() const;
    // Removed, with the effect of a hit.
    void burst();
    // Removed silently once it has left the screen and flies on outwards.
    void leaveScreen();
    // The common step: moves, hits, stops, leaves.
    void fly(float dt);
    // Glow and streak, along the flight.
    void placeSprites(float length = 4.5f, float width = 1);

    Zelkor::SpriteLists::Handle glow_, streak_;
};
