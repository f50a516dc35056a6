// What the hero is told to do in one substep: the player's device, or whatever drives him instead.
#pragma once

#include "input/PlayerInput.h"
#include "math/Math.h"

#include <cstdint>

class MenuManager;

class PlayerInputSnapshot {
  public:
    // Both must outlive the snapshot. While the title is open the device is not heard.
    explicit PlayerInputSnapshot(const Zelkor::PlayerInput& device, const MenuManager* menus = nullptr)
        : device_(&device), menus_(menus) {}

    bool down(std::uint32_t mask) const;
    // Down in this substep and not in the one before.
    bool pressed(std::uint32_t mask) const;
    // The stick in the movement frame: x along right, y along up.
    Zelkor::Vec2 direction() const;

    // While set, the three fields below take the device's place.
    bool overridden = false;
    std::uint32_t overrideButtons = 0, overridePreviousButtons = 0;
    Zelkor::Vec3 overrideStick;

    // Rows: what of the stick goes along right, and along up.
    Zelkor::Vec3 mapping[2] = {{1, 0, 0}, {0, 1, 0}};

    static constexpr std::uint32_t jump = Zelkor::PlayerInput::jumpMask;
    static constexpr std::uint32_t fire = Zelkor::PlayerInput::fireMask;
    static constexpr std::uint32_t start = Zelkor::PlayerInput::startMask;
    static constexpr std::uint32_t back = Zelkor::PlayerInput::backMask;
    static constexpr std::uint32_t accept = Zelkor::PlayerInput::acceptMask;

  private:
    const Zelkor::PlayerInput& device() const;

    const Zelkor::PlayerInput* device_;
    const MenuManager* menus_;
};
