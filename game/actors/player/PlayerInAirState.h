#pragma once

#include "actors/player/PlayerState.h"

class PlayerInAirState : public PlayerState {
  public:
    using PlayerState::PlayerState;

    void update(float time, float dt) override;
    void enter(float time, int previousState) override;

  private:
    void fall(float dt);
    void land();
    void steer(float dt);

    float holdTimer_ = 0;         // seconds for which a held jump still rises further
    bool fallPoseChosen_ = false; // the body has turned from rising to falling
};
