#include "game/Settings.h"

#include "audio/AudioManager.h"
#include "core/Log.h"
#include "game/WorldTest.h"

#include <fstream>
#include <iterator>

using namespace Zelkor;

namespace {

const std::string defaultFile = "Resolution 1280 720\r\nFullScreen 0\r\n\r\nOptionSuperSample 1\r\n"
                                "OptionFlicker 1\r\nOptionMusicVolume 50\r\nOptionSoundVolume 50\r\n"
                                "LevelsCleared 0\r\nLevelsUnlocked 0\r\nOptionFullScreen 0\r\nUpKey 38\r\n"
                                "DownKey 40\r\nLeftKey 37\r\nRightKey 39\r\nJumpKey 90\r\nFireKey 88\r\n";

// The default file with these lines changed.
std::string with(const std::string& changes) {
    std::string text = defaultFile;
    std::istringstream in(changes);
    for (std::string key, value; in >> key >> value;) {
        const std::size_t at = text.find(key) + key.size() + 1;
        text.replace(at, text.find('\r', at) - at, value);
    }
    return text;
}

class SettingsTest : public WorldTest {
  protected:
    SettingsTest() { renderer().windowWidth = 1280, renderer().windowHeight = 720; }
    // What a game that was started with this file leaves behind.
    std::string reloaded(const std::string& text) {
        writeData("Zoë/settings.sav", text);
        Game again(home);
        again.settings->save();
        return saved();
    }
    std::string saved() const {
        std::ifstream in(home / "settings.sav", std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    const std::filesystem::path home = folder / "Zoë";
};

} // namespace

TEST_F(SettingsTest, WhatIsReadIsWritten) {
    Game{home}; // no file yet: written when the game ends
    EXPECT_EQ(saved(), defaultFile);
    const std::string head = "Resolution 800 600\nFullScreen 1\n\n";
    const std::string changed = "OptionSuperSample 2 OptionFlicker 0 OptionMusicVolume 250 OptionSoundVolume -7 "
                                "LevelsCleared 16777217 LevelsUnlocked 2147483647 UpKey 288 FireKey 511";
    const std::pair<std::string, std::string> cases[] = {
        {with(changed), changed},
        {with("FullScreen 1 OptionFullScreen 1"), ""}, // the display's own state is written
        {"", ""},
        {head + "Foo 3\nupkey 4\nLevelsUnlocked 4\n", "LevelsUnlocked 4"}, // no key is missed
        {head + "JumpKey 70\nFireKey 80\nJumpKey 65607\n", "JumpKey 71 FireKey 80"},
        {head + "OptionFlicker 0\nUpKey x\nDownKey 50\n", "OptionFlicker 0"}, // no number ends it
        {head + "OptionFlicker 0 UpKey 99999999999 DownKey 50\n", "OptionFlicker 0"},
    };
    for (const auto& [text, changes] : cases) {
        std::filesystem::remove(home / "settings.sav.bak");
        EXPECT_EQ(reloaded(text), with(changes)) << text;
    }
}

TEST_F(SettingsTest, CutShortAnywhereTheBackupIsRead) {
    for (std::size_t length = 0; length < defaultFile.size(); ++length)
        ASSERT_FALSE(isWholeSettings(defaultFile.substr(0, length))) << length;
    writeData("Zoë/settings.sav.bak", with("LevelsUnlocked 7"));
    EXPECT_EQ(reloaded(defaultFile.substr(0, 100)), with("LevelsUnlocked 7"));
}

TEST_F(SettingsTest, ProgressIsSavedWithEveryClearedStage) {
    reloaded(with("LevelsUnlocked 3"));
    const std::pair<int, std::string> cases[] = {{3, "LevelsCleared 8 LevelsUnlocked 4"},
                                                 {1, "LevelsCleared 10 LevelsUnlocked 4"},
                                                 {19, "LevelsCleared 524298 LevelsUnlocked 19"},
                                                 {20, "LevelsCleared 524298 LevelsUnlocked 19"}};
    for (const auto& [stage, changes] : cases) {
        Game again(home);
        again.settings->stageCleared(stage);
        EXPECT_EQ(saved(), with(changes)) << stage;
    }
    reloaded(with("LevelsUnlocked 25 OptionMusicVolume 250"));
    EXPECT_EQ(Game(home).currentStage, 19);
    EXPECT_EQ(managers->audioManager->musicVolume, 2.5f);

    std::vector<std::string> lines;
    writeData("file", "");
    Log::instance().captureInto(&lines);
    Settings(folder / "file" / "below").stageCleared(0);
    Log::instance().captureInto(nullptr);
    EXPECT_EQ(lines.at(0).find("settings not saved: cannot create"), 0u) << lines[0];
}

TEST_F(SettingsTest, DisplayModesAreSortedAndApplied) {
    platform.modes = {{1280, 720, 32}, {800, 600, 32}, {1024, 768, 16}, {800, 600, 16}};
    Settings settings;
    settings.load();
    ASSERT_EQ(settings.displayModes.size(), 3u);
    EXPECT_EQ(settings.displayModes[1].label, "1024x768");
    EXPECT_EQ(settings.resolutionIndex, 2);
    settings.resolutionIndex = 3;
    settings.fullScreen = 1;
    platform.modeSwitchesFail = true; // to ask for it is enough: there is no context to make
    platform.answers = {false};
    managers->controllerManager->setButton(288, true);
    settings.applyDisplayMode();
    EXPECT_NE(std::find(platform.calls.begin(), platform.calls.end(), "switchDisplayMode 800 600 32"),
              platform.calls.end());
    EXPECT_FALSE(managers->controllerManager->isDown(288));
}
