// A box without a picture of its own, which its boss puts where a fist has landed.
#pragma once

#include "actors/platforms/MovingPlatform.h"

class BossHackPlatform : public MovingPlatform {
  public:
    explicit BossHackPlatform(Zelkor::Unit& ownUnit) : MovingPlatform(ownUnit) {}
    void update(float time, float dt) override;
    void setParameter(int, float) override {}
};
