#include "game/Settings.h"

#include "Platform.h"
#include "audio/AudioManager.h"
#include "core/EngineManagers.h"
#include "core/Log.h"
#include "game/Game.h"
#include "input/ControllerManager.h"
#include "render/Renderer.h"

#include <algorithm>
#include <limits>

using namespace Zelkor;

namespace {

namespace fs = std::filesystem;

constexpr float percent = 0.01f;

SafeFile settingsFile(const fs::path& folder) {
    return SafeFile(folder / "settings.sav", isWholeSettings);
}

// Truncated; what no integer can hold becomes the nearest that one can.
int toInt(float value) {
    constexpr float beyond = 2147483648.0f;
    if (value >= beyond) return std::numeric_limits<int>::max();
    return value >= -beyond ? static_cast<int>(value) : std::numeric_limits<int>::min();
}

int diagonal(const Settings::DisplayMode& mode) {
    return mode.width + mode.height;
}

} // namespace

std::optional<fs::path> Settings::playersFolder() {
    const auto documents = platform::current()->documentsFolder();
    if (!documents) return {};
    return *documents / "Games" / "Rustpike";
}

std::optional<SafeFile::Content> Settings::readFile(const fs::path& folder) {
    return settingsFile(folder).read();
}

void Settings::load() {
    setDefaults();
    loadFile();
    listDisplayModes();
    followDisplay();
}

void Settings::setDefaults() {
    const Renderer& renderer = *engineManagers()->renderer;
    setOption(optionTouchControls, 1);
    setOption(optionPostProcessing, renderer.shadersSupported && renderer.framebuffersSupported ? 1 : 0);
    flicker = 1;
    setOption(optionViewSize, 100);
    setOption(optionSoundVolume, 50);
    setOption(optionMusicVolume, 50);
    superSample = 1;
    setOption(optionLevelsUnlocked, 0);
    setOption(optionLevelsCleared, 0);
    lastStage = Game::stageCount - 1;
    engineManagers()->controllerManager->setDefaultBindings();
}

void Settings::loadFile() {
    if (!folder_) return;
    const auto content = readFile(*folder_);
    if (!content) return;
    if (content->fromBackup) logLine("settings file missing or cut short, reading its backup");
    if (!content->whole) logLine("settings file cut short, reading what is left of it");
    SettingsValues found = values();
    readSettings(content->text, found);
    superSample = found[keySuperSample];
    flicker = found[keyFlicker];
    // Stored once more: a float cannot hold every integer.
    const auto apply = [this](Option option, int& stored, int value) {
        setOption(option, static_cast<float>(value));
        stored = value;
    };
    apply(optionMusicVolume, musicVolume, found[keyMusicVolume]);
    apply(optionSoundVolume, soundVolume, found[keySoundVolume]);
    apply(optionLevelsCleared, levelsCleared, found[keyLevelsCleared]);
    apply(optionLevelsUnlocked, levelsUnlocked, found[keyLevelsUnlocked]);
    auto& bindings = engineManagers()->controllerManager->bindings;
    for (std::size_t slot = 0; slot < bindings.size(); ++slot)
        bindings[slot] = static_cast<std::uint16_t>(found[keyUp + slot]); // the low 16 bits
}

void Settings::listDisplayModes() {
    for (const platform::DisplayMode& mode : platform::current()->displayModes()) {
        const bool known = std::any_of(displayModes.begin(), displayModes.end(), [&mode](const auto& other) {
            return other.width == mode.width && other.height == mode.height;
        });
        if (!known) displayModes.push_back({mode.width, mode.height});
    }
    // Selection sort: which of two modes of the same sum comes first depends on it.
    for (auto at = displayModes.begin(); at != displayModes.end(); ++at)
        std::iter_swap(at, std::min_element(at, displayModes.end(), [](const auto& a, const auto& b) {
                           return diagonal(a) < diagonal(b);
                       }));
    for (DisplayMode& mode : displayModes)
        mode.label = std::to_string(mode.width) + "x" + std::to_string(mode.height);
}

void Settings::followDisplay() {
    const Renderer& renderer = *engineManagers()->renderer;
    for (std::size_t index = 0; index < displayModes.size(); ++index) {
        const DisplayMode& mode = displayModes[index];
        if (mode.width == renderer.windowWidth && mode.height == renderer.windowHeight)
            resolutionIndex = static_cast<int>(index);
    }
    fullScreen = renderer.fullscreen ? 1 : 0;
}

SettingsValues Settings::values() const {
    const auto& bindings = engineManagers()->controllerManager->bindings;
    SettingsValues values{superSample,   flicker,        musicVolume, soundVolume,
                          levelsCleared, levelsUnlocked, fullScreen};
    std::copy(bindings.begin(), bindings.end(), values.begin() + keyUp);
    return values;
}

void Settings::save() const {
    if (!folder_) return;
    const Renderer& renderer = *engineManagers()->renderer;
    const DisplaySettings display{static_cast<unsigned>(renderer.windowWidth),
                                  static_cast<unsigned>(renderer.windowHeight), renderer.fullscreen ? 1 : 0};
    const std::string trouble = settingsFile(*folder_).write(writeSettings(display, values()));
    if (!trouble.empty()) logLine("settings " + trouble);
}

void Settings::setOption(int option, float value) {
    const int whole = toInt(value);
    AudioManager& audio = *engineManagers()->audioManager;
    switch (option) {
    case optionLevelsUnlocked:
        levelsUnlocked = unlockedStage = whole;
        break;
    case optionLevelsCleared:
        levelsCleared = clearedMask = whole;
        break;
    case optionSoundVolume:
        soundVolume = whole;
        audio.soundVolume = value * percent;
        break;
    case optionMusicVolume:
        musicVolume = whole;
        audio.setMusicVolume(value * percent);
        break;
    case optionTouchControls:
        touchControls = whole;
        break;
    case optionViewSize:
        viewSize = whole;
        break;
    case optionPostProcessing:
        postProcessing = whole;
        engineManagers()->renderer->reloadShaders(whole != 0 ? "post" : "direct");
        break;
    default:
        break;
    }
}

void Settings::stageCleared(int stage) {
    if (stage >= 0 && stage < Game::stageCount) clearedMask |= 1 << stage;
    if (stage >= unlockedStage) unlockedStage = std::min(stage, lastStage - 1) + 1;
    setOption(optionLevelsCleared, static_cast<float>(clearedMask));
    setOption(optionLevelsUnlocked, static_cast<float>(unlockedStage));
    save();
}

void Settings::applyDisplayMode() {
    EngineManagers& engine = *engineManagers();
    if (!displayModes.empty()) {
        const bool listed = resolutionIndex >= 0 && resolutionIndex < static_cast<int>(displayModes.size());
        const DisplayMode& mode = displayModes[listed ? static_cast<std::size_t>(resolutionIndex) : 0];
        engine.renderer->setDisplayMode(fullScreen != 0, mode.width, mode.height);
    }
    engine.controllerManager->clearAll(); // key-up messages can be lost during the switch
}
