#include "frontend/MenuInput.h"

#include "core/EngineManagers.h"
#include "input/ControllerManager.h"

#include <algorithm>

using namespace Zelkor;

namespace {

constexpr float threshold = 0.5f; // of the stick's way

bool above(float now, float before) {
    return now > threshold && !(before > threshold);
}

} // namespace

MenuInput MenuInput::read() {
    const ControllerManager& controllers = *engineManagers()->controllerManager;
    const PlayerInput& player = *controllers.players.front();
    const Vec3 &now = player.move, &before = player.previousMove;
    MenuInput input;
    input.up = above(now.y, before.y);
    input.down = above(-now.y, -before.y);
    input.right = above(now.x, before.x);
    input.left = above(-now.x, -before.x);
    input.stickX = now.x;
    input.accept = player.pressed(PlayerInput::acceptMask);
    input.back = player.pressed(PlayerInput::backMask);
    input.start = player.pressed(PlayerInput::startMask);
    input.mouseHeld = controllers.mouseButtons[mouseLeft] != 0;
    input.click = input.mouseHeld && controllers.mouseButtonsPrevious[mouseLeft] == 0;
    input.mouse = {controllers.mouseX, controllers.mouseY};
    return input;
}

bool ClickArea::update(const MenuInput& input, bool hovered) {
    hovered_ = hovered;
    if (input.click && hovered) armed_ = true;
    if (input.mouseHeld || !armed_) return false;
    armed_ = false;
    return hovered;
}

void MenuSelection::move(const MenuInput& input, int count) {
    if (!input.up && !input.down) return;
    shown = true;
    index = std::clamp(index + (input.down ? 1 : -1), 0, count - 1);
}
