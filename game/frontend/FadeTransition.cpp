#include "frontend/FadeTransition.h"

#include "core/TimerManager.h"
#include "frontend/MenuManager.h"
#include "game/Game.h"
#include "game/GameCamera.h"

#include <algorithm>

using namespace Zelkor;

namespace {

constexpr float outRate = 2, inRate = 1.5f; // of the fade, per second
constexpr float clear = 0.001f;             // a fade below it is none

void setFade(float fade) {
    if (GameCamera* camera = Game::get().camera()) camera->fade = fade;
}

} // namespace

void FadeTransition::advance(float dt) {
    switch (phase_) {
    case Phase::fadingOut:
        fadeOut(dt);
        break;
    case Phase::dark:
        setFade(1);
        TimerManager::instance().findTimer("game")->paused = 0; // whatever held the stage before
        phase_ = Phase::settling;
        break;
    case Phase::settling:
        phase_ = Phase::fadingIn;
        [[fallthrough]];
    case Phase::fadingIn:
        fadeIn(dt);
        break;
    }
}

void FadeTransition::fadeOut(float dt) {
    if (GameCamera* camera = Game::get().camera()) {
        camera->fade = std::min(camera->fade + outRate * dt, 1.0f);
        if (camera->fade < 1) return;
    }
    Game::get().menuManager->closeMenus(this, true);
    changeStage();
    setFade(1); // of a camera that may be new
    phase_ = Phase::dark;
}

void FadeTransition::fadeIn(float dt) {
    const GameCamera* camera = Game::get().camera();
    const float left = camera ? camera->fade - inRate * dt : 0;
    closed = left < clear;
    setFade(closed ? 0 : left);
}
