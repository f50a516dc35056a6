#include "frontend/MenuManager.h"

#include "core/EngineManagers.h"
#include "gui/GuiSprite.h"
#include "gui/OverlayManager.h"
#include "input/ControllerManager.h"
#include "render/GuiDrawing.h"
#include "render/Renderer.h"
#include "render/SceneDrawing.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <utility>

using namespace Zelkor;

namespace {

constexpr float showPlayRate = 5, hidePlayRate = 10; // opacity per second
constexpr float cursorWidth = 16, cursorHeight = 32; // pixels
constexpr float cursorDepth = 900;                   // before everything else on the screen
constexpr float halfView = 50;                       // of the height that the camera sees at z = 0
constexpr float usualFieldOfView = 30;               // degrees, at 16:9
constexpr float nearDistance = 10, farDistance = 1000;
// As over the stage: the same hand draws both.
constexpr Vec3 sunPosition{-9600, 12000, 12800};

// Filled by constants of other files before main, so it lives in a function.
std::array<MenuRow::Create, lastMenuKind + 1>& factory() {
    static std::array<MenuRow::Create, lastMenuKind + 1> table{};
    return table;
}

Quat turnAboutDepth(float angle) {
    return quatFromAxisAngle(angle, {0, 0, 1});
}

} // namespace

MenuRow::MenuRow(int kind, Create create) {
    assert(kind >= 0 && kind <= lastMenuKind && !factory()[static_cast<std::size_t>(kind)]);
    factory()[static_cast<std::size_t>(kind)] = create;
}

MenuManager::MenuManager(GuiScreenWorkspace& playDisplay)
    : MenuManager(playDisplay, std::make_unique<GuiScreenWorkspace>(true)) {}

MenuManager::MenuManager(GuiScreenWorkspace& playDisplay, std::unique_ptr<GuiScreenWorkspace> own)
    : playLayer(playDisplay.root), menuLayer(own->root),
      cursor(*own->root.createSprite("sprites/mouse", {0, 0, cursorDepth})), workspace_(std::move(own)) {
    menuCamera.nearDistance = nearDistance;
    menuCamera.farDistance = farDistance;
    menuCamera.scene = &menuScene;
    Light sun;
    sun.type = Light::point;
    sun.position = sunPosition;
    menuScene.lights.push_back(sun);
    menuLayer.colour.w = 1 - playLayer.colour.w;
    fitCamera(engineManagers()->renderer->aspect);
}

MenuManager::~MenuManager() {
    deleteMenus(nullptr);
}

void MenuManager::openMenu(int kind, const MenuArgument& argument) {
    if (kind < 0 || kind > lastMenuKind) return;
    const MenuRow::Create create = factory()[static_cast<std::size_t>(kind)];
    if (auto menu = create ? create(argument) : nullptr) pushMenu(std::move(menu));
}

void MenuManager::pushMenu(std::unique_ptr<MenuBase> menu) {
    menus.push_back(std::move(menu));
    raise(*menus.back());
}

void MenuManager::raise(const MenuBase& menu) {
    OverlayManager& overlays = *engineManagers()->overlayManager;
    overlays.bringToFront(*menu.workspace);
    overlays.bringToFront(*workspace_); // the cursor stays before all of them
}

void MenuManager::closeMenus(const MenuBase* keep, bool immediately) {
    if (!immediately) {
        for (std::size_t i = 0; i < menus.size(); ++i) // closing may push another
            if (menus[i].get() != keep) menus[i]->close();
    } else if (updating_) {
        for (const auto& menu : menus)
            if (menu.get() != keep) doomed_.push_back(menu.get());
    } else {
        deleteMenus(keep);
    }
}

// From the top, so that each finds below it what it was opened over.
void MenuManager::deleteMenus(const MenuBase* keep) {
    for (std::size_t i = menus.size(); i-- > 0;)
        if (menus[i].get() != keep) menus.erase(menus.begin() + static_cast<std::ptrdiff_t>(i));
}

// Those that were open when all others had to close; what has been pushed since stays.
void MenuManager::deleteDoomed() {
    for (std::size_t i = menus.size(); i-- > 0;)
        if (std::find(doomed_.begin(), doomed_.end(), menus[i].get()) != doomed_.end())
            menus.erase(menus.begin() + static_cast<std::ptrdiff_t>(i));
    doomed_.clear();
}

bool MenuManager::updateMenus(double total, float dt) {
    const float aspect = engineManagers()->renderer->aspect;
    if (!menus.empty()) fitCamera(aspect); // what the mouse points at is asked of it
    updating_ = true;
    bool pauses = false;
    // Menus push others meanwhile, which are then updated too.
    for (std::size_t i = 0; i < menus.size();) {
        MenuBase& menu = *menus[i];
        menu.update(total, dt, i + 1 == menus.size());
        if (menu.closed) {
            std::erase(doomed_, &menu); // before another takes its place in memory
            menus.erase(menus.begin() + static_cast<std::ptrdiff_t>(i));
            continue;
        }
        pauses |= menu.pausesGame();
        ++i;
    }
    updating_ = false;
    deleteDoomed();
    for (GuiSceneWorkspace* panel : panels_)
        advanceSprites(panel->root, dt);
    fadeLayers(dt);
    updateCursor();
    return pauses;
}

MenuBase* MenuManager::find(int kind) const {
    const auto found =
        std::find_if(menus.begin(), menus.end(), [kind](const auto& menu) { return menu->kind == kind; });
    return found == menus.end() ? nullptr : found->get();
}

void MenuManager::fadeLayers(float dt) {
    const float change = menus.empty() ? showPlayRate * dt : -hidePlayRate * dt;
    playLayer.colour.w = clamp(playLayer.colour.w + change, 0, 1);
    menuLayer.colour.w = 1 - playLayer.colour.w;
}

// In a window the system shows its own.
void MenuManager::updateCursor() {
    const Renderer& renderer = *engineManagers()->renderer;
    const ControllerManager& controllers = *engineManagers()->controllerManager;
    cursor.visible = renderer.fullscreen;
    cursor.position = {controllers.mouseX, controllers.mouseY, cursorDepth};
    cursor.width = cursorWidth / static_cast<float>(std::max(renderer.windowWidth, 1));
    cursor.height = cursorHeight / static_cast<float>(std::max(renderer.windowHeight, 1));
}

MenuCameraPose MenuManager::cameraPose() const {
    MenuCameraPose sum;
    for (const auto& menu : menus) {
        const MenuCameraPose pose = menu->cameraPose();
        if (!(pose.weight > 0)) continue;
        if (sum.weight == 0) {
            sum = pose;
            sum.weight = std::min(pose.weight, 1.0f);
            continue;
        }
        sum.weight = std::min(sum.weight + pose.weight, 1.0f);
        sum.position = (1 - pose.weight) * sum.position + pose.weight * pose.position;
        quatSlerp(sum.orientation, sum.orientation, pose.orientation, pose.weight, true);
    }
    return sum;
}

// A wider screen shows more to the sides; one that is narrower than 16:9 nearly the same width, and more above and
// below.
void MenuManager::fitCamera(float aspect) {
    if (!(aspect > 0)) return;
    menuCamera.aspect = aspect;
    menuCamera.fieldOfView = 53.333332f / aspect * 0.5f + 15;
    const float seen = std::min(menuCamera.fieldOfView, usualFieldOfView);
    menuCamera.position = {0, halfView, halfView / std::tan(seen * pi / 360)};
}

Vec3 MenuManager::rayThrough(float screenX, float screenY) const {
    const float slope = std::tan(menuCamera.fieldOfView * pi / 360);
    return {(2 * screenX - 1) * slope * menuCamera.aspect, (1 - 2 * screenY) * slope, -1};
}

void MenuManager::drawMenus(float aspect, const PostChain::Area& rectangle) {
    if (menus.empty()) return;
    Renderer& renderer = *engineManagers()->renderer;
    fitCamera(aspect);
    renderer.setViewport(rectangle.x, rectangle.y, rectangle.width, rectangle.height);
    renderer.clearDepth();
    renderScene(menuScene, menuCamera);
    for (GuiSceneWorkspace* panel : panels_)
        drawBothPasses(*panel, false);
}

// --- Panels -----------------------------------------------------------------------------------------------

MenuPanel::MenuPanel(MenuManager& manager)
    : manager_(manager), workspace_(nullptr, {}, {}, {}, false) {
    manager_.panels_.push_back(&workspace_);
    place({});
}

MenuPanel::~MenuPanel() {
    std::erase(manager_.panels_, &workspace_);
}

// Turned over about its x axis, so that y points down.
void MenuPanel::place(const Vec3& position, float angle) {
    angle_ = angle;
    workspace_.position = position;
    quatMultiply(workspace_.rotation, turnAboutDepth(angle), Quat{0, 1, 0, 0});
}

Vec2 MenuPanel::pointAt(float screenX, float screenY) const {
    const Vec3 ray = manager_.rayThrough(screenX, screenY), eye = manager_.menuCamera.position;
    const Vec3 onPlane = eye + (eye.z - workspace_.position.z) * ray; // which is 1 deep
    Vec3 point;
    quatRotate(point, turnAboutDepth(-angle_), onPlane - workspace_.position);
    return {point.x, -point.y};
}
