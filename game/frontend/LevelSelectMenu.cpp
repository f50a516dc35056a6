#include "frontend/LevelSelectMenu.h"

#include "audio/AudioManager.h"
#include "core/EngineManagers.h"
#include "core/Random.h"
#include "game/Game.h"
#include "game/Settings.h"

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Zelkor;

namespace {

const MenuRow row{MenuKind::levelSelect, createMenu<LevelSelectMenu>};

constexpr float acceptFrom = 0.1f, revealFrom = 0.4f; // seconds of age
constexpr float flightOfBullet = 0.2f;                // seconds from the shot to the stage
constexpr float closingTime = 0.4f;                   // seconds
constexpr float markerRate = 3;                       // radians per second
constexpr const char *moveSound = "fullballoon", *backSound = "dropballoon", *shotSound = "shot1";

// Units of the menus' scene. The sheet's lower left corner, BACK's middle, and what both together need of the view.
constexpr Vec3 sheetPlace{-70, 17, 0}, backPlace{58, 7.5f, 0};
constexpr float neededWidth = 158, neededHeight = 107, viewHeight = 100;
constexpr float hangRate = 4, hangWay = 110;

void play(const char* sound) {
    engineManagers()->audioManager->playSound(sound, 1);
}

// Any of 2048 directions.
float randomTurn() {
    return static_cast<float>(randomInt() % 2048) / 2047 * 2 * pi;
}

} // namespace

LevelSelectMenu::LevelSelectMenu()
    : MenuBase(MenuKind::levelSelect), manager_(*Game::get().menuManager), board_(manager_),
      back_(manager_, {"title/quitbtn", "BACK", backPlace, backSound}) {
    select(Game::get().currentStage);
    hang(0);
}

bool LevelSelectMenu::unlocked(int stage) const {
    return stage <= Game::get().settings->unlockedStage;
}

void LevelSelectMenu::select(int stage) {
    const Settings& settings = *Game::get().settings;
    const int before = selected_;
    selected_ = std::clamp(stage, 0, std::max(0, std::min(settings.unlockedStage, settings.lastStage)));
    if (age_ > 0 && selected_ != before) play(moveSound);
    if (selected_ / MapPage::stages != page_) showPage(selected_ / MapPage::stages);
    board_.showCaption("STAGE_" + std::to_string(selected_ + 1), marked_);
}

void LevelSelectMenu::showPage(int page) {
    page_ = page;
    pressedItem_ = -1;
    const Settings& settings = *Game::get().settings;
    board_.show(page, settings.unlockedStage, settings.clearedMask);
}

const MapItem& LevelSelectMenu::selectedItem() const {
    const auto& items = board_.items();
    return *std::find_if(items.begin(), items.end(), [this](const MapItem& item) {
        return item.kind == MapItem::Kind::stage && item.stage == selected_;
    });
}

void LevelSelectMenu::update(double total, float dt, bool isTop) {
    const bool opened = age_ > 0; // what has opened it in this very update is not meant for it
    age_ += dt;
    if (closing_) timeToLive_ -= dt;
    closed = timeToLive_ <= 0;
    hang(dt);
    if (age_ > revealFrom) board_.reveal(dt);
    const bool listens = isTop && opened && !closing_ && !shot_;
    handle(listens ? MenuInput::read() : MenuInput::none());
    const float angle = static_cast<float>(std::fmod(total * markerRate, 2.0 * pi));
    board_.showMarker(selectedItem(), angle, marked_ && isTop && !closing_ && !shot_);
    if (!shot_ || closing_) return;
    untilStart_ -= dt;
    if (untilStart_ <= 0) Game::get().goToStage(selected_);
}

// As far away as it takes to see it all; a narrow screen sees less to the sides.
void LevelSelectMenu::hang(float dt) {
    arrival_ = clamp(arrival_ + (closing_ ? -hangRate : hangRate) * dt, 0, 1);
    const float above = (1 - arrival_) * (1 - arrival_) * hangWay;
    const float needed = std::max(neededWidth / manager_.menuCamera.aspect, neededHeight);
    const float farther = needed / viewHeight - 1;
    const Vec3 shift{0, above, -farther * manager_.menuCamera.position.z};
    board_.place(sheetPlace + shift);
    back_.place(backPlace + shift);
}

void LevelSelectMenu::handle(const MenuInput& input) {
    handleKeys(input);
    if (back_.update(input, onBack_, true)) return close();
    if (closing_ || shot_ || handleMouse(input)) return;
    if (input.back) return leave();
    if (input.accept && !onBack_ && age_ >= acceptFrom && unlocked(selected_)) shoot();
}

void LevelSelectMenu::handleKeys(const MenuInput& input) {
    if (input.up) {
        onBack_ = false;
        marked_ = true;
    }
    if (input.down) {
        onBack_ = true;
        marked_ = false;
    }
    if (onBack_ || (!input.left && !input.right)) return;
    marked_ = true;
    select(selected_ + (input.right ? 1 : -1));
}

// Pressed and let go over the same item. True when that was done.
bool LevelSelectMenu::handleMouse(const MenuInput& input) {
    if (input.click) pressedItem_ = board_.itemAt(input.mouse);
    if (input.mouseHeld || pressedItem_ < 0) return false;
    const int released = std::exchange(pressedItem_, -1);
    if (released != board_.itemAt(input.mouse)) return false;
    choose(MapItem(board_.items()[static_cast<std::size_t>(released)]));
    return true;
}

void LevelSelectMenu::choose(const MapItem& item) {
    if (!unlocked(item.stage)) return;
    select(item.stage);
    if (item.kind == MapItem::Kind::stage) shoot();
}

void LevelSelectMenu::shoot() {
    board_.hit(selectedItem(), randomTurn());
    play(shotSound);
    shot_ = true;
    untilStart_ = flightOfBullet;
}

void LevelSelectMenu::leave() {
    play(backSound);
    close();
}

void LevelSelectMenu::close() {
    if (!closing_) timeToLive_ = closingTime;
    closing_ = true;
}
