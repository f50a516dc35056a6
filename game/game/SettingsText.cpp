#include "game/SettingsText.h"

#include <algorithm>
#include <sstream>
#include <vector>

namespace {

constexpr const char* keyNames[settingsKeyCount] = {
    "OptionSuperSample", "OptionFlicker",    "OptionMusicVolume", "OptionSoundVolume", "LevelsCleared",
    "LevelsUnlocked",    "OptionFullScreen", "UpKey",             "DownKey",           "LeftKey",
    "RightKey",          "JumpKey",          "FireKey"};

constexpr const char* lineEnd = "\r\n";

std::istringstream streamOver(std::string_view text) {
    std::istringstream in{std::string(text)};
    in.imbue(std::locale::classic()); // numbers are the same in every country
    return in;
}

void skipDisplaySettings(std::istream& in) {
    std::string word;
    for (int token = 0; token < 5; ++token)
        in >> word;
}

} // namespace

void readDisplaySettings(std::string_view text, DisplaySettings& display) {
    std::istringstream in = streamOver(text);
    std::string word;
    unsigned width = 0, height = 0;
    int fullscreen = 0;
    if (!(in >> word >> width)) return;
    display.width = width;
    if (!(in >> height)) return;
    display.height = height;
    if (in >> word >> fullscreen) display.fullscreen = fullscreen;
}

void readSettings(std::string_view text, SettingsValues& values) {
    std::istringstream in = streamOver(text);
    skipDisplaySettings(in);
    std::string key;
    std::int32_t value = 0;
    while (in >> key >> value) {
        const auto* name = std::find(std::begin(keyNames), std::end(keyNames), key);
        const auto index = static_cast<std::size_t>(name - std::begin(keyNames));
        if (index < settingsKeyCount && index != keyFullScreen) values[index] = value;
    }
}

std::string writeSettings(const DisplaySettings& display, const SettingsValues& values) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << "Resolution " << display.width << ' ' << display.height << lineEnd;
    out << "FullScreen " << display.fullscreen << lineEnd << lineEnd;
    for (std::size_t key = 0; key < settingsKeyCount; ++key)
        out << keyNames[key] << ' ' << values[key] << lineEnd;
    return out.str();
}

bool isWholeSettings(std::string_view text) {
    if (text.empty() || text.back() != '\n') return false;
    std::istringstream in = streamOver(text);
    skipDisplaySettings(in);
    if (!in) return false;
    std::string key, value;
    std::size_t inOrder = 0;
    while (in >> key) {
        if (!(in >> value)) return false;
        // Once a key stands elsewhere than where it would be written, somebody arranged this.
        if (inOrder == settingsKeyCount || key != keyNames[inOrder]) return true;
        ++inOrder;
    }
    return inOrder == settingsKeyCount;
}
