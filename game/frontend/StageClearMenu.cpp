#include "frontend/StageClearMenu.h"

#include "frontend/LevelStartMenu.h"
#include "frontend/MenuInput.h"
#include "frontend/MenuManager.h"
#include "game/Game.h"
#include "game/Settings.h"

namespace {

const MenuRow row{MenuKind::stageClear, createMenu<StageClearMenu>};

constexpr float showingTime = 2.3f, startFrom = 1; // seconds; from then on the start button goes on
constexpr float closingTime = 1.3f;                // seconds
constexpr float letterWay = 200, letterMargin = 35; // units

} // namespace

StageClearMenu::StageClearMenu()
    : MenuBase(MenuKind::stageClear), final_(Game::get().currentStage == Game::stageCount - 1),
      letters_(*Game::get().menuManager, final_ ? "title/end_letter" : "title/stageclear_letter", final_ ? 6 : 10) {
    Game& game = Game::get();
    if (game.stageFile.empty()) game.settings->stageCleared(game.currentStage); // proving grounds do not count
    fly(0);
}

void StageClearMenu::update(double, float dt, bool) {
    age_ += dt;
    if (closing_) timeToLive_ -= dt;
    closed = timeToLive_ <= 0;
    fly(dt);
    if (closing_) return;
    if (age_ >= showingTime || (age_ >= startFrom && MenuInput::read().start)) {
        close();
        goOn();
    }
}

// The first half comes from the left, the other from the right.
void StageClearMenu::fly(float dt) {
    letters_.advance(dt, !closing_);
    for (int i = 0; i < letters_.count(); ++i) {
        const float from = i < letters_.count() / 2 ? -letterWay : letterWay;
        letters_.shift(i, (1 - letters_.progress(i)) * from - letterMargin);
    }
}

void StageClearMenu::goOn() const {
    Game& game = Game::get();
    if (!game.stageFile.empty())
        game.menuManager->openMenu(MenuKind::levelStart, LevelStartMenu::restart);
    else if (final_)
        game.restartTransition();
    else
        game.goToStage(game.currentStage + 1);
}

void StageClearMenu::close() {
    if (!closing_) timeToLive_ = closingTime;
    closing_ = true;
}
