// Pause: the stage stands still until it is gone.
#pragma once

#include "frontend/FlyingLetters.h"
#include "frontend/MenuBase.h"
#include "frontend/MenuButton3D.h"

#include <vector>

class PauseMenu final : public MenuBase {
  public:
    // Pauses the timers "game" and "boss"; the destructor lets both go on.
    PauseMenu();
    ~PauseMenu() override;
    void update(double total, float dt, bool isTop) override;
    void close() override;

  private:
    enum Button { resume, options, quit, buttonCount };
    void fly(float dt, bool wanted);
    void activate(int button);

    MenuManager& manager_;
    FlyingLetters letters_;
    std::vector<std::unique_ptr<MenuButton3D>> buttons_;
    MenuSelection selection_;
    float age_ = 0;        // seconds
    float arrival_ = 0;    // of the boards: 0 above the picture .. 1 in their places
    float timeToLive_ = 1; // seconds, counted once it is closing
    bool closing_ = false;
};
