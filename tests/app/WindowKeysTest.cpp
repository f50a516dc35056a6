// The keys of the window: pictures and full screen.
#include "FullscreenKeys.h"
#include "PlayersPictures.h"

#include "core/EngineManagers.h"
#include "core/TimerManager.h"
#include "fake/FakePlatform.h"
#include "game/Settings.h"
#include "input/ControllerManager.h"
#include "render/GlRenderer.h"

#include <gtest/gtest.h>

#include <fstream>

namespace {

TEST(PlayersPictures, EachHasItsNameAndNoneIsLeftInPart) {
    const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) / "made" / "here";
    std::filesystem::remove_all(folder);
    const Zelkor::Image picture{2, 1, 3, {1, 2, 3, 4, 5, 6}};
    savePlayersPicture(picture, folder);
    savePlayersPicture(picture, {});
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);

    std::tm time{};
    time.tm_year = 126;
    time.tm_mon = 10;
    time.tm_mday = 23;
    time.tm_hour = 4;
    for (const char* name : {"Rustpike 2026-11-23 04.00.00.png", "Rustpike 2026-11-23 04.00.00 2.png"}) {
        EXPECT_EQ(playersPictureFile(folder, time), folder / name);
        EXPECT_TRUE(picture.writePng(folder / name));
    }
    EXPECT_FALSE(picture.writePng("/dev/full"));
    EXPECT_TRUE(std::filesystem::exists("/dev/full"));
    EXPECT_FALSE(picture.writePng(folder / "missing" / "a.png"));
    EXPECT_FALSE(Zelkor::Image().writePng(folder / "empty.png"));
    std::filesystem::remove_all(folder);
}

TEST(FullscreenKeys, FillTheDesktopAndGiveTheWindowItsSizeBack) {
    platform::FakePlatform system;
    system.modes = {{640, 480, 32}, {1920, 1080, 32}};
    system.desktopMode = system.modes[1];
    Zelkor::TimerManager::reset();
    const auto managers = std::make_unique<Zelkor::EngineManagers>();
    managers->renderer =
        std::make_unique<Zelkor::GlRenderer>([] { return Zelkor::GlCapabilities{false, false, false}; });
    auto& renderer = *managers->renderer;
    ASSERT_TRUE(renderer.init("", 800, 600, 32, false));
    Settings settings;
    settings.load();
    FullscreenKeys keys;
    const auto toggle = [&] { keys.toggle(renderer, settings, *managers->controllerManager); };

    managers->controllerManager->setButton(13, true);
    toggle();
    EXPECT_TRUE(renderer.fullscreen);
    EXPECT_EQ(renderer.windowWidth, 1920);
    EXPECT_EQ(settings.fullScreen, 1);
    EXPECT_EQ(settings.resolutionIndex, 1);
    EXPECT_FALSE(managers->controllerManager->isDown(13));
    toggle();
    EXPECT_FALSE(renderer.fullscreen);
    EXPECT_EQ(renderer.windowWidth, 800);
    EXPECT_EQ(renderer.windowHeight, 600);
    EXPECT_EQ(settings.fullScreen, 0);
    EXPECT_EQ(std::count(system.calls.begin(), system.calls.end(), "restoreDisplayMode"), 1);
}

} // namespace
