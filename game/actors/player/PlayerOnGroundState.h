#pragma once

#include "actors/player/PlayerState.h"

class PlayerOnGroundState : public PlayerState {
  public:
    using PlayerState::PlayerState;

    void update(float time, float dt) override;
    void enter(float time, int previousState) override;
    void leave(float time) override;

  private:
    enum class Doing { idle, run, crouch };

    void land();
    void idle(float dt);
    void run(float dt);
    void crouch(float time, float dt);
    bool firesShot();
    void startCrouch();
    void turnCrouched(float time);
    bool jumps(float dt);

    Doing doing_ = Doing::idle;
    float bounceTimer_ = 0; // seconds on a bounce shroom
    float turnTime_ = 0;    // when crouching may turn again
};
