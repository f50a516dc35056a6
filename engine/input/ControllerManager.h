// Keyboard, mouse, joysticks and pad as one picture: raw bytes by binding code, and the logical input of the
// player.
#pragma once

#include "Platform.h"
#include "input/PlayerInput.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Zelkor {

// Slots of ControllerManager::bindings.
enum Binding { bindingUp, bindingDown, bindingLeft, bindingRight, bindingJump, bindingFire, bindingCount };

enum MouseByte { mouseLeft, mouseRight, mouseMiddle, wheelTowards, wheelAway, mouseByteCount = 10 };

inline constexpr int rawButtonCount = 512;
inline constexpr int firstJoystickCode = 256; // element k of joystick j: firstJoystickCode + 64 j + k
inline constexpr int joystickElementCount = 64;

// Elements of one joystick within its block.
inline constexpr int elementHatUp = 20, elementHatRight = 21, elementHatDown = 22, elementHatLeft = 23;
inline constexpr int elementButton0 = 32; // an axis a has 2a (above 512) and 2a + 1 (below -512)

class ControllerManager {
  public:
    // With the default bindings and one player.
    ControllerManager();

    // Takes hold of the joysticks attached now; from then on update also takes in those plugged in later, under
    // numbers of their own. A device that the system also serves as the pad is left out.
    void startJoysticks();

    // Key, mouse button and wheel messages into the raw bytes; true if it was one of these.
    bool handleMessage(const platform::Message& message);
    // One byte by code: 0..511 raw, from 512 the mouse bytes. Other codes are ignored.
    void setButton(int code, bool down);

    // Once a substep: reads the joysticks, then works out every player's input.
    void update();
    // Once a frame, after drawing: the raw bytes become the previous ones, the wheel comes to rest.
    void endOfFrame();
    // Everything up, now and before; for when key-up messages may have been lost.
    void clearAll();

    PlayerInput& firstPlayer() { return *players.front(); }

    // False for codes outside 0..511.
    bool isDown(int code) const;
    // Down now and not at the end of the last frame.
    bool isPressed(int code) const;
    // The code bound in a slot, as text for the player.
    std::string bindingName(int slot) const;
    void setDefaultBindings();

    std::array<std::uint8_t, rawButtonCount> raw{}; // 1 down, 0 up, by binding code
    std::array<std::uint8_t, mouseByteCount> mouseButtons{};
    std::array<std::uint8_t, rawButtonCount> rawPrevious{}; // at the end of the last frame
    std::array<std::uint8_t, mouseByteCount> mouseButtonsPrevious{};
    float mouseX = 0, mouseY = 0;           // cursor as a fraction of the client size, y downwards
    float mouseDeltaX = 0, mouseDeltaY = 0; // over the last frame
    std::array<std::uint16_t, bindingCount> bindings{};
    std::vector<std::unique_ptr<PlayerInput>> players;

  private:
    void startNewJoysticks();
    void readJoystick(int index);
    void updatePlayer(PlayerInput& player);

    bool joysticksStarted_ = false;
    int joystickCount_ = 0;
    std::array<bool, platform::maxJoysticks> joystickUsable_{};
    float previousMouseX_ = 0, previousMouseY_ = 0;
};

} // namespace Zelkor
