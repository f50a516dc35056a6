#pragma once

#include "actors/player/PlayerState.h"
#include "math/Math.h"

class Minecart;

// In a mine cart, which he drives.
class PlayerCartState : public PlayerState {
  public:
    using PlayerState::PlayerState;

    void update(float time, float dt) override;
    void enter(float time, int previousState) override;
    void leave(float time) override;

    // The cart whose nearest way out is its top, from feet on it; pushes the hero out of one that he is in
    // otherwise. Null when there is none to ride.
    static Minecart* cartToRide(PlayerStandard& hero);

    // The cart to be in when the state is entered. Null once it has gone.
    Minecart* cart = nullptr;

  private:
    void fallInto(float dt);
    void throwOut();

    Zelkor::Vec3 offset_;     // of his feet from the cart's floor
    float fallSpeed_ = 0;     // into it
};
