// The title, over the stage that goes on behind it.
#pragma once

#include "frontend/FlyingLetters.h"
#include "frontend/MenuBase.h"
#include "frontend/MenuButton3D.h"
#include "frontend/MenuWidgets.h"

#include <array>
#include <vector>

class TitleMenu final : public MenuBase {
  public:
    // Remembers the stage's music for later and fades it out.
    TitleMenu();
    ~TitleMenu() override;
    void update(double total, float dt, bool isTop) override;
    void close() override;
    bool pausesGame() const override { return false; }
    // Close to the hero; back to the stage's view when it closes.
    MenuCameraPose cameraPose() const override;

  private:
    enum Button { start, options, quit, buttonCount };
    void fly(float dt, bool wanted);
    void updateButtons(const MenuInput& input);
    void activate(int button);

    MenuManager& manager_;
    FlyingLetters letters_;
    Zelkor::Unit* pole_; // of the manager's scene
    std::vector<std::unique_ptr<MenuButton3D>> buttons_;
    std::vector<std::unique_ptr<MenuButton>> icons_;
    std::array<Zelkor::GuiObject*, 2> credits_;
    MenuSelection selection_;
    float age_ = 0;        // seconds
    float arrival_ = 0;    // of the signpost: 0 below the picture .. 1 in its place
    float timeToLive_ = 1; // seconds, counted once it is closing
    bool closing_ = false;
};
