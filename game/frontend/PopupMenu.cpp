#include "frontend/PopupMenu.h"

#include "core/EngineManagers.h"
#include "core/TimerManager.h"
#include "frontend/MenuText.h"

using namespace Zelkor;

namespace {

const MenuRow popupRow{MenuKind::popup, createMenuWith<PopupMenu, std::string>};
const MenuRow assignRow{MenuKind::buttonAssign, [](const MenuArgument& argument) -> std::unique_ptr<MenuBase> {
                            const int* slot = std::get_if<int>(&argument);
                            if (!slot || *slot < 0 || *slot >= bindingCount) return nullptr;
                            return std::make_unique<BtnAssignPopup>(*slot);
                        }};

constexpr float listensFrom = 0.1f, closingTime = 0.3f; // seconds
constexpr float fadeRate = 5, growRate = 3;             // per second
constexpr float dimness = 0.4f, bandDarkness = 0.6f, fullBand = 0.2f, bandMiddle = 0.48f;
constexpr float textTop = 0.45f, textHeight = 0.05f;
constexpr float dimmerDepth = 100, bandDepth = 101, textDepth = 102; // before the other menus

float& gamePaused() {
    return TimerManager::instance().findTimer("game")->paused;
}

} // namespace

PopupMenu::PopupMenu(int ownKind, const std::string& text)
    : MenuBase(ownKind), dimmer_(*workspace->root.createChild(GuiKind::rect, 0, 0, dimmerDepth, 1, 1)),
      band_(*workspace->root.createChild(GuiKind::rect, 0, bandMiddle, bandDepth, 1, 0)),
      text_(screenText(workspace->root, "FONT2", text, {0, textTop, textDepth}, textHeight)),
      gameWasPaused_(gamePaused() != 0) {
    gamePaused() = 1;
    dimmer_.colour = {0, 0, 0, 0};
    band_.colour = {0, 0, 0, bandDarkness};
    text_.colour.w = 0;
}

PopupMenu::~PopupMenu() {
    gamePaused() = gameWasPaused_ ? 1 : 0;
}

void PopupMenu::update(double, float dt, bool isTop) {
    age_ += dt;
    if (closing_) timeToLive_ -= dt;
    closed = timeToLive_ <= 0;
    show(dt);
    if (isTop && !closing_ && age_ >= listensFrom) listen(MenuInput::read());
}

void PopupMenu::show(float dt) {
    dimmer_.colour.w = moveTowards(dimmer_.colour.w, closing_ ? 0 : dimness, fadeRate * dt);
    if (closing_ || age_ >= listensFrom) {
        band_.height = moveTowards(band_.height, closing_ ? 0 : fullBand, growRate * dt);
        text_.colour.w = moveTowards(text_.colour.w, closing_ ? 0 : 1, fadeRate * dt);
    }
    band_.position.y = bandMiddle - band_.height / 2;
    keepLetterShape(text_);
    text_.position.x = 0.5f - 0.5f * textExtent(text_);
}

void PopupMenu::listen(const MenuInput& input) {
    if (input.accept || input.start || input.back || input.click) close();
}

void PopupMenu::close() {
    if (!closing_) timeToLive_ = closingTime;
    closing_ = true;
}

BtnAssignPopup::BtnAssignPopup(int slot)
    : PopupMenu(MenuKind::buttonAssign, "Press_the_button_you_wish_to_assign"), slot_(slot),
      before_(engineManagers()->controllerManager->raw) {}

void BtnAssignPopup::update(double total, float dt, bool isTop) {
    PopupMenu::update(total, dt, isTop);
    before_ = engineManagers()->controllerManager->raw;
}

void BtnAssignPopup::listen(const MenuInput& input) {
    if (input.back || input.start || input.click) return close(); // a mouse alone finds its way back too
    ControllerManager& controllers = *engineManagers()->controllerManager;
    for (int code = 0; code < rawButtonCount; ++code) {
        if (!controllers.isPressed(code) || before_[static_cast<std::size_t>(code)]) continue;
        controllers.bindings[static_cast<std::size_t>(slot_)] = static_cast<std::uint16_t>(code);
        return close();
    }
}
