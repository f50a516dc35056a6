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

    // As the platform's operations of these names.
    int enumerate();
    int addMappings(const std::filesystem::path& file);
    std::optional<std::string> productName(int index) const;
    bool read(int index, JoystickState& state) const;
    std::optional<PadState> pad();
    // Everything is at rest while the program is not in front.
    void setInFront(bool inFront) { inFront_ = inFront; }

  private:
    struct Close {
        void operator()(SDL_Joystick* joystick) const { SDL_JoystickClose(joystick); }
        void operator()(SDL_GameController* controller) const { SDL_GameControllerClose(controller); }
    };

    // A number and who has it.
    struct Joystick {
        std::unique_ptr<SDL_Joystick, Close> device; // null: it has gone
        SDL_JoystickGUID model{};                    // by which it is known when it returns
    };

    bool findPad();
    bool isPad(SDL_JoystickID id) const;
    bool holdsAsJoystick(SDL_JoystickID id) const;
    bool numberLeft() const;
    Joystick& numberFor(const SDL_JoystickGUID& model); // while one is left
    void take(int device);

    std::vector<Joystick> joysticks_;
    std::vector<SDL_JoystickID> unusable_; // could not be opened
    std::unique_ptr<SDL_GameController, Close> pad_;
    bool inFront_ = true;
};

} // namespace platform
