#include "core/EngineManagers.h"
#include "core/Log.h"
#include "core/TimerManager.h"
#include "fake/FakePlatform.h"
#include "input/ControllerManager.h"
#include "render/GlRenderer.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace Zelkor {

namespace {

using platform::MessageIcon;
using platform::MessageKind;

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
    bool called(const std::string& call) const {
        return std::find(system.calls.begin(), system.calls.end(), call) != system.calls.end();
    }
    void expectBox(std::size_t index, const std::string& text, const std::string& caption, MessageIcon icon,
                   bool question) {
        ASSERT_LT(index, system.messageBoxes.size());
        const platform::RecordedMessageBox& box = system.messageBoxes[index];
        EXPECT_EQ(box.text, text);
        EXPECT_EQ(box.caption, caption);
        EXPECT_EQ(box.icon, icon);
        EXPECT_EQ(box.question, question);
    }
    void expectRefusedModeQuestion() {
        expectBox(
            0,
            "The Requested Fullscreen Mode Is Not Supported By\nYour Video Card. Use Windowed Mode Instead?",
            "Rustpike", MessageIcon::exclamation, true);
    }
    platform::Message message(MessageKind kind, bool down = false) { return {.kind = kind, .down = down}; }

    platform::FakePlatform system;
    std::unique_ptr<EngineManagers> managers;
};

TEST_F(WindowTest, InitLogsAndOpensAWindow) {
    std::vector<std::string> log;
    Log::instance().captureInto(&log);
    EXPECT_TRUE(init(false));
    Log::instance().captureInto(nullptr);
    EXPECT_EQ(log, (std::vector<std::string>{"init renderer: ", "createglwindow: ", "init renderer done: "}));
    EXPECT_EQ(system.calls,
              (std::vector<std::string>{"registerWindowClass", "createWindow 640 480 32 windowed",
                                        "bringToFront", "setSwapInterval 1"}));
    EXPECT_TRUE(system.messageBoxes.empty()) << "no entry points, no questions";
    EXPECT_FALSE(gl().shadersSupported);
    EXPECT_TRUE(gl().framebuffersSupported);
    EXPECT_EQ(gl().clearColour, (Vec4{1, 1, 1, 0}));
    gl().present();
    EXPECT_TRUE(called("swapBuffers"));
}

TEST_F(WindowTest, InitFailures) {
    system.windowClassFails = true;
    EXPECT_FALSE(init(false));
    expectBox(0, "Failed To Register The Window Class.", "ERROR", MessageIcon::exclamation, false);
    system.windowClassFails = false;
    system.failingWindows = 1;
    EXPECT_FALSE(init(false));
    EXPECT_EQ(gl().window(), nullptr);
    gl().present(); // harmless without a window
}

TEST_F(WindowTest, RefusedFullscreenAsksThenCloses) {
    system.answers = {false};
    EXPECT_FALSE(init(true, 123, 45));
    ASSERT_EQ(system.messageBoxes.size(), 2u);
    expectRefusedModeQuestion();
    expectBox(1, "Program Will Now Close.", "ERROR", MessageIcon::stop, false);

    system.messageBoxes.clear();
    system.answers = {true};
    EXPECT_TRUE(init(true, 123, 45));
    EXPECT_FALSE(gl().fullscreen);
    EXPECT_TRUE(called("createWindow 123 45 32 windowed"));
}

TEST_F(WindowTest, MissingFeaturesAreQuestions) {
    found = {true, false, true};
    EXPECT_TRUE(init(false));
    expectBox(0, "Shaders not supported. Continue anyway? (Game will look weird)", "ERROR",
              MessageIcon::exclamation, true);
    EXPECT_FALSE(gl().shadersSupported || gl().framebuffersSupported);
    EXPECT_EQ(gl().loadShader("any"), -1);
    EXPECT_EQ(gl().createRenderTarget("any", 8, 8), 0);

    managers->renderer = std::make_unique<GlRenderer>([] { return found; });
    found = {true, true, false};
    system.answers = {false};
    EXPECT_FALSE(init(false));
    expectBox(1, "FrameBuffer objects not supported.  Continue anyway?", "ERROR", MessageIcon::exclamation,
              true);
    EXPECT_TRUE(gl().shadersSupported);
}

TEST_F(WindowTest, WindowedToWindowedOnlyResizes) {
    ASSERT_TRUE(init(false));
    system.calls.clear();
    gl().setDisplayMode(false, 320, 200);
    EXPECT_EQ(system.calls, std::vector<std::string>{"resize 320 200"});
}

TEST_F(WindowTest, SwitchingRecreatesTheWindowAndReportsTeardown) {
    ASSERT_TRUE(init(false));
    system.calls.clear();
    system.teardown = {false, false, false, false};
    gl().setDisplayMode(true, 640, 480);
    EXPECT_EQ(system.calls, (std::vector<std::string>{
                                "showCursor 0", "destroy", "switchDisplayMode 640 480 32",
                                "createWindow 640 480 32 fullscreen", "setSwapInterval 1", "bringToFront"}));
    const char* texts[] = {"Release Of DC And RC Failed.", "Release Rendering Context Failed.",
                           "Release Device Context Failed.", "Could Not Release hWnd."};
    ASSERT_EQ(system.messageBoxes.size(), 4u);
    for (std::size_t i = 0; i < 4; ++i)
        expectBox(i, texts[i], "SHUTDOWN ERROR", MessageIcon::information, false);
    EXPECT_TRUE(gl().fullscreen && gl().active && gl().hasFocus());

    system.teardown = {};
    system.calls.clear();
    gl().setDisplayMode(false, 320, 200);
    EXPECT_EQ(system.calls, (std::vector<std::string>{"showCursor 1", "restoreDisplayMode", "destroy",
                                                      "createWindow 320 200 32 windowed", "setSwapInterval 1",
                                                      "bringToFront"}));
    EXPECT_EQ(gl().windowWidth, 320);
    EXPECT_EQ(system.messageBoxes.size(), 4u);

    system.messageBoxes.clear();
    system.answers = {false};
    gl().setDisplayMode(true, 1, 1);
    expectRefusedModeQuestion();
    EXPECT_EQ(gl().window(), nullptr);
}

TEST_F(WindowTest, ActivationPausesOnlyFullScreen) {
    ASSERT_TRUE(init(false));
    EXPECT_TRUE(gl().handleMessage(message(MessageKind::activateApp, false)));
    EXPECT_TRUE(gl().active);
    EXPECT_FALSE(gl().isInactive() || gl().hasFocus());
    gl().setDisplayMode(true, 640, 480);
    system.calls.clear();
    gl().handleMessage(message(MessageKind::activateApp, false));
    EXPECT_TRUE(gl().isInactive());
    EXPECT_FALSE(gl().hasFocus());
    gl().resize(10, 10);
    gl().handleMessage(message(MessageKind::activateApp, true));
    EXPECT_TRUE(gl().active && gl().hasFocus());
    EXPECT_EQ(gl().windowWidth, 640);
    EXPECT_EQ(system.calls,
              (std::vector<std::string>{"restoreDisplayMode", "showCursor 1", "minimise", "showCursor 0",
                                        "switchDisplayMode 640 480 32", "maximise"}));
}

TEST_F(WindowTest, OtherMessages) {
    ASSERT_TRUE(init(false));
    platform::Message resized = message(MessageKind::resize);
    resized.width = 30;
    EXPECT_TRUE(gl().handleMessage(resized));
    EXPECT_EQ(gl().windowHeight, 1) << "a height of 0 counts as 1";
    EXPECT_EQ(gl().aspect, 30);

    platform::Message pressed = message(MessageKind::key, true);
    pressed.code = 65;
    EXPECT_TRUE(gl().handleMessage(pressed));
    EXPECT_TRUE(managers->controllerManager->isDown(65));
    EXPECT_FALSE(gl().handleMessage(message(MessageKind::quit)));

    EXPECT_TRUE(gl().handleMessage(message(MessageKind::close)));
    platform::Message next;
    ASSERT_TRUE(system.pollMessage(next));
    EXPECT_EQ(next.kind, MessageKind::quit);
}

} // namespace

} // namespace Zelkor
