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

class SettingsTest : public WorldTest {
  protected:
    SettingsTest() {
        renderer().windowWidth = 1280;
        renderer().windowHeight = 720;
    }
    // What a save writes after this text has been loaded.
    std::string reloaded(const std::string& text) {
        writeData("Zoë/settings.sav", text);
        Settings settings(home);
        settings.load();
        settings.save();
        return saved();
    }
    std::string saved() const {
        std::ifstream in(home / "settings.sav", std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    // The default file with some of its lines changed.
    static std::string with(std::initializer_list<std::pair<std::string, std::string>> changes) {
        std::string text = defaultFile;
        for (const auto& [before, after] : changes)
            text.replace(text.find(before), before.size(), after);
        return text;
    }

    const std::filesystem::path home = folder / "Zoë";
};

} // namespace

TEST_F(SettingsTest, WhatIsReadIsWritten) {
    game = std::make_unique<Game>(home); // no file yet: written when the game ends
    game.reset();
    EXPECT_EQ(saved(), defaultFile);

    const std::string head = "Resolution 800 600\nFullScreen 1\n\n";
    struct Case {
        const char* why;
        std::string text, expected;
    };
    const Case cases[] = {
        {"only the display's own state is written back",
         with({{"Resolution 1280 720", "Resolution 1 2"}, {"FullScreen 0", "FullScreen 1"}}), defaultFile},
        {"every value", with({{"OptionSuperSample 1", "OptionSuperSample 2"},
                              {"Flicker 1", "Flicker 0"},
                              {"MusicVolume 50", "MusicVolume 250"},
                              {"SoundVolume 50", "SoundVolume -7"},
                              {"LevelsCleared 0", "LevelsCleared 16777217"},
                              {"LevelsUnlocked 0", "LevelsUnlocked 2147483647"},
                              {"UpKey 38", "UpKey 288"},
                              {"FireKey 88", "FireKey 511"}}), ""},
        {"nothing", "", defaultFile},
        {"one key is enough, unknown ones are skipped", head + "Foo 3\nupkey 4\nLevelsUnlocked 4\n",
         with({{"LevelsUnlocked 0", "LevelsUnlocked 4"}})},
        {"the last of two, and its low 16 bits", head + "JumpKey 70\nFireKey 80\nJumpKey 65607\n",
         with({{"JumpKey 90", "JumpKey 71"}, {"FireKey 88", "FireKey 80"}})},
        {"no number ends it", head + "OptionFlicker 0\nUpKey x\nDownKey 50\n",
         with({{"Flicker 1", "Flicker 0"}})},
        {"too large a number ends it", head + "OptionFlicker 0 UpKey 99999999999 DownKey 50\n",
         with({{"Flicker 1", "Flicker 0"}})},
        {"the copy is not read", head + "OptionFullScreen 1\n", defaultFile},
    };
    for (const Case& one : cases) {
        std::filesystem::remove(home / "settings.sav.bak");
        EXPECT_EQ(reloaded(one.text), one.expected.empty() ? one.text : one.expected) << one.why;
    }
}

TEST_F(SettingsTest, CutShortAnywhereTheBackupIsRead) {
    const std::string backup = with({{"LevelsUnlocked 0", "LevelsUnlocked 7"}});
    for (std::size_t length = 0; length < defaultFile.size(); ++length) {
        ASSERT_FALSE(isWholeSettings(defaultFile.substr(0, length))) << length;
        if (length % 40 != 0) continue;
        writeData("Zoë/settings.sav.bak", backup);
        ASSERT_EQ(reloaded(defaultFile.substr(0, length)), backup) << length;
    }
}

TEST_F(SettingsTest, OptionsApplyAtOnce) {
    Settings settings(home);
    const AudioManager& audio = *managers->audioManager;
    settings.load();
    EXPECT_EQ(settings.postProcessing, 0); // no context
    EXPECT_EQ(audio.soundVolume, 0.5f);
    EXPECT_EQ(audio.musicGain, 0.3f);
    settings.setOption(Settings::optionSoundVolume, 250);
    settings.setOption(Settings::optionMusicVolume, 25.9f);
    settings.setOption(Settings::optionLevelsUnlocked, 1e20f);
    EXPECT_EQ(audio.soundVolume, 2.5f);
    EXPECT_EQ(settings.musicVolume, 25);
    EXPECT_NEAR(audio.musicVolume, 0.259f, 1e-6f);
    EXPECT_EQ(settings.unlockedStage, 2147483647);
}

TEST_F(SettingsTest, ProgressIsSavedWithEveryClearedStage) {
    struct Case {
        int stage;
        std::string cleared, unlocked;
    };
    reloaded(with({{"LevelsUnlocked 0", "LevelsUnlocked 3"}}));
    for (const Case& one : {Case{3, "8", "4"}, Case{1, "10", "4"}, Case{1, "10", "4"}, Case{19, "524298", "19"},
                            Case{20, "524298", "19"}}) {
        Game again(home);
        again.settings->stageCleared(one.stage);
        EXPECT_EQ(saved(), with({{"LevelsCleared 0", "LevelsCleared " + one.cleared},
                                 {"LevelsUnlocked 0", "LevelsUnlocked " + one.unlocked}}))
            << one.stage;
    }
    reloaded(with({{"LevelsUnlocked 0", "LevelsUnlocked 25"}}));
    EXPECT_EQ(Game(home).currentStage, 19);
}

TEST_F(SettingsTest, AFailedSaveIsLogged) {
    writeData("file", "");
    std::vector<std::string> lines;
    Log::instance().captureInto(&lines);
    Settings(folder / "file" / "below").save();
    Log::instance().captureInto(nullptr);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].find("settings not saved: "), 0u) << lines[0];
}

TEST_F(SettingsTest, DisplayModesAreSortedAndApplied) {
    platform.modes = {{1280, 720, 32}, {800, 600, 32}, {1024, 768, 16}, {800, 600, 16}};
    Settings settings;
    settings.load();
    ASSERT_EQ(settings.displayModes.size(), 3u);
    EXPECT_EQ(settings.displayModes[0].label, "800x600");
    EXPECT_EQ(settings.displayModes[1].label, "1024x768");
    EXPECT_EQ(settings.resolutionIndex, 2);
    for (const auto& [index, mode] : {std::pair{2, "1280 720"}, {3, "800 600"}, {-1, "800 600"}}) {
        platform.calls.clear();
        platform.answers = {false};
        platform.modeSwitchesFail = true; // asked for is enough: there is no context to make
        settings.resolutionIndex = index;
        settings.fullScreen = 1;
        managers->controllerManager->setButton(288, true);
        settings.applyDisplayMode();
        EXPECT_NE(std::find(platform.calls.begin(), platform.calls.end(),
                            "switchDisplayMode " + std::string(mode) + " 32"),
                  platform.calls.end());
        EXPECT_FALSE(managers->controllerManager->isDown(288));
        renderer().fullscreen = false;
    }
}
