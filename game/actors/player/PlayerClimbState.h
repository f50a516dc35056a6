#pragma once

#include "actors/player/Ladders.h"
#include "actors/player/PlayerState.h"

// On a ladder: from rung to rung, over its top, and shooting aside with one hand.
class PlayerClimbState : public PlayerState {
  public:
    using PlayerState::PlayerState;

    void update(float time, float dt) override;
    void enter(float time, int previousState) override;
    void leave(float time) override;

    // The ladder to be on when the state is entered.
    Ladder ladder;

  private:
    enum class Doing { hanging, stepping, overTop, fromTop };

    void follow(float dt);
    void shoot(float time);
    void hideGun();
    void climb(float time);
    void startStep(float time, int direction);
    void climbOver(float time);
    void hang();
    bool stepsDown() const;
    void turn(float x);

    Doing doing_ = Doing::hanging;
    int direction_ = 1;  // +1 up, -1 down
    bool second_ = false; // the other hand leads: "climb_idle2"
    float rung_ = 0;      // where the feet are to be
    float doneAt_ = 0;    // when the clip that plays has ended
    float lastShot_ = 0;
    bool gunShown_ = false;
};
