#include "sdl/SdlPlatform.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>
#include <vector>

namespace {

using namespace platform;

// Of the few functions of the context that these tests call.
using GetString = const unsigned char* (*)(unsigned);
using ClearColour = void (*)(float, float, float, float);
using Clear = void (*)(unsigned);
using ReadPixels = void (*)(int, int, int, int, unsigned, unsigned, void*);
constexpr unsigned glVersion = 0x1F02, glColourBuffer = 0x4000, glRgba = 0x1908, glUnsignedByte = 0x1401;

template <class Function>
Function function(Window& window, const char* name) {
    return reinterpret_cast<Function>(window.glFunction(name));
}

// The pixel in the far corner, after the whole picture has been cleared to red.
std::vector<int> clearedCorner(Window& window) {
    function<ClearColour>(window, "glClearColor")(1, 0, 0, 1);
    function<Clear>(window, "glClear")(glColourBuffer);
    unsigned char pixel[4] = {7, 7, 7, 7};
    const ClientSize size = window.clientSize();
    function<ReadPixels>(window, "glReadPixels")(size.width - 1, size.height - 1, 1, 1, glRgba,
                                                 glUnsignedByte, pixel);
    return {pixel[0], pixel[1], pixel[2]};
}

std::vector<Message> drain(Platform& platform) {
    std::vector<Message> messages;
    Message message;
    while (platform.pollMessage(message))
        messages.push_back(message);
    return messages;
}

// The first of this program that starts video, which then stays up.
TEST(SdlPlatform, NoDisplayIsSeenBeforeAWindowIsOpened) {
    ::unsetenv("WAYLAND_DISPLAY");
    ::setenv("DISPLAY", ":4711", 1);                            // where no server listens,
    ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/none", 1); // and no bus is launched for it
    for (const char* driver : {"x11", "offscreen", "dummy"}) {
        ::setenv("SDL_VIDEODRIVER", driver, 1);
        EXPECT_FALSE(SdlPlatform::displayAvailable()) << driver;
    }
    ::unsetenv("SDL_VIDEODRIVER");
}

class Headless : public ::testing::Test {
  protected:
    SdlPlatform sdl{{.headless = true}};
};

TEST_F(Headless, WindowHasACompatibilityContextOfItsSize) {
    ASSERT_TRUE(sdl.registerWindowClass());
    auto window = sdl.createWindow({.title = "Rustpike", .width = 200, .height = 100});
    ASSERT_TRUE(window);
    // glBegin exists in compatibility contexts only, but its entry point may be there in others: the version
    // string tells them apart.
    const auto version =
        std::string(reinterpret_cast<const char*>(function<GetString>(*window, "glGetString")(glVersion)));
    EXPECT_GE(version[0], '2');
    EXPECT_EQ(version.find("Core"), std::string::npos) << version;
    EXPECT_EQ(clearedCorner(*window), (std::vector<int>{255, 0, 0}));

    const auto messages = drain(sdl);
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0].kind, MessageKind::activateApp);
    EXPECT_TRUE(messages[0].down);
}

TEST_F(Headless, WindowGrowsWithItsContextAndCanBeMadeAgain) {
    auto window = sdl.createWindow({.title = "Rustpike", .width = 64, .height = 64});
    ASSERT_TRUE(window);
    drain(sdl);
    window->resize(300, 150);
    EXPECT_EQ(clearedCorner(*window), (std::vector<int>{255, 0, 0}));
    const auto messages = drain(sdl);
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0].kind, MessageKind::resize);
    EXPECT_EQ(messages[0].width, 300);
    EXPECT_EQ(messages[0].height, 150);

    const WindowTeardown teardown = window->destroy();
    EXPECT_TRUE(teardown.contextReleased && teardown.windowDestroyed);
    EXPECT_EQ(window->clientSize().width, 0);
    window->swapBuffers();
    window = sdl.createWindow({.title = "Rustpike", .width = 32, .height = 32});
    ASSERT_TRUE(window);
    EXPECT_EQ(clearedCorner(*window), (std::vector<int>{255, 0, 0}));
}

TEST_F(Headless, NothingLeavesTheProcess) {
    EXPECT_TRUE(sdl.displayModes().empty());
    EXPECT_FALSE(sdl.currentDisplayMode());
    EXPECT_FALSE(sdl.switchDisplayMode({1024, 768, 32}));
    EXPECT_FALSE(sdl.createWindow({.title = "t", .width = 64, .height = 64, .fullscreen = true}));
    EXPECT_EQ(sdl.enumerateJoysticks(), 0);
    EXPECT_FALSE(sdl.pad());
    ::testing::internal::CaptureStderr();
    EXPECT_TRUE(sdl.askYesNo("Continue anyway?", "ERROR", MessageIcon::exclamation));
    sdl.showMessage("Closing.", "ERROR", MessageIcon::stop);
    const std::string written = ::testing::internal::GetCapturedStderr();
    EXPECT_NE(written.find("Continue anyway?"), std::string::npos);
    EXPECT_NE(written.find("Closing."), std::string::npos);
}

TEST(SdlPlatform, DocumentsFolderFollowsTheEnvironment) {
    SdlPlatform sdl({.headless = true});
    ::setenv("HOME", "/home/Zoë", 1);
    ::setenv("XDG_DATA_HOME", "/tmp/données", 1);
    EXPECT_EQ(sdl.documentsFolder(), std::filesystem::path("/tmp/données"));
    ::setenv("XDG_DATA_HOME", "relative", 1);
    EXPECT_EQ(sdl.documentsFolder(), std::filesystem::path("/home/Zoë/.local/share"));
    ::unsetenv("XDG_DATA_HOME");
    ::unsetenv("HOME");
    EXPECT_FALSE(sdl.documentsFolder());
    EXPECT_FALSE(sdl.picturesFolder());
}

TEST(SdlPlatform, PicturesFolderIsTheOneTheDesktopNames) {
    SdlPlatform sdl({.headless = true});
    const std::filesystem::path home = testing::TempDir();
    ::setenv("HOME", home.c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", home.c_str(), 1);
    const std::pair<const char*, std::filesystem::path> cases[] = {
        {"# none\nXDG_MUSIC_DIR=\"$HOME/Music\"\n", home / "Pictures"},
        {"XDG_PICTURES_DIR=\"$HOME/Bilder\"\n", home / "Bilder"},
        {"XDG_PICTURES_DIR=\"/srv/a \\\"b\\\"\"\n", "/srv/a \"b\""},
        {"XDG_PICTURES_DIR=\"relative\"\nXDG_PICTURES_DIR=$HOME/x", home / "Pictures"},
    };
    for (const auto& [text, folder] : cases) {
        std::ofstream(home / "user-dirs.dirs") << text;
        EXPECT_EQ(sdl.picturesFolder(), folder) << text;
    }
    ::unsetenv("XDG_CONFIG_HOME");
    ::unsetenv("HOME");
}

TEST(SdlPlatform, ClocksRunAtTheSamePace) {
    SdlPlatform sdl({.headless = true});
    const auto milliseconds = sdl.milliseconds();
    const auto ticks = sdl.counter();
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    const auto elapsed = sdl.milliseconds() - milliseconds;
    const double counted =
        1000.0 * static_cast<double>(sdl.counter() - ticks) / static_cast<double>(sdl.counterFrequency());
    EXPECT_GE(elapsed, 29);
    EXPECT_NEAR(counted, static_cast<double>(elapsed), 5);
}

} // namespace
