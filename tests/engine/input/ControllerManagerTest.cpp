#include "input/ControllerManager.h"

#include "fake/FakePlatform.h"

#include <gtest/gtest.h>

namespace {

using namespace Zelkor;
using platform::MessageKind;

class Controllers : public ::testing::Test {
  protected:
    void press(int code) { manager.handleMessage({.kind = MessageKind::key, .down = true, .code = code}); }
    void release(int code) { manager.handleMessage({.kind = MessageKind::key, .down = false, .code = code}); }
    PlayerInput& updated() {
        manager.update();
        return manager.firstPlayer();
    }
    void expectMove(float x, float y) {
        EXPECT_NEAR(manager.firstPlayer().move.x, x, 1e-5f);
        EXPECT_NEAR(manager.firstPlayer().move.y, y, 1e-5f);
    }

    platform::FakePlatform fake;
    ControllerManager manager;
};

TEST_F(Controllers, DirectionsAreOfLengthOne) {
    press(38);
    press(39);
    updated();
    expectMove(0.70710678f, 0.70710678f);
    press(40);
    updated();
    expectMove(1, 0);
}

TEST_F(Controllers, KeysSetTheirButtonsWithEdges) {
    press('Z');
    PlayerInput& player = updated();
    EXPECT_EQ(player.buttons, PlayerInput::jumpMask | PlayerInput::acceptMask);
    EXPECT_TRUE(player.pressed(PlayerInput::jumpMask));
    updated();
    EXPECT_FALSE(player.pressed(PlayerInput::jumpMask));
    release('Z');
    press('X');
    press(13);
    updated();
    EXPECT_TRUE(player.released(PlayerInput::jumpMask));
    EXPECT_EQ(player.buttons, PlayerInput::fireMask | PlayerInput::startMask | PlayerInput::acceptMask);
}

TEST_F(Controllers, RawEdgesLastAFrameAndSoDoesTheWheel) {
    press('A');
    manager.handleMessage({.kind = MessageKind::wheel, .delta = -1});
    manager.handleMessage({.kind = MessageKind::wheel, .delta = -2});
    manager.update();
    manager.update();
    EXPECT_TRUE(manager.isPressed('A'));
    EXPECT_EQ(manager.mouseButtons[wheelTowards], 1);
    manager.endOfFrame();
    EXPECT_FALSE(manager.isPressed('A'));
    EXPECT_EQ(manager.mouseButtons[wheelTowards], 0);
    manager.handleMessage({.kind = MessageKind::wheel, .delta = 1});
    EXPECT_EQ(manager.mouseButtons[wheelAway], 1);
}

TEST_F(Controllers, CodesOutsideTheRangeNeverReadAsDown) {
    manager.setButton(-1, true);
    manager.setButton(522, true);
    press(300); // no key: joysticks alone write there
    manager.handleMessage({.kind = MessageKind::mouseButton, .down = true, .code = 3});
    EXPECT_FALSE(manager.isDown(-1) || manager.isDown(300) || manager.isDown(512));
    EXPECT_EQ(manager.mouseButtons, (std::array<std::uint8_t, mouseByteCount>{}));
    manager.bindings[bindingFire] = 600;
    EXPECT_EQ(updated().buttons, 0u);
}

TEST_F(Controllers, PadAddsToTheKeys) {
    fake.padState = platform::PadState{};
    fake.padState->leftX = 7849;
    fake.padState->leftY = -16384;
    fake.padState->rightX = 1024;
    fake.padState->rightY = -32768;
    press(39);
    updated();
    expectMove(1, -0.5f);
    EXPECT_FLOAT_EQ(manager.firstPlayer().aim.x, 1 + 1 / 32.0f);
    EXPECT_FLOAT_EQ(manager.firstPlayer().aim.y, -1);

    fake.padState = platform::PadState{.buttons = platform::padUp | platform::padA | platform::padB};
    release(39);
    EXPECT_EQ(updated().buttons, PlayerInput::jumpMask | PlayerInput::acceptMask | PlayerInput::backMask);
    expectMove(0, 1);
    fake.padState->type = 2; // a wheel, say
    EXPECT_EQ(updated().buttons, 0u);
    expectMove(0, 0);
}

TEST_F(Controllers, ASilentJoystickKeepsItsLastValues) {
    fake.joysticks = {{.productName = "Stick"}};
    manager.startJoysticks();
    auto& stick = fake.joysticks[0];
    stick.state.buttons[0] = true;
    stick.state.hat = 13500;
    manager.bindings[bindingFire] = 288;
    stick.answering = true;
    EXPECT_EQ(updated().buttons, PlayerInput::fireMask);
    stick.answering = false;
    stick.state = {.axes = {}, .hat = 0xFFFFFFFF, .buttons = {}}; // centred by its low word
    EXPECT_EQ(updated().buttons, PlayerInput::fireMask);
    stick.answering = true;
    EXPECT_EQ(updated().buttons, 0u);
    EXPECT_FALSE(manager.isDown(256 + elementHatRight));
}

TEST_F(Controllers, BindingsHaveNames) {
    EXPECT_EQ(manager.bindingName(bindingUp), "Arrow_Up");
    EXPECT_EQ(manager.bindingName(bindingDown), "Arrow_Down");
    EXPECT_EQ(manager.bindingName(bindingJump), "Z");
    struct Case {
        std::uint16_t code;
        const char* name;
    };
    for (const Case& expected :
         {Case{48, "0"}, Case{65, "A"}, Case{37, "Arrow_Left"}, Case{39, "Arrow_Right"}, Case{13, "Return"},
          Case{16, "Shift"}, Case{17, "Ctrl"}, Case{32, "Space"}, Case{160, "Left_shift"},
          Case{161, "Right_shift"}, Case{162, "Left_ctrl"}, Case{163, "Right_trl"}, Case{112, "#112"},
          Case{255, "#255"}, Case{256, "Pad0_Btn0"}, Case{288, "Pad0_Btn32"}, Case{340, "Pad1_Btn20"}}) {
        manager.bindings[bindingFire] = expected.code;
        EXPECT_EQ(manager.bindingName(bindingFire), expected.name);
    }
}

} // namespace
