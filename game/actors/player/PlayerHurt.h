#pragma once

#include "actors/player/PlayerState.h"

// Thrown back by a hit, and dead.
class PlayerHurt : public PlayerState {
  public:
    using PlayerState::PlayerState;

    void update(float time, float dt) override;
    void enter(float time, int previousState) override;

  private:
    float entered_ = 0;
};
