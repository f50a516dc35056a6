// A message across the middle of the screen, over the game standing still.
#pragma once

#include "frontend/MenuBase.h"
#include "frontend/MenuInput.h"
#include "input/ControllerManager.h"

#include <array>
#include <cstdint>

class PopupMenu : public MenuBase {
  public:
    // Pauses the timer "game"; the destructor leaves it as it was before.
    explicit PopupMenu(const std::string& text) : PopupMenu(MenuKind::popup, text) {}
    ~PopupMenu() override;
    void update(double total, float dt, bool isTop) override;
    void close() override;

    // Seen, of the screen's height.
    float bandHeight() const { return band_.height; }

  protected:
    PopupMenu(int ownKind, const std::string& text);
    // Once it listens. This one closes at any button or click.
    virtual void listen(const MenuInput& input);

  private:
    void show(float dt);

    Zelkor::GuiObject &dimmer_, &band_, &text_;
    bool gameWasPaused_;
    float age_ = 0;        // seconds
    float timeToLive_ = 1; // seconds, counted once it is closing
    bool closing_ = false;
};

// Binds the key or joystick control that is pressed next.
class BtnAssignPopup final : public PopupMenu {
  public:
    // slot: of the bindings.
    explicit BtnAssignPopup(int slot);
    void update(double total, float dt, bool isTop) override;

  protected:
    void listen(const MenuInput& input) override;

  private:
    int slot_;
    // What was down in the update before. An edge is seen by every substep of its frame, also the one that opened
    // this.
    std::array<std::uint8_t, Zelkor::rawButtonCount> before_;
};
