#include "InputScript.h"

#include "VirtualKeys.h"
#include "input/ControllerManager.h"
#include "support/TempData.h"

#include <gtest/gtest.h>

namespace {

TEST(InputScript, ActionsReachTheRawButtonsInTheirFrames) {
    TempData data;
    const auto file = data.write("a.input", "# a comment\n0 press Left\n\n3 release Left\n3 press 288\n"
                                            "2 press MouseLeft\n4 mouse 0.25 0.75\n");
    std::string reason;
    auto actions = readInputScript(file, reason);
    ASSERT_TRUE(actions) << reason;
    InputPlayer player(std::move(*actions));
    Zelkor::ControllerManager controllers;

    player.apply(0, controllers);
    EXPECT_TRUE(controllers.isDown(platform::key::left));
    player.apply(1, controllers);
    EXPECT_EQ(controllers.mouseButtons[0], 0);
    player.apply(2, controllers);
    EXPECT_EQ(controllers.mouseButtons[0], 1) << "a line out of order still comes in its frame";
    player.apply(4, controllers);
    EXPECT_FALSE(controllers.isDown(platform::key::left));
    EXPECT_TRUE(controllers.isDown(288)) << "frame 3 is made up for when it was skipped";
    EXPECT_FLOAT_EQ(controllers.mouseX, 0.25f);
    EXPECT_FLOAT_EQ(controllers.mouseY, 0.75f);
}

TEST(InputScript, WrongLinesAreNamed) {
    TempData data;
    for (const char* line : {"press Left", "1 hold Left", "1 press Nowhere", "1 press", "-1 press Left",
                             "1 mouse 0.5", "1 press Left Right", "1 press 99999"}) {
        const auto file = data.write("bad.input", std::string("0 press Z\n") + line + "\n");
        std::string reason;
        EXPECT_FALSE(readInputScript(file, reason)) << line;
        EXPECT_NE(reason.find("bad.input:2:"), std::string::npos) << reason;
    }
    std::string reason;
    EXPECT_FALSE(readInputScript(data.folder() / "missing.input", reason));
    EXPECT_NE(reason.find("missing.input"), std::string::npos);
}

TEST(InputScript, ARecordingPlaysBackTheSame) {
    TempData data;
    const auto file = data.folder() / "recorded.input";
    {
        InputRecorder recorder(file);
        ASSERT_FALSE(recorder.failed());
        Zelkor::ControllerManager controllers;
        controllers.setButton('Z', true);
        recorder.record(0, controllers);
        recorder.record(1, controllers);
        controllers.setButton('Z', false);
        controllers.setButton(platform::mouseRightCode, true);
        controllers.setButton(300, true);
        controllers.mouseX = 0.5f;
        recorder.record(2, controllers);
    }
    std::string reason;
    const auto actions = readInputScript(file, reason);
    ASSERT_TRUE(actions) << reason;
    ASSERT_EQ(actions->size(), 5u) << "only changes are written";
    InputPlayer player(*actions);
    Zelkor::ControllerManager played;
    player.apply(0, played);
    EXPECT_TRUE(played.isDown('Z'));
    player.apply(2, played);
    EXPECT_FALSE(played.isDown('Z'));
    EXPECT_TRUE(played.isDown(300));
    EXPECT_EQ(played.mouseButtons[1], 1);
    EXPECT_FLOAT_EQ(played.mouseX, 0.5f);
}

} // namespace
