// The stage is done: big letters, and on to the next one, or from the last back to the title.
#pragma once

#include "frontend/FlyingLetters.h"
#include "frontend/MenuBase.h"

class StageClearMenu final : public MenuBase {
  public:
    // Records that the current stage is cleared.
    StageClearMenu();
    void update(double total, float dt, bool isTop) override;
    void close() override;
    bool pausesGame() const override { return false; }

  private:
    void fly(float dt);
    void goOn() const;

    const bool final_; // of the whole journey
    FlyingLetters letters_;
    float age_ = 0;        // seconds
    float timeToLive_ = 1; // seconds, counted once it is closing
    bool closing_ = false;
};
