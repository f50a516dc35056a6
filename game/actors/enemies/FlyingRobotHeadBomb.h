// Falls, or flies as it was thrown, and goes off on the hero, on a tile or on a platform.
#pragma once

#include "actors/enemies/Enemy.h"

class FlyingRobotHeadBomb final : public Enemy {
  public:
    explicit FlyingRobotHeadBomb(Zelkor::Unit& ownUnit);

    void update(float time, float dt) override;
    int onHit(const Attack&) override { return 0; }
    // Its velocity becomes that of a throw which comes down on the target, faster to one farther away.
    void throwAt(const Zelkor::Vec3& target);

  protected:
    Box hitBox() const override;

  private:
    void explode();
};
