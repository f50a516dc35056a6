#include "input/ControllerManager.h"

#include "VirtualKeys.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace Zelkor {

namespace {

namespace key = platform::key;

constexpr int axisThreshold = 512;        // of 1000: about half deflection
constexpr std::uint32_t hatOctant = 4500; // hundredths of a degree
constexpr int thumbDeadZone = 7849;
constexpr float thumbRange = 32768;
// The name under which the system lists a pad that it also serves as the pad; it must not be read twice.
constexpr const char* padProductName = "Controller (XBOX 360 For Windows)";

// Every element that a joystick has; those between them are never down.
void writeElements(const platform::JoystickState& state, std::uint8_t* block) {
    for (std::size_t axis = 0; axis < state.axes.size(); ++axis) {
        block[2 * axis] = state.axes[axis] > axisThreshold;
        block[2 * axis + 1] = state.axes[axis] < -axisThreshold;
    }
    const std::uint32_t octant = state.hat / hatOctant; // centred: beyond the last one
    block[elementHatUp] = octant == 0 || octant == 1 || octant == 7;
    block[elementHatRight] = octant >= 1 && octant <= 3;
    block[elementHatDown] = octant >= 3 && octant <= 5;
    block[elementHatLeft] = octant >= 5 && octant <= 7;
    for (std::size_t button = 0; button < state.buttons.size(); ++button)
        block[elementButton0 + button] = state.buttons[button];
}

Vec3 direction(bool up, bool down, bool left, bool right) {
    Vec3 result{static_cast<float>(right - left), static_cast<float>(up - down), 0};
    if (result.x != 0 && result.y != 0) {
        const float diagonal = 1 / std::sqrt(2.0f);
        result.x *= diagonal;
        result.y *= diagonal;
    }
    return result;
}

float thumb(std::int16_t value) {
    return static_cast<float>(value) / thumbRange;
}

float thumbOutsideDeadZone(std::int16_t value) {
    return std::abs(static_cast<int>(value)) > thumbDeadZone ? thumb(value) : 0;
}

} // namespace

ControllerManager::ControllerManager() {
    setDefaultBindings();
    players.push_back(std::make_unique<PlayerInput>());
}

void ControllerManager::setDefaultBindings() {
    bindings = {key::up, key::down, key::left, key::right, 'Z', 'X'};
}

void ControllerManager::startJoysticks() {
    joysticksStarted_ = true;
    joystickCount_ = 0;
    startNewJoysticks();
}

void ControllerManager::startNewJoysticks() {
    const int count = std::min(platform::current()->enumerateJoysticks(), platform::maxJoysticks);
    for (; joystickCount_ < count; ++joystickCount_) {
        const auto productName = platform::current()->startJoystick(joystickCount_);
        joystickUsable_[joystickCount_] = productName && *productName != padProductName;
    }
}

bool ControllerManager::handleMessage(const platform::Message& message) {
    switch (message.kind) {
    case platform::MessageKind::key:
        if (message.code < firstJoystickCode) setButton(message.code, message.down);
        return true;
    case platform::MessageKind::mouseButton:
        if (message.code >= mouseLeft && message.code <= mouseMiddle)
            setButton(rawButtonCount + message.code, message.down);
        return true;
    case platform::MessageKind::wheel:
        mouseButtons[message.delta < 0 ? wheelTowards : wheelAway] = 1;
        return true;
    default:
        return false;
    }
}

void ControllerManager::setButton(int code, bool down) {
    if (code >= 0 && code < rawButtonCount)
        raw[code] = down;
    else if (code >= rawButtonCount && code < rawButtonCount + mouseByteCount)
        mouseButtons[code - rawButtonCount] = down;
}

void ControllerManager::update() {
    if (joysticksStarted_) startNewJoysticks();
    for (int index = 0; index < joystickCount_; ++index)
        if (joystickUsable_[index]) readJoystick(index);
    for (auto& player : players)
        updatePlayer(*player);
}

// A joystick that does not answer keeps what it last said.
void ControllerManager::readJoystick(int index) {
    platform::JoystickState state;
    if (platform::current()->readJoystick(index, state))
        writeElements(state, &raw[firstJoystickCode + index * joystickElementCount]);
}

void ControllerManager::updatePlayer(PlayerInput& player) {
    player.previousMove = player.move;
    player.previousAim = player.aim;
    player.previousButtons = player.buttons;

    const auto found = platform::current()->pad();
    const bool hasPad = found && found->type == platform::PadState::gamepad;
    const platform::PadState pad = hasPad ? *found : platform::PadState();
    const auto padDown = [&pad](int button) { return (pad.buttons & button) != 0; };
    const auto bound = [this](Binding slot) { return isDown(bindings[slot]); };

    player.move = direction(
        bound(bindingUp) || padDown(platform::padUp), bound(bindingDown) || padDown(platform::padDown),
        bound(bindingLeft) || padDown(platform::padLeft), bound(bindingRight) || padDown(platform::padRight));
    player.aim = player.move;
    player.move.x += thumbOutsideDeadZone(pad.leftX);
    player.move.y += thumbOutsideDeadZone(pad.leftY);
    player.aim.x += thumb(pad.rightX);
    player.aim.y += thumb(pad.rightY);

    player.buttons = 0;
    if (bound(bindingJump) || padDown(platform::padA))
        player.buttons |= PlayerInput::jumpMask | PlayerInput::acceptMask;
    if (bound(bindingFire) || padDown(platform::padX)) player.buttons |= PlayerInput::fireMask;
    if (isDown(key::enter) || padDown(platform::padStart))
        player.buttons |= PlayerInput::startMask | PlayerInput::acceptMask;
    if (isDown(key::backspace) || isDown(key::escape) || padDown(platform::padBack | platform::padB))
        player.buttons |= PlayerInput::backMask;
}

void ControllerManager::endOfFrame() {
    rawPrevious = raw;
    mouseButtonsPrevious = mouseButtons;
    mouseButtons[wheelTowards] = mouseButtons[wheelAway] = 0;
    mouseDeltaX = mouseX - previousMouseX_;
    mouseDeltaY = mouseY - previousMouseY_;
    previousMouseX_ = mouseX;
    previousMouseY_ = mouseY;
}

void ControllerManager::clearAll() {
    raw.fill(0);
    rawPrevious.fill(0);
    mouseButtons.fill(0);
    mouseButtonsPrevious.fill(0);
}

bool ControllerManager::isDown(int code) const {
    return code >= 0 && code < rawButtonCount && raw[code] != 0;
}

bool ControllerManager::isPressed(int code) const {
    return isDown(code) && rawPrevious[code] == 0;
}

std::string ControllerManager::bindingName(int slot) const {
    const int code = bindings.at(static_cast<std::size_t>(slot));
    if ((code >= 'A' && code <= 'Z') || (code >= '0' && code <= '9'))
        return std::string(1, static_cast<char>(code));
    if (code >= firstJoystickCode) {
        const int element = code - firstJoystickCode;
        return "Pad" + std::to_string(element / joystickElementCount) + "_Btn" +
               std::to_string(element % joystickElementCount);
    }
    switch (code) {
    case key::up:
        return "Arrow_Up";
    case key::down:
        return "Arrow_Down";
    case key::left:
        return "Arrow_Left";
    case key::right:
        return "Arrow_Right";
    case key::enter:
        return "Return";
    case key::shift:
        return "Shift";
    case key::ctrl:
        return "Ctrl";
    case key::space:
        return "Space";
    case key::leftShift:
        return "Left_shift";
    case key::rightShift:
        return "Right_shift";
    case key::leftCtrl:
        return "Left_ctrl";
    // Not a slip: it is shown exactly so.
    case key::rightCtrl:
        return "Right_trl";
    default:
        return "#" + std::to_string(code);
    }
}

} // namespace Zelkor
