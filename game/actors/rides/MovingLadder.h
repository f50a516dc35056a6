// A ladder that moves there and back, and whoever hangs on it with it.
#pragma once

#include "actors/Thingy.h"
#include "actors/platforms/EasedPath.h"

class MovingLadder : public Thingy {
  public:
    explicit MovingLadder(Zelkor::Unit& ownUnit);

    void update(float time, float dt) override;
    int onHit(const Attack&) override { return 0; }
    // 0 the height, world units; 1 the length of its path, 2 the period, 3 the phase, 4 the ease time.
    void setParameter(int index, float value) override;
    Zelkor::Vec3 carry() const { return lastMove_; }
    // The middle of its lowest cell.
    Zelkor::Vec3 foot() const { return path_.position(); }

    float height = 40;

  private:
    void place();

    EasedPath path_;
    Zelkor::Vec3 lastMove_;
};
