#include "frontend/MenuWidgets.h"

#include "core/EngineManagers.h"
#include "frontend/MenuManager.h"
#include "frontend/MenuText.h"
#include "game/Game.h"
#include "gui/GuiPanel.h"
#include "gui/GuiSprite.h"
#include "input/ControllerManager.h"

#include <algorithm>
#include <utility>

using namespace Zelkor;

namespace {

constexpr float rowWidth = 88;
constexpr float boxSize = 6.6f;
constexpr float barBelow = 8.5f, barWidth = 62, barHeight = 7; // from the label's top; units of the panel
constexpr Vec4 emptyBar{1, 1, 1, 0.3f};

} // namespace

MenuWidget::MenuWidget(GuiPanel& panel, const std::string& label, const Vec2& at)
    : panel_(panel), label_(sceneText(panel, "FONT2", label, {at.x, at.y, 0}, textHeight)),
      rectangle_{at.x, at.y, at.x + rowWidth, at.y + textHeight} {}

GuiObject& MenuWidget::addText(const std::string& text, float x, float y) {
    return sceneText(panel_, "FONT2", text, {x, y, 0}, textHeight);
}

bool MenuWidget::update(const MenuInput& input, const Vec2& pointer, float dt, bool selected) {
    const bool clicked = area_.update(input, rectangle_.contains(pointer));
    const bool activated = react({input, pointer, dt, clicked, selected && input.accept});
    label_.colour = selected || editing_ || area_.active() ? highlightedLabel : plainLabel;
    return activated;
}

// --- Text buttons -----------------------------------------------------------------------------------------

MenuTextButton::MenuTextButton(GuiPanel& panel, const std::string& label, const Vec2& at,
                               std::function<void()> action)
    : MenuWidget(panel, label, at), action_(std::move(action)) {}

bool MenuTextButton::react(const Act& act) {
    if (!act.clicked && !act.accepted) return false;
    action_();
    return true;
}

// --- Check boxes ------------------------------------------------------------------------------------------

MenuCheckBox::MenuCheckBox(GuiPanel& panel, const std::string& label, const Vec2& at, bool value,
                           std::function<void(bool)> change)
    : MenuWidget(panel, label, at), box_(*panel.createSprite("checkbox", {at.x + valueAt, at.y, 0})),
      value_(value), change_(std::move(change)) {
    box_.width = box_.height = boxSize;
    show();
}

void MenuCheckBox::show() {
    box_.setAnimation(value_ ? "on" : "off");
}

bool MenuCheckBox::react(const Act& act) {
    if (!act.clicked && !act.accepted) return false;
    value_ = !value_;
    show();
    change_(value_);
    return true;
}

// --- Choices ----------------------------------------------------------------------------------------------

MenuAltButton::MenuAltButton(GuiPanel& panel, const std::string& label, const Vec2& at,
                             std::vector<std::string> choices, int choice, std::function<void(int)> change)
    : MenuWidget(panel, label, at), value_(addText("", at.x + valueAt, at.y)), choices_(std::move(choices)),
      choice_(choice >= 0 && choice < static_cast<int>(choices_.size()) ? choice : 0),
      change_(std::move(change)) {
    show();
}

void MenuAltButton::show() {
    if (!choices_.empty()) value_.setText(choices_[static_cast<std::size_t>(choice_)]);
    value_.colour = editing_ ? highlightedLabel : plainLabel;
}

void MenuAltButton::step(int by) {
    const int count = static_cast<int>(choices_.size());
    if (count == 0) return;
    choice_ = (choice_ + by + count) % count;
    change_(choice_);
}

bool MenuAltButton::react(const Act& act) {
    if (act.accepted) editing_ = !editing_;
    if (editing_ && act.input.right) step(1);
    if (editing_ && act.input.left) step(-1);
    if (act.clicked) step(1);
    show();
    return act.clicked || act.accepted;
}

// --- Bindings ---------------------------------------------------------------------------------------------

MenuKeyBindBtn::MenuKeyBindBtn(GuiPanel& panel, const std::string& label, const Vec2& at, int slot)
    : MenuWidget(panel, label, at), name_(addText("", at.x + valueAt, at.y)), slot_(slot) {
    name_.setText(engineManagers()->controllerManager->bindingName(slot));
}

bool MenuKeyBindBtn::react(const Act& act) {
    name_.setText(engineManagers()->controllerManager->bindingName(slot_));
    if (!act.clicked && !act.accepted) return false;
    Game::get().menuManager->openMenu(MenuKind::buttonAssign, slot_);
    return true;
}

// --- Sliders ----------------------------------------------------------------------------------------------

MenuSlider::MenuSlider(GuiPanel& panel, const std::string& label, const Vec2& at, float value,
                       std::function<void(float)> change)
    : MenuWidget(panel, label, at),
      bar_{at.x, at.y + barBelow, at.x + barWidth, at.y + barBelow + barHeight},
      empty_(*panel.createSprite("volume", {bar_.left, bar_.top, 0})),
      full_(*panel.createSprite("volume", {bar_.left, bar_.top, 0})), value_(clamp(value, 0, 1)),
      change_(std::move(change)) {
    rectangle_.right = at.x + barWidth;
    rectangle_.bottom = bar_.bottom;
    empty_.width = barWidth;
    empty_.height = full_.height = barHeight;
    empty_.colour = emptyBar;
    show();
}

void MenuSlider::set(float value) {
    value = clamp(value, 0, 1);
    if (value == value_) return;
    value_ = value;
    change_(value_);
}

void MenuSlider::show() {
    full_.width = barWidth * value_;
    GuiCorners& shown = *full_.textureData();
    const GuiCorners& whole = *empty_.textureData();
    shown = whole;
    shown[2] = shown[6] = whole[0] + (whole[2] - whole[0]) * value_;
}

bool MenuSlider::react(const Act& act) {
    const bool grabbed = act.input.click && bar_.contains(act.pointer);
    const bool letGo = dragging_ && !act.input.mouseHeld;
    if (grabbed) dragging_ = true;
    if (letGo) dragging_ = false;
    if (dragging_) set((act.pointer.x - bar_.left) / (bar_.right - bar_.left));
    const bool toggled = act.accepted || (act.clicked && !letGo);
    if (toggled) editing_ = !editing_;
    if (editing_) set(value_ + act.input.stickX * act.dt);
    show();
    return grabbed || toggled;
}

// --- Pictures ---------------------------------------------------------------------------------------------

MenuButton::MenuButton(GuiPanel& panel, const std::string& sprite, const Vec2& at, float height, float shape)
    : sprite_(*panel.createSprite(sprite, {at.x, at.y, 0})) {
    sprite_.height = height;
    sprite_.width = height * shape;
}

bool MenuButton::update(const MenuInput& input, const Vec2& pointer, float shape) {
    sprite_.width = sprite_.height * shape;
    const Vec3& at = sprite_.position;
    const bool clicked = area_.update(
        input, MenuRect{at.x, at.y, at.x + sprite_.width, at.y + sprite_.height}.contains(pointer));
    sprite_.setAnimation(area_.hovered() ? "hover" : "idle");
    return clicked;
}
