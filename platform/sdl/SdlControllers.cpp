#include "sdl/SdlControllers.h"

#include <algorithm>

namespace platform {

namespace {

struct HatAngle {
    Uint8 hat;
    std::uint32_t angle;
};

constexpr HatAngle hatAngles[] = {
    {SDL_HAT_UP, 0},       {SDL_HAT_RIGHTUP, 4500},   {SDL_HAT_RIGHT, 9000}, {SDL_HAT_RIGHTDOWN, 13500},
    {SDL_HAT_DOWN, 18000}, {SDL_HAT_LEFTDOWN, 22500}, {SDL_HAT_LEFT, 27000}, {SDL_HAT_LEFTUP, 31500},
};

struct PadButtonPair {
    SDL_GameControllerButton sdl;
    PadButton button;
};

constexpr PadButtonPair padButtons[] = {
    {SDL_CONTROLLER_BUTTON_DPAD_UP, padUp},
    {SDL_CONTROLLER_BUTTON_DPAD_DOWN, padDown},
    {SDL_CONTROLLER_BUTTON_DPAD_LEFT, padLeft},
    {SDL_CONTROLLER_BUTTON_DPAD_RIGHT, padRight},
    {SDL_CONTROLLER_BUTTON_START, padStart},
    {SDL_CONTROLLER_BUTTON_BACK, padBack},
    {SDL_CONTROLLER_BUTTON_LEFTSTICK, padLeftThumb},
    {SDL_CONTROLLER_BUTTON_RIGHTSTICK, padRightThumb},
    {SDL_CONTROLLER_BUTTON_LEFTSHOULDER, padLeftShoulder},
    {SDL_CONTROLLER_BUTTON_RIGHTSHOULDER, padRightShoulder},
    {SDL_CONTROLLER_BUTTON_A, padA},
    {SDL_CONTROLLER_BUTTON_B, padB},
    {SDL_CONTROLLER_BUTTON_X, padX},
    {SDL_CONTROLLER_BUTTON_Y, padY},
};

// SDL counts downwards as positive; one less keeps -32768 in range.
Sint16 upwards(Sint16 value) {
    return static_cast<Sint16>(-1 - value);
}

} // namespace

SdlControllers::SdlControllers() {
    SDL_InitSubSystem(SDL_INIT_JOYSTICK | SDL_INIT_GAMECONTROLLER);
}

SdlControllers::~SdlControllers() {
    joysticks_.clear();
    pad_.reset();
    SDL_QuitSubSystem(SDL_INIT_JOYSTICK | SDL_INIT_GAMECONTROLLER);
}

int SdlControllers::enumerate() {
    joysticks_.clear();
    const bool hasPad = findPad();
    const SDL_JoystickID padId =
        hasPad ? SDL_JoystickInstanceID(SDL_GameControllerGetJoystick(pad_.get())) : -1;
    for (int device = 0; device < SDL_NumJoysticks(); ++device) {
        if (joysticks_.size() == maxJoysticks) break;
        if (hasPad && SDL_JoystickGetDeviceInstanceID(device) == padId) continue;
        if (SDL_Joystick* joystick = SDL_JoystickOpen(device)) joysticks_.emplace_back(joystick);
    }
    return static_cast<int>(joysticks_.size());
}

std::optional<std::string> SdlControllers::productName(int index) const {
    const char* name = SDL_JoystickName(joysticks_.at(static_cast<std::size_t>(index)).get());
    return name ? std::optional<std::string>(name) : std::nullopt;
}

bool SdlControllers::read(int index, JoystickState& state) const {
    SDL_Joystick* joystick = joysticks_.at(static_cast<std::size_t>(index)).get();
    if (!SDL_JoystickGetAttached(joystick)) return false;
    state = {};
    // Elements the device does not have stay centred and up.
    const int axes = std::min(SDL_JoystickNumAxes(joystick), static_cast<int>(state.axes.size()));
    for (int axis = 0; axis < axes; ++axis)
        state.axes[axis] = SDL_JoystickGetAxis(joystick, axis) * 1000 / 32767;
    if (SDL_JoystickNumHats(joystick) > 0)
        for (const HatAngle& hatAngle : hatAngles)
            if (SDL_JoystickGetHat(joystick, 0) == hatAngle.hat) state.hat = hatAngle.angle;
    const int buttons = std::min(SDL_JoystickNumButtons(joystick), static_cast<int>(state.buttons.size()));
    for (int button = 0; button < buttons; ++button)
        state.buttons[button] = SDL_JoystickGetButton(joystick, button) != 0;
    return true;
}

std::optional<PadState> SdlControllers::pad() {
    if (!findPad()) return {};
    PadState state;
    for (const PadButtonPair& pair : padButtons)
        if (SDL_GameControllerGetButton(pad_.get(), pair.sdl)) state.buttons |= pair.button;
    const auto axis = [this](SDL_GameControllerAxis which) {
        return SDL_GameControllerGetAxis(pad_.get(), which);
    };
    state.leftX = axis(SDL_CONTROLLER_AXIS_LEFTX);
    state.leftY = upwards(axis(SDL_CONTROLLER_AXIS_LEFTY));
    state.rightX = axis(SDL_CONTROLLER_AXIS_RIGHTX);
    state.rightY = upwards(axis(SDL_CONTROLLER_AXIS_RIGHTY));
    return state;
}

// The pad may come and go at any time.
bool SdlControllers::findPad() {
    if (pad_ && SDL_GameControllerGetAttached(pad_.get())) return true;
    pad_.reset();
    for (int device = 0; device < SDL_NumJoysticks() && !pad_; ++device)
        if (SDL_IsGameController(device) && !holdsAsJoystick(device))
            pad_.reset(SDL_GameControllerOpen(device));
    return pad_ != nullptr;
}

bool SdlControllers::holdsAsJoystick(int device) const {
    const SDL_JoystickID id = SDL_JoystickGetDeviceInstanceID(device);
    return std::any_of(joysticks_.begin(), joysticks_.end(),
                       [id](const auto& joystick) { return SDL_JoystickInstanceID(joystick.get()) == id; });
}

} // namespace platform
