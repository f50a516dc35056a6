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

TEST_F(Controllers, JoystickElementsHaveTheirPlaces) {
    fake.joysticks = {{.productName = "Stick"}, {.productName = "Other"}};
    manager.startJoysticks();
    auto& state = fake.joysticks[1].state;
    state.axes = {513, -513, 512, -512, 1000, 0, -1000, 600};
    state.hat = 31500;
    state.buttons[0] = state.buttons[31] = true;
    manager.bindings[bindingFire] = 256 + 64 + 63;
    EXPECT_EQ(updated().buttons, PlayerInput::fireMask);
    std::vector<int> down;
    for (int code = 256; code < 512; ++code)
        if (manager.isDown(code)) down.push_back(code - 256 - 64);
    EXPECT_EQ(down, (std::vector<int>{0, 3, 8, 13, 14, elementHatUp, elementHatLeft, 32, 63}));

    // Silent, it keeps its last values; answering again, every element is written anew.
    fake.joysticks[1].answering = false;
    EXPECT_EQ(updated().buttons, PlayerInput::fireMask);
    fake.joysticks[1].answering = true;
    state = {.axes = {}, .hat = 13500, .buttons = {}};
    EXPECT_EQ(updated().buttons, 0u);
    EXPECT_TRUE(manager.isDown(256 + 64 + elementHatRight) && manager.isDown(256 + 64 + elementHatDown));
    EXPECT_FALSE(manager.isDown(256 + 64 + elementHatUp) || manager.isDown(256 + 64 + 32));
    state.hat = 0xFFFFFFFF; // centred by its low word
    updated();
    for (int element = elementHatUp; element <= elementHatLeft; ++element)
        EXPECT_FALSE(manager.isDown(256 + 64 + element)) << element;
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
