// Joysticks and the pad through SDL. States are those of the last message poll.
#pragma once

#include "Platform.h"

#include <SDL.h>

#include <memory>
#include <vector>

namespace platform {

class SdlControllers {
  public:
    SdlControllers();
    ~SdlControllers();
    SdlControllers(const SdlControllers&) = delete;

    int enumerate();
    std::optional<std::string> productName(int index) const;
    bool read(int index, JoystickState& state) const;
    std::optional<PadState> pad();

  private:
    struct Close {
        void operator()(SDL_Joystick* joystick) const { SDL_JoystickClose(joystick); }
        void operator()(SDL_GameController* controller) const { SDL_GameControllerClose(controller); }
    };

    bool findPad();
    bool holdsAsJoystick(int device) const;

    std::vector<std::unique_ptr<SDL_Joystick, Close>> joysticks_;
    std::unique_ptr<SDL_GameController, Close> pad_;
};

} // namespace platform
