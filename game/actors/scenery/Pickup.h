// What the hero collects: cakes and guns.
#pragma once

#include "actors/Thingy.h"

class Pickup : public Thingy {
  public:
    enum Kind { cake, wholeCake, firstGun }; // guns follow in the order of the weapons from 1

    explicit Pickup(Zelkor::Unit& ownUnit);

    void update(float time, float dt) override;
    int onHit(const Attack&) override { return 0; }
    // 0 the kind; 1 with value 0: stays where it is, for good.
    void setParameter(int index, float value) override;
    // Gone from the stage, and its event told.
    void collect();

    int kind = cake;

  private:
    void fall(float dt);

    bool dropped_ = true;
    float age_ = 0; // seconds
};
