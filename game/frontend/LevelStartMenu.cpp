#include "frontend/LevelStartMenu.h"

#include "frontend/MenuManager.h"
#include "game/Game.h"
#include "game/Session.h"

namespace {

const MenuRow row{MenuKind::levelStart, createMenuWith<LevelStartMenu, int>};

} // namespace

LevelStartMenu::LevelStartMenu(int mode) : FadeTransition(MenuKind::levelStart), mode_(mode) {
    Game::get().menuManager->closeMenus(this, false);
}

void LevelStartMenu::update(double, float dt, bool) {
    advance(dt);
}

void LevelStartMenu::changeStage() {
    Game& game = Game::get();
    if (mode_ == restart && game.session) game.session->restartRequested = true;
    if (mode_ == newSession || mode_ == newSessionTitle) game.startSession();
    if (mode_ == newSessionTitle) game.menuManager->openMenu(MenuKind::title);
}
