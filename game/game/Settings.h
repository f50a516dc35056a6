// Options and progress of the player, as the settings file keeps them.
#pragma once

#include <string>
#include <vector>

class Settings {
  public:
    struct DisplayMode {
        int width = 0, height = 0; // pixels
        std::string label = {};    // such as 1280x720
    };

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
};
