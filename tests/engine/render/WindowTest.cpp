#include "core/EngineManagers.h"
#include "core/TimerManager.h"
#include "fake/FakePlatform.h"
#include "input/ControllerManager.h"
#include "render/GlRenderer.h"

#include <gtest/gtest.h>

namespace Zelkor {

namespace {

using platform::MessageKind;
using Calls = std::vector<std::string>;

GlCapabilities found;

class WindowTest : public ::testing::Test {
  protected:
    void SetUp() override {
        found = {};
        TimerManager::reset();
        managers = std::make_unique<EngineManagers>();
        managers->renderer = std::make_unique<GlRenderer>([] { return found; });
        system.modes = {{640, 480, 32}};
    }
    void TearDown() override { managers.reset(); }

    GlRenderer& gl() { return static_cast<GlRenderer&>(*managers->renderer); }
    bool init(bool fullscreen, int width = 640, int height = 480) {
        return gl().init("ignored", width, height, 32, fullscreen);
    }
    // What the platform was asked to do since the last look.
    Calls calls() { return std::exchange(system.calls, {}); }
    // How each box shown since the last look begins, up to its second word; a question ends in a mark.
    Calls boxes() {
        Calls begins;
        for (const auto& box : std::exchange(system.messageBoxes, {}))
            begins.push_back(box.text.substr(0, box.text.find(' ', box.text.find(' ') + 1)) +
                             (box.question ? "?" : ""));
        return begins;
    }
    platform::Message message(MessageKind kind, bool down = false) { return {.kind = kind, .down = down}; }

    platform::FakePlatform system;
    std::unique_ptr<EngineManagers> managers;
};

TEST_F(WindowTest, FailuresLeaveNoWindowAndASecondTryOpensOne) {
    system.windowClassFails = true;
    EXPECT_FALSE(init(false));
    EXPECT_EQ(boxes(), Calls{"Failed To"});
    system.windowClassFails = false;
    system.failingWindows = 1;
    EXPECT_FALSE(init(false));
    EXPECT_EQ(gl().window(), nullptr);
    gl().present(); // harmless without a window
    calls();
    EXPECT_TRUE(init(false));
    EXPECT_EQ(calls(), (Calls{"registerWindowClass", "createWindow 640 480 32 windowed", "bringToFront",
                              "setSwapInterval 1"}));
}

TEST_F(WindowTest, MissingFeaturesAndRefusedModesAreQuestions) {
    system.answers = {false};
    EXPECT_FALSE(init(true, 123, 45));
    EXPECT_EQ(boxes(), (Calls{"The Requested?", "Program Will"}));
    system.answers = {true};
    EXPECT_TRUE(init(true, 123, 45));
    EXPECT_FALSE(gl().fullscreen);
    boxes();

    managers->renderer = std::make_unique<GlRenderer>([] { return found; });
    found = {true, false, true};
    EXPECT_TRUE(init(false));
    EXPECT_EQ(boxes(), Calls{"Shaders not?"});
    EXPECT_FALSE(gl().shadersSupported || gl().framebuffersSupported);
    EXPECT_EQ(gl().loadShader("any"), -1);
    EXPECT_EQ(gl().createRenderTarget("any", 8, 8), 0);

    managers->renderer = std::make_unique<GlRenderer>([] { return found; });
    found = {true, true, false};
    system.answers = {false};
    EXPECT_FALSE(init(false));
    EXPECT_EQ(boxes(), Calls{"FrameBuffer objects?"});
}

TEST_F(WindowTest, SwitchingRecreatesTheWindowAndReportsTeardown) {
    ASSERT_TRUE(init(false));
    calls();
    gl().setDisplayMode(false, 320, 200);
    EXPECT_EQ(calls(), Calls{"resize 320 200"});

    system.teardown = {false, false, false, false};
    gl().setDisplayMode(true, 640, 480);
    EXPECT_EQ(calls(), (Calls{"showCursor 0", "destroy", "switchDisplayMode 640 480 32",
                              "createWindow 640 480 32 fullscreen", "setSwapInterval 1", "bringToFront"}));
    EXPECT_EQ(boxes(), (Calls{"Release Of", "Release Rendering", "Release Device", "Could Not"}));
    EXPECT_TRUE(gl().fullscreen && gl().active && gl().hasFocus());

    system.teardown = {};
    gl().setDisplayMode(false, 320, 200);
    EXPECT_EQ(calls(), (Calls{"showCursor 1", "restoreDisplayMode", "destroy",
                              "createWindow 320 200 32 windowed", "setSwapInterval 1", "bringToFront"}));
    system.answers = {false};
    gl().setDisplayMode(true, 1, 1);
    EXPECT_EQ(boxes().at(0), "The Requested?");
    EXPECT_EQ(gl().window(), nullptr);
}

TEST_F(WindowTest, ActivationPausesOnlyFullScreen) {
    ASSERT_TRUE(init(false));
    managers->controllerManager->setButton('Z', true);
    gl().handleMessage(message(MessageKind::activateApp, false));
    EXPECT_FALSE(gl().isInactive() || gl().hasFocus());
    EXPECT_FALSE(managers->controllerManager->isDown('Z')); // its release will go elsewhere
    gl().setDisplayMode(true, 640, 480);
    calls();
    gl().handleMessage(message(MessageKind::activateApp, false));
    EXPECT_TRUE(gl().isInactive());
    gl().resize(10, 10);
    gl().handleMessage(message(MessageKind::activateApp, true));
    EXPECT_TRUE(gl().active && gl().hasFocus());
    EXPECT_EQ(gl().windowWidth, 640);
    EXPECT_EQ(calls(), (Calls{"restoreDisplayMode", "showCursor 1", "minimise", "showCursor 0",
                              "switchDisplayMode 640 480 32", "maximise"}));
}

TEST_F(WindowTest, OtherMessages) {
    ASSERT_TRUE(init(false));
    platform::Message resized = message(MessageKind::resize);
    resized.width = 30;
    EXPECT_TRUE(gl().handleMessage(resized));
    EXPECT_EQ(gl().aspect, 30) << "a height of 0 counts as 1";

    EXPECT_TRUE(gl().handleMessage(message(MessageKind::close)));
    platform::Message next;
    ASSERT_TRUE(system.pollMessage(next));
    EXPECT_EQ(next.kind, MessageKind::quit);
}

} // namespace

} // namespace Zelkor
