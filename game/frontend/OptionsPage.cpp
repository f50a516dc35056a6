#include "frontend/OptionsPage.h"

#include "core/DebugManager.h"
#include "core/EngineManagers.h"
#include "game/Game.h"
#include "game/Settings.h"
#include "input/ControllerManager.h"
#include "render/Renderer.h"

#include <algorithm>

using namespace Zelkor;

namespace {

constexpr Vec3 offset{5, -5, 1.2f}; // of the page from the board's corner, in front of its face
// Units of the page.
constexpr float itemsAt = 25, slidersAt = 35;
constexpr float firstRow = 4, inputRow = 8.714f, graphicsRow = 11;
constexpr float firstSlider = 12, sliderRow = 26;

constexpr const char* bindingLabels[] = {"Left_Button:", "Right_Button:", "Up_Button:",
                                         "Down_Button:", "Jump:",         "Shoot:"};
constexpr int bindingSlots[] = {bindingLeft, bindingRight, bindingUp, bindingDown, bindingJump, bindingFire};

Settings& settings() {
    return *Game::get().settings;
}

// A volume in percent.
void addVolume(OptionsPage& page, const char* label, float row, int value, Settings::Option option) {
    page.items.push_back(std::make_unique<MenuSlider>(
        page.panel.root(), label, Vec2{slidersAt, firstSlider + row * sliderRow}, static_cast<float>(value) / 100,
        [option](float v) { settings().setOption(option, static_cast<float>(static_cast<int>(v * 100))); }));
}

void addSoundItems(OptionsPage& page) {
    addVolume(page, "Music_Volume", 0, settings().musicVolume, Settings::optionMusicVolume);
    addVolume(page, "Sound_Volume", 1, settings().soundVolume, Settings::optionSoundVolume);
}

void addInputItems(OptionsPage& page) {
    float y = firstRow;
    for (std::size_t i = 0; i < std::size(bindingLabels); ++i, y += inputRow)
        page.items.push_back(std::make_unique<MenuKeyBindBtn>(page.panel.root(), bindingLabels[i],
                                                              Vec2{itemsAt, y}, bindingSlots[i]));
    page.items.push_back(
        std::make_unique<MenuTextButton>(page.panel.root(), "Reset_Defaults", Vec2{itemsAt, y},
                                         [] { engineManagers()->controllerManager->setDefaultBindings(); }));
}

void addGraphicsItems(OptionsPage& page) {
    GuiPanel& root = page.panel.root();
    float y = firstRow;
    const auto next = [&y] {
        const Vec2 at{itemsAt, y};
        y += graphicsRow;
        return at;
    };
    const Renderer& renderer = *engineManagers()->renderer;
    std::vector<std::string> modes;
    for (const Settings::DisplayMode& mode : settings().displayModes)
        modes.push_back(mode.label);
    if (modes.empty()) // nothing to choose from, but something to see
        modes.push_back(std::to_string(renderer.windowWidth) + "x" + std::to_string(renderer.windowHeight));
    page.items.push_back(std::make_unique<MenuCheckBox>(root, "FullScreen", next(), settings().fullScreen != 0,
                                                        [](bool on) { settings().fullScreen = on; }));
    page.items.push_back(std::make_unique<MenuAltButton>(root, "Resolution", next(), modes,
                                                         settings().resolutionIndex,
                                                         [](int mode) { settings().resolutionIndex = mode; }));
    page.items.push_back(std::make_unique<MenuAltButton>(root, "Super_Sample", next(),
                                                         std::vector<std::string>{"Off", "2x", "4x"},
                                                         settings().superSample,
                                                         [](int level) { settings().superSample = level; }));
    page.items.push_back(std::make_unique<MenuCheckBox>(root, "Sketch_Flicker", next(), settings().flicker != 0,
                                                        [](bool on) { settings().flicker = on; }));
    page.items.push_back(
        std::make_unique<MenuTextButton>(root, "Apply", next(), [] { settings().applyDisplayMode(); }));
}

void addProfilerItems(OptionsPage& page) {
    DebugManager& debug = *engineManagers()->debugManager;
    page.items.push_back(std::make_unique<MenuCheckBox>(page.panel.root(), "Show_profiler",
                                                        Vec2{itemsAt, firstRow}, debug.showProfiler,
                                                        [&debug](bool on) { debug.showProfiler = on; }));
}

} // namespace

OptionsPage::OptionsPage(MenuManager& manager, Kind kind) : panel(manager) {
    static constexpr void (*fill[])(OptionsPage&) = {addSoundItems, addInputItems, addGraphicsItems,
                                                     addProfilerItems};
    fill[kind](*this);
}

void OptionsPage::place(const Vec3& corner, float angle) {
    Vec3 turned;
    quatRotate(turned, quatFromAxisAngle(angle, {0, 0, 1}), offset);
    panel.place(corner + turned, angle);
}

bool OptionsPage::editing() const {
    return std::any_of(items.begin(), items.end(), [](const auto& item) { return item->editing(); });
}

bool OptionsPage::update(const MenuInput& input, float dt, bool focused) {
    const Vec2 pointer = panel.pointAt(input.mouse.x, input.mouse.y);
    int activated = -1;
    for (int i = 0; i < static_cast<int>(items.size()); ++i)
        if (items[static_cast<std::size_t>(i)]->update(input, pointer, dt, focused && i == selected))
            activated = i;
    if (activated < 0) return false;
    if (activated != selected) items[static_cast<std::size_t>(selected)]->stopEditing();
    selected = activated;
    return true;
}
