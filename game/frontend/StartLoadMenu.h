// The loading screen, on which the program starts: black until everything is there, then it clears away.
#pragma once

#include "frontend/MenuBase.h"

class StartLoadMenu final : public MenuBase {
  public:
    StartLoadMenu();
    // Loads in one go, once the screen has been seen.
    void update(double total, float dt, bool isTop) override;
    bool pausesGame() const override { return false; }

  private:
    Zelkor::GuiObject& sheet_;
    Zelkor::GuiObject& text_;
    int updates_ = 0;
    bool loaded_ = false;
};
