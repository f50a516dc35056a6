#include "sdl/SdlControllers.h"

#include <algorithm>
#include <iterator>

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

// SDL counts downwards as positive. The end of the range has no opposite.
Sint16 upwards(Sint16 value) {
    return static_cast<Sint16>(-std::max<int>(value, -32767));
}

// -1000..1000. What rests at the lower end of its range is a trigger or a lever and is measured from there;
// measured from the middle it would be held for ever.
int deflection(SDL_Joystick* joystick, int axis) {
    const int value = SDL_JoystickGetAxis(joystick, axis);
    Sint16 rest = 0;
    if (SDL_JoystickGetAxisInitialState(joystick, axis, &rest) && rest == SDL_JOYSTICK_AXIS_MIN)
        return (value - SDL_JOYSTICK_AXIS_MIN) * 1000 / (SDL_JOYSTICK_AXIS_MAX - SDL_JOYSTICK_AXIS_MIN);
    return value * 1000 / SDL_JOYSTICK_AXIS_MAX;
}

bool sameModel(const SDL_JoystickGUID& a, const SDL_JoystickGUID& b) {
    return std::equal(std::begin(a.data), std::end(a.data), std::begin(b.data));
}

} // namespace

SdlControllers::SdlControllers() {
    // Followed also in the background, so that what is let go there is up on the return.
    SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
    SDL_InitSubSystem(SDL_INIT_JOYSTICK | SDL_INIT_GAMECONTROLLER);
}

SdlControllers::~SdlControllers() {
    joysticks_.clear();
    pad_.reset();
    SDL_QuitSubSystem(SDL_INIT_JOYSTICK | SDL_INIT_GAMECONTROLLER);
}

int SdlControllers::addMappings(const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return 0;
    return std::max(SDL_GameControllerAddMappingsFromFile(file.c_str()), 0);
}

// The pad first: what it is must not become a joystick as well.
int SdlControllers::enumerate() {
    findPad();
    for (Joystick& joystick : joysticks_)
        if (joystick.device && !SDL_JoystickGetAttached(joystick.device.get())) joystick.device.reset();
    for (int device = 0; device < SDL_NumJoysticks(); ++device)
        take(device);
    return static_cast<int>(joysticks_.size());
}

void SdlControllers::take(int device) {
    const SDL_JoystickID id = SDL_JoystickGetDeviceInstanceID(device);
    const bool unusable = std::find(unusable_.begin(), unusable_.end(), id) != unusable_.end();
    if (isPad(id) || holdsAsJoystick(id) || unusable || !numberLeft()) return;
    const SDL_JoystickGUID model = SDL_JoystickGetDeviceGUID(device);
    if (SDL_Joystick* opened = SDL_JoystickOpen(device)) {
        Joystick& joystick = numberFor(model);
        joystick.device.reset(opened);
        joystick.model = model;
    } else {
        unusable_.push_back(id);
    }
}

bool SdlControllers::numberLeft() const {
    return joysticks_.size() < maxJoysticks ||
           std::any_of(joysticks_.begin(), joysticks_.end(),
                       [](const Joystick& joystick) { return !joystick.device; });
}

// Its own from before, else a new one; another's that has gone only when there are no new ones left.
SdlControllers::Joystick& SdlControllers::numberFor(const SDL_JoystickGUID& model) {
    Joystick* abandoned = nullptr;
    for (Joystick& joystick : joysticks_) {
        if (joystick.device) continue;
        if (sameModel(joystick.model, model)) return joystick;
        if (!abandoned) abandoned = &joystick;
    }
    return abandoned && joysticks_.size() == maxJoysticks ? *abandoned : joysticks_.emplace_back();
}

std::optional<std::string> SdlControllers::productName(int index) const {
    const auto& device = joysticks_.at(static_cast<std::size_t>(index)).device;
    const char* name = device ? SDL_JoystickName(device.get()) : nullptr;
    return name ? name : ""; // one that has gone may return
}

bool SdlControllers::read(int index, JoystickState& state) const {
    SDL_Joystick* joystick = joysticks_.at(static_cast<std::size_t>(index)).device.get();
    state = {};
    // Nobody could let go of a button of what has gone.
    if (!inFront_ || !joystick || !SDL_JoystickGetAttached(joystick)) return true;
    // Elements the device does not have stay centred and up.
    const int axes = std::min(SDL_JoystickNumAxes(joystick), static_cast<int>(state.axes.size()));
    for (int axis = 0; axis < axes; ++axis)
        state.axes[axis] = deflection(joystick, axis);
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
    if (!inFront_) return state;
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
        if (SDL_IsGameController(device) && !holdsAsJoystick(SDL_JoystickGetDeviceInstanceID(device)))
            pad_.reset(SDL_GameControllerOpen(device));
    return pad_ != nullptr;
}

bool SdlControllers::isPad(SDL_JoystickID id) const {
    return pad_ && SDL_JoystickInstanceID(SDL_GameControllerGetJoystick(pad_.get())) == id;
}

bool SdlControllers::holdsAsJoystick(SDL_JoystickID id) const {
    return std::any_of(joysticks_.begin(), joysticks_.end(), [id](const Joystick& joystick) {
        return joystick.device && SDL_JoystickInstanceID(joystick.device.get()) == id;
    });
}

} // namespace platform
