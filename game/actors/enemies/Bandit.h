// What every bandit has, on a floor, in a hatch, a window or a cart: clips that follow one another, and his
// end.
#pragma once

#include "actors/enemies/Enemy.h"

class Bandit : public Enemy {
  protected:
    explicit Bandit(Zelkor::Unit& ownUnit);

    bool vulnerable() const override { return !dying_; }
    bool dying() const { return dying_; }
    // Plays the clip, bleeds, and is gone after so many seconds.
    void startDying(const char* clip, float clipSpeed, float seconds);
    // One step towards it: red all the time, a puff of dust right before the end, then removed and its event
    // told.
    void dieStep(float dt);
    // Homing shots look for somebody else, and the colour of the hit is gone for good.
    void leaveTargets();
    // An attack that goes the way he looks, or without a way one that is behind him.
    bool isFromBehind(const Attack& attack) const;

  private:
    bool dying_ = false;
    bool puffed_ = false;
    float deathTimer_ = 0; // seconds left
};
