// Options and progress of the player, as the settings file keeps them.
#pragma once

#include "game/SettingsText.h"
#include "io/SafeFile.h"

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class Settings {
  public:
    struct DisplayMode {
        int width = 0, height = 0; // pixels
        std::string label = {};    // such as 1280x720
    };

    // Indices of setOption.
    enum Option {
        optionLevelsUnlocked,
        optionLevelsCleared,
        optionSoundVolume,
        optionMusicVolume,
        optionTouchControls,
        optionViewSize,
        optionPostProcessing
    };

    // folder: where the settings file lies, or none to keep everything in memory.
    explicit Settings(std::optional<std::filesystem::path> folder = {}) : folder_(std::move(folder)) {}

    // The player's own: "Games/Rustpike" in the documents folder, none without one.
    static std::optional<std::filesystem::path> playersFolder();
    // The file's text, or its backup's if that is the whole one of the two.
    static std::optional<Zelkor::SafeFile::Content> readFile(const std::filesystem::path& folder);

    // Defaults, then the file over them, then what the display offers. The managers and the renderer must
    // exist; everything is applied to them at once.
    void load();
    // The whole file. A save that fails changes nothing and says so in the log.
    void save() const;
    // Stores an option and applies it at once; value is truncated.
    void setOption(int option, float value);
    // Unlocks the stage behind it, and saves.
    void stageCleared(int stage);
    // Switches to displayModes[resolutionIndex], the first where there is none, as fullScreen says.
    void applyDisplayMode();
    // fullScreen and resolutionIndex become the renderer's; a size that is in no mode leaves the index.
    void followDisplay();

    std::vector<DisplayMode> displayModes; // distinct, sorted by width + height
    int levelsUnlocked = 0;
    int levelsCleared = 0;
    int soundVolume = 50; // percent
    int musicVolume = 50; // percent
    int touchControls = 1;
    int viewSize = 100;     // percent
    int postProcessing = 1; // 0 draws straight to the window
    int flicker = 1;        // 1: the sketch is redrawn on its tick
    int superSample = 1;    // 0 off, 1 twice the height, 2 twice the width and the height
    int resolutionIndex = 0;
    int fullScreen = 0;
    int unlockedStage = 0;
    int lastStage = 19;
    int clearedMask = 0; // bit i: stage i is cleared

  private:
    void setDefaults();
    void loadFile();
    void listDisplayModes();
    SettingsValues values() const;

    std::optional<std::filesystem::path> folder_;
};
