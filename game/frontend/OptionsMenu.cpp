#include "frontend/OptionsMenu.h"

#include "VirtualKeys.h"
#include "audio/AudioManager.h"
#include "core/EngineManagers.h"
#include "game/Game.h"
#include "input/ControllerManager.h"

#include <algorithm>

using namespace Zelkor;

namespace {

const MenuRow row{MenuKind::options, createMenu<OptionsMenu>};

constexpr float closingTime = 0.4f; // seconds

// The fall: units and radians per second, and per second squared.
constexpr float fallAcceleration = 1500, fastestFall = -1000;
constexpr float tiltAcceleration = 2, fastestTilt = -4;
constexpr float hangsAt = 45, bounce = -0.35f, swingBack = -7;
constexpr Vec3 hangsBy{60, -40, 0}; // of the board, from its upper left corner

// On the board, as it hangs by its corner.
constexpr float tabsAt = 4, tabsBefore = 5;
constexpr float tabHeights[] = {-15, -31, -47, -65};

constexpr int profilerKey = platform::key::f1 + 2; // F3

void playSound(const char* name) {
    engineManagers()->audioManager->playSound(name, 1);
}

MenuButton3D::Design tabDesign(int tab) {
    static constexpr const char* labels[] = {"SOUND", "INPUT", "GRAPHICS", "BACK"};
    MenuButton3D::Design design;
    design.mesh = tab < 3 ? "title/pausbutton" : "title/quitbtn";
    design.label = labels[tab];
    design.sound = ""; // not every click on a tab is one that changes anything
    design.labelHeight = 7;
    return design;
}

} // namespace

OptionsMenu::OptionsMenu()
    : MenuBase(MenuKind::options), manager_(*Game::get().menuManager),
      board_(manager_.menuScene.createUnit("title/optionsboard")) {
    for (int tab = 0; tab < tabCount; ++tab)
        tabs_.push_back(std::make_unique<MenuButton3D>(manager_, tabDesign(tab)));
    showPage(OptionsPage::soundPage);
    placeBoard();
}

OptionsMenu::~OptionsMenu() {
    manager_.menuScene.removeUnit(board_);
}

void OptionsMenu::update(double, float dt, bool isTop) {
    const bool opened = age_ > 0; // nothing of what has opened it is for it
    age_ += dt;
    if (closing_) timeToLive_ -= dt;
    closed = timeToLive_ <= 0;
    swing(dt);
    placeBoard();
    const MenuInput input = isTop && !closing_ && opened ? MenuInput::read() : MenuInput::none();
    if (input.back) leave();
    if (isTop && !closing_ && engineManagers()->controllerManager->isPressed(profilerKey)) {
        showPage(OptionsPage::profilerPage);
        pageFocused_ = true;
    }
    navigate(input);
    if (page_ && page_->update(input, dt, pageFocused_)) pageFocused_ = true;
    updateTabs(input);
}

// --- The board --------------------------------------------------------------------------------------------

void OptionsMenu::swing(float dt) {
    velocity_.y = std::max(velocity_.y - fallAcceleration * dt, fastestFall);
    anchor_ += velocity_ * dt;
    tiltRate_ = std::max(tiltRate_ - tiltAcceleration * dt, fastestTilt);
    tilt_ += tiltRate_ * dt;
    if (closing_ || anchor_.y > hangsAt) return;
    anchor_.y = hangsAt;
    velocity_.y *= bounce;
    tiltRate_ = swingBack * tilt_;
    tilt_ = moveTowards(tilt_, 0, dt);
}

void OptionsMenu::placeBoard() {
    const Quat turn = quatFromAxisAngle(tilt_, {0, 0, 1});
    const auto onBoard = [&](const Vec3& point) {
        Vec3 turned;
        return anchor_ + quatRotate(turned, turn, point - hangsBy);
    };
    board_->position = onBoard({});
    board_->orientation = turn;
    for (std::size_t tab = 0; tab < tabs_.size(); ++tab)
        tabs_[tab]->place(onBoard({tabsAt, tabHeights[tab], tabsBefore}), tilt_);
    if (page_) page_->place(onBoard({}), tilt_);
}

// --- Keys -------------------------------------------------------------------------------------------------

void OptionsMenu::navigate(const MenuInput& input) {
    const bool editing = page_ && page_->editing();
    if (input.up || input.down) {
        keysUsed_ = true;
        const int by = input.down ? 1 : -1;
        if (!pageFocused_)
            selectTab(tab_ + by);
        else if (!editing)
            moveInPage(by);
    }
    if (input.right && page_) pageFocused_ = true;
    if (input.left && !editing) pageFocused_ = false;
}

// Beyond the ends of the page lie those of the neighbouring tabs.
void OptionsMenu::moveInPage(int by) {
    const int item = page_->selected + by, count = static_cast<int>(page_->items.size());
    if (item >= 0 && item < count) {
        page_->selected = item;
        return;
    }
    const int before = tab_;
    selectTab(tab_ + by);
    if (tab_ == before) return;
    pageFocused_ = page_ != nullptr;
    if (page_ && by < 0) page_->selected = static_cast<int>(page_->items.size()) - 1;
}

void OptionsMenu::selectTab(int tab) {
    tab = std::clamp(tab, 0, tabCount - 1);
    if (tab == tab_) return;
    tab_ = tab;
    if (tab == backTab)
        page_.reset();
    else
        showPage(static_cast<OptionsPage::Kind>(tab));
    if (!page_) pageFocused_ = false;
}

void OptionsMenu::showPage(OptionsPage::Kind which) {
    page_ = std::make_unique<OptionsPage>(manager_, which);
    placeBoard();
}

// --- Tabs -------------------------------------------------------------------------------------------------

void OptionsMenu::updateTabs(const MenuInput& input) {
    MenuInput mouseOnly = input;
    mouseOnly.accept = false; // on the tab that is shown already it says nothing
    for (int tab = 0; tab < backTab; ++tab) {
        if (!tabs_[static_cast<std::size_t>(tab)]->update(mouseOnly, tab == tab_, true) || tab == tab_) continue;
        playSound("fullballoon");
        selectTab(tab);
        pageFocused_ = false;
    }
    if (tabs_[backTab]->update(input, tab_ == backTab, keysUsed_)) leave();
}

void OptionsMenu::leave() {
    if (closing_) return;
    playSound("dropballoon");
    close();
}

void OptionsMenu::close() {
    if (!closing_) timeToLive_ = closingTime;
    closing_ = true;
}
