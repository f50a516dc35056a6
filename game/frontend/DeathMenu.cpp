#include "frontend/DeathMenu.h"

#include "actors/ThingyManager.h"
#include "frontend/MenuManager.h"
#include "game/Game.h"
#include "game/Session.h"
#include "resources/Unit.h"

using namespace Zelkor;

namespace {

const MenuRow row{MenuKind::death, createMenu<DeathMenu>};

constexpr float waitingTime = 0.6f; // seconds before the picture fades
constexpr float poseRate = 5.5f;    // of the pose's weight, per second
constexpr float aboveHero = 13;     // along his up axis
constexpr Vec3 beforeHero{0, 0, 60};

} // namespace

void openDeathMenu() {
    Game* game = Game::current();
    if (!game) return;
    for (const int kind : {MenuKind::stageClear, MenuKind::levelStart, MenuKind::death})
        if (game->menuManager->isOpen(kind)) return;
    game->menuManager->openMenu(MenuKind::death);
}

DeathMenu::DeathMenu() : FadeTransition(MenuKind::death) {
    lookAtHero();
}

void DeathMenu::update(double, float dt, bool) {
    age_ += dt;
    lookAtHero();
    if (waiting_ && age_ < waitingTime) return;
    if (waiting_) Game::get().menuManager->closeMenus(this, false);
    waiting_ = false;
    advance(dt);
}

void DeathMenu::changeStage() {
    if (Session* session = Game::get().session.get()) session->restartRequested = true;
}

// A hero that has burst leaves the place where he was.
void DeathMenu::lookAtHero() {
    std::vector<Thingy*> heroes;
    Game::get().thingyManager->collectAll(GROUP_PLAYER, heroes);
    if (heroes.empty()) return;
    Vec3 up;
    quatRotate(up, heroes.front()->unit->orientation, {0, 1, 0});
    lookPoint_ = heroes.front()->position() + aboveHero * up;
}

MenuCameraPose DeathMenu::cameraPose() const {
    if (stageChanged()) return {};
    return {clamp(poseRate * age_, 0, 1), lookPoint_ + beforeHero, {}};
}
