// The text of the settings file: sixteen lines of a key and a number.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

// What follows the lines about the display, in the order of the file.
enum SettingsKey {
    keySuperSample,
    keyFlicker,
    keyMusicVolume,
    keySoundVolume,
    keyLevelsCleared,
    keyLevelsUnlocked,
    keyFullScreen, // a copy that is never read back
    keyUp,         // the bindings, in the order of the controller manager's
    keyDown,
    keyLeft,
    keyRight,
    keyJump,
    keyFire,
    settingsKeyCount
};

using SettingsValues = std::array<std::int32_t, settingsKeyCount>;

struct DisplaySettings {
    unsigned width = 1280, height = 720; // pixels
    int fullscreen = 0;
};

// The first two lines. A failed read leaves that value and the following ones.
void readDisplaySettings(std::string_view text, DisplaySettings& display);

// The rest, into the values whose keys there are; up to the first that is no number.
void readSettings(std::string_view text, SettingsValues& values);

// Lines end with CR LF.
std::string writeSettings(const DisplaySettings& display, const SettingsValues& values);

// Whether this is not the beginning of what writeSettings wrote, cut off somewhere. A file that somebody wrote
// by hand is whole without every key.
bool isWholeSettings(std::string_view text);
