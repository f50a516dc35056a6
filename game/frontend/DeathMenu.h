// The hero has died: a look at him, then the stage from its beginning.
#pragma once

#include "frontend/FadeTransition.h"

// For a hero who dies. Nothing in a program without a game, nor while a stage is being left anyway.
void openDeathMenu();

class DeathMenu final : public FadeTransition {
  public:
    DeathMenu();
    void update(double total, float dt, bool isTop) override;
    // Nearer to the hero, until the stage restarts.
    MenuCameraPose cameraPose() const override;

  private:
    void changeStage() override;
    void lookAtHero();

    float age_ = 0; // seconds
    bool waiting_ = true;
    Zelkor::Vec3 lookPoint_; // above his feet
};
