#include "frontend/PauseMenu.h"

#include "core/TimerManager.h"
#include "game/Game.h"

using namespace Zelkor;

namespace {

const MenuRow row{MenuKind::pause, createMenu<PauseMenu>};

constexpr float closingTime = 0.3f; // seconds
constexpr int letterCount = 5;
constexpr float letterWay = 200, letterMargin = 40; // units; the margin: for each unit of the view's aspect
constexpr float boardRate = 4.5f, boardWay = 90;

// Hung below the word, each on the ropes of its own. x: from where the word begins.
const MenuButton3D::Design boards[] = {
    {"title/pausbutton", "RESUME", {33, 52, 0}},
    {"title/pausbutton", "OPTIONS", {34, 39.5f, 0}},
    {"title/pausbutton", "QUIT", {33.5f, 27, 0}, "dropBalloon"},
};

void setPaused(bool paused) {
    for (const char* name : {"game", "boss"})
        TimerManager::instance().findTimer(name)->paused = paused ? 1 : 0;
}

} // namespace

PauseMenu::PauseMenu()
    : MenuBase(MenuKind::pause), manager_(*Game::get().menuManager),
      letters_(manager_, "title/pause_letter", letterCount) {
    setPaused(true);
    for (const MenuButton3D::Design& board : boards)
        buttons_.push_back(std::make_unique<MenuButton3D>(manager_, board));
    fly(0, true);
}

PauseMenu::~PauseMenu() {
    setPaused(false);
}

void PauseMenu::update(double, float dt, bool isTop) {
    const bool opened = age_ > 0; // what has opened it in this very update must not close it again
    age_ += dt;
    const bool shown = isTop && !closing_;
    if (closing_) timeToLive_ -= dt;
    closed = timeToLive_ <= 0;
    fly(dt, shown);
    const MenuInput input = shown && opened ? MenuInput::read() : MenuInput::none();
    selection_.move(input, buttonCount);
    if (input.back) return close();
    for (int i = 0; i < buttonCount; ++i)
        if (buttons_[static_cast<std::size_t>(i)]->update(input, i == selection_.index, selection_.shown))
            return activate(i);
}

void PauseMenu::fly(float dt, bool wanted) {
    letters_.advance(dt, wanted);
    const float rest = -letterMargin * manager_.menuCamera.aspect;
    for (int i = 0; i < letterCount; ++i)
        letters_.shift(i, (1 - letters_.progress(i)) * -letterWay + rest);
    arrival_ = clamp(arrival_ + (wanted ? boardRate : -boardRate) * dt, 0, 1);
    const float above = (1 - arrival_) * (1 - arrival_) * boardWay;
    for (std::size_t i = 0; i < buttons_.size(); ++i)
        buttons_[i]->place(boards[i].rest + Vec3{rest, above, 0});
}

void PauseMenu::activate(int button) {
    if (button == resume) close();
    if (button == options) manager_.openMenu(MenuKind::options);
    if (button == quit) Game::get().restartTransition();
}

void PauseMenu::close() {
    if (!closing_) timeToLive_ = closingTime;
    closing_ = true;
}
