// What the hero is doing: one class a state, each with its own counters.
#pragma once

class PlayerStandard;

class PlayerState {
  public:
    enum Index { onGround = 0, inAir = 1, hurt = 2, climb = 3, cart = 4, count = 5 };

    explicit PlayerState(PlayerStandard& owner) : hero(owner) {}
    virtual ~PlayerState() = default;
    PlayerState(const PlayerState&) = delete;

    // Sets the hero's velocity for this step, and his next state. Seconds of the hero's timer.
    virtual void update(float time, float dt) = 0;
    virtual void enter(float time, int previousState) = 0;
    virtual void leave(float /*time*/) {}

  protected:
    PlayerStandard& hero;
};
