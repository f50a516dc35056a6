#include "fake/FakePlatform.h"

#include <gtest/gtest.h>

namespace {

using namespace platform;

TEST(FakePlatform, FullScreenFallsBackToAWindowWhenThePlayerAgrees) {
    FakePlatform fake;
    fake.modes = {{800, 600, 32}, {1280, 720, 32}};
    fake.answers = {false};
    ASSERT_EQ(current(), &fake);

    EXPECT_FALSE(current()->switchDisplayMode({1920, 1080, 32}));
    EXPECT_TRUE(current()->switchDisplayMode({1280, 720, 32}));
    fake.modeSwitchesFail = true;
    EXPECT_FALSE(current()->switchDisplayMode({1280, 720, 32}));
    EXPECT_FALSE(current()->askYesNo("Windowed?", "Rustpike", MessageIcon::exclamation));
    EXPECT_TRUE(current()->askYesNo("Really?", "Rustpike", MessageIcon::exclamation)); // none queued
    current()->showMessage("Closing.", "ERROR", MessageIcon::stop);
    ASSERT_EQ(fake.messageBoxes.size(), 3u);
    EXPECT_TRUE(fake.messageBoxes[0].question);
    EXPECT_EQ(fake.messageBoxes[2].text, "Closing.");
    EXPECT_EQ(fake.messageBoxes[2].icon, MessageIcon::stop);
    EXPECT_FALSE(fake.messageBoxes[2].question);
}

TEST(FakePlatform, WindowIsRecordedUntilItIsDestroyed) {
    FakePlatform fake;
    fake.failingWindows = 1;
    fake.teardown.contextDeleted = false;
    EXPECT_FALSE(fake.createWindow({.title = "t", .width = 640, .height = 480}));
    const auto window = fake.createWindow({.title = "t", .width = 640, .height = 480, .fullscreen = true});
    ASSERT_TRUE(window);
    window->resize(320, 200);
    EXPECT_EQ(window->clientSize().width, 320);
    EXPECT_FALSE(window->destroy().contextDeleted);
    window->swapBuffers();
    EXPECT_EQ(fake.calls,
              (std::vector<std::string>{"createWindow 640 480 32 windowed",
                                        "createWindow 640 480 32 fullscreen", "resize 320 200", "destroy"}));
}

TEST(FakePlatform, QuitComesAfterEverythingElse) {
    FakePlatform fake;
    fake.postQuit(3);
    fake.pressKey(13);
    Message message;
    ASSERT_TRUE(fake.pollMessage(message));
    EXPECT_EQ(message.kind, MessageKind::key);
    EXPECT_TRUE(message.down);
    ASSERT_TRUE(fake.pollMessage(message));
    EXPECT_EQ(message.kind, MessageKind::quit);
    EXPECT_EQ(message.code, 3);
    EXPECT_FALSE(fake.pollMessage(message));
}

} // namespace
