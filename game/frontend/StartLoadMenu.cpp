#include "frontend/StartLoadMenu.h"

#include "core/EngineManagers.h"
#include "frontend/MenuManager.h"
#include "frontend/MenuText.h"
#include "game/Game.h"
#include "render/Renderer.h"

#include <algorithm>

using namespace Zelkor;

namespace {

const MenuRow row{MenuKind::startLoad, createMenu<StartLoadMenu>};

constexpr int updatesBefore = 4; // so that the screen is seen before loading holds everything up
constexpr float sheetFade = 3, textFade = 6; // opacity per second
constexpr float textX = 0.75f, textY = 0.85f, textHeight = 0.04f;

} // namespace

StartLoadMenu::StartLoadMenu()
    : MenuBase(MenuKind::startLoad), sheet_(*workspace->root.createChild(GuiKind::rect, 0, 0, 0, 1, 1)),
      text_(screenText(workspace->root, "FONT2", "Loading...", {textX, textY, 1}, textHeight)) {
    sheet_.colour = {0, 0, 0, 1};
}

void StartLoadMenu::update(double, float dt, bool) {
    keepLetterShape(text_);
    Game& game = Game::get();
    if (loaded_) {
        sheet_.colour.w = std::max(sheet_.colour.w - sheetFade * dt, 0.0f);
        text_.colour.w = std::max(text_.colour.w - textFade * dt, 0.0f);
        closed = sheet_.colour.w == 0;
        return;
    }
    const bool rendererReady = engineManagers()->renderer->windowWidth > 0;
    if (!rendererReady || ++updates_ <= updatesBefore) return;
    game.preloadAssets();
    loaded_ = true;
    game.menuManager->raise(*this); // over the title, which it uncovers
}
