// From one stage to another, or to the title: the picture fades out and in again.
#pragma once

#include "frontend/FadeTransition.h"

class LevelStartMenu final : public FadeTransition {
  public:
    // What happens in the dark.
    enum Mode : int {
        newSession,     // of the game's current stage
        restart,        // of the running session
        newSessionTitle // with the title over it
    };
    // Tells the open menus to close. Other modes change nothing.
    explicit LevelStartMenu(int mode);
    void update(double total, float dt, bool isTop) override;

  private:
    void changeStage() override;

    int mode_;
};
