// The options, written on a board that drops in on its ropes and swings.
#pragma once

#include "frontend/MenuBase.h"
#include "frontend/MenuButton3D.h"
#include "frontend/OptionsPage.h"

#include <memory>
#include <vector>

class OptionsMenu final : public MenuBase {
  public:
    OptionsMenu();
    ~OptionsMenu() override;
    void update(double total, float dt, bool isTop) override;
    void close() override;
    bool pausesGame() const override { return false; }

    // Null while BACK is selected.
    const OptionsPage* page() const { return page_.get(); }
    int selectedTab() const { return tab_; }
    bool pageFocused() const { return pageFocused_; }
    const Zelkor::Vec3& anchor() const { return anchor_; }
    float tilt() const { return tilt_; }
    const MenuButton3D& tabButton(int tab) const { return *tabs_[static_cast<std::size_t>(tab)]; }

  private:
    // The first ones are the pages of OptionsPage.
    enum Tab { soundTab, inputTab, graphicsTab, backTab, tabCount };
    void swing(float dt);
    void placeBoard();
    void navigate(const MenuInput& input);
    void moveInPage(int by);
    void selectTab(int tab);
    void showPage(OptionsPage::Kind which);
    void updateTabs(const MenuInput& input);
    void leave();

    MenuManager& manager_;
    Zelkor::Unit* board_; // of the manager's scene
    std::vector<std::unique_ptr<MenuButton3D>> tabs_;
    std::unique_ptr<OptionsPage> page_;
    int tab_ = soundTab;
    bool pageFocused_ = false;
    bool keysUsed_ = false;
    Zelkor::Vec3 anchor_{0, 150, -5}, velocity_{0, -50, 0};
    float tilt_ = 0, tiltRate_ = 0; // radians, about the depth axis
    float age_ = 0;                 // seconds
    float timeToLive_ = 1;          // seconds, counted once it is closing
    bool closing_ = false;
};
