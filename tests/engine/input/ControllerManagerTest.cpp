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
    EXPECT_EQ(manager.firstPlayer().aim, manager.firstPlayer().move);
    press(40);
    updated();
    expectMove(1, 0);
    EXPECT_NEAR(manager.firstPlayer().previousMove.y, 0.7071f, 1e-4f);
    release(38);
    release(39);
    press(37);
    updated();
    expectMove(-0.70710678f, -0.70710678f);
}

TEST_F(Controllers, KeysSetTheirButtonsWithEdges) {
    press('Z');
    PlayerInput& player = updated();
    EXPECT_EQ(player.buttons, PlayerInput::jumpMask | PlayerInput::acceptMask);
    EXPECT_TRUE(player.pressed(PlayerInput::jumpMask));
    updated();
    EXPECT_TRUE(player.down(PlayerInput::jumpMask));
    EXPECT_FALSE(player.pressed(PlayerInput::jumpMask));
    release('Z');
    press('X');
    press(13);
    updated();
    EXPECT_TRUE(player.released(PlayerInput::jumpMask));
    EXPECT_EQ(player.buttons, PlayerInput::fireMask | PlayerInput::startMask | PlayerInput::acceptMask);
    manager.clearAll();
    press(27);
    EXPECT_EQ(updated().buttons, PlayerInput::backMask);
    manager.clearAll();
    press(8);
    EXPECT_EQ(updated().buttons, PlayerInput::backMask);
}

TEST_F(Controllers, RawEdgesLastAFrameAndSoDoesTheWheel) {
    press('A');
    manager.handleMessage({.kind = MessageKind::wheel, .delta = -1});
    manager.handleMessage({.kind = MessageKind::wheel, .delta = -2});
    EXPECT_TRUE(manager.handleMessage({.kind = MessageKind::mouseButton, .down = true, .code = 1}));
    manager.mouseX = 0.25f;
    manager.update();
    manager.update();
    EXPECT_TRUE(manager.isPressed('A'));
    EXPECT_EQ(manager.mouseButtons[wheelTowards], 1);
    EXPECT_EQ(manager.mouseButtons[wheelAway], 0);
    manager.endOfFrame();
    EXPECT_TRUE(manager.isDown('A'));
    EXPECT_FALSE(manager.isPressed('A'));
    EXPECT_EQ(manager.mouseButtons[wheelTowards], 0);
    EXPECT_EQ(manager.mouseButtonsPrevious[wheelTowards], 1);
    EXPECT_EQ(manager.mouseButtons[mouseRight], 1);
    EXPECT_FLOAT_EQ(manager.mouseDeltaX, 0.25f);
    manager.endOfFrame();
    EXPECT_EQ(manager.mouseDeltaX, 0);
    manager.handleMessage({.kind = MessageKind::wheel, .delta = 1});
    EXPECT_EQ(manager.mouseButtons[wheelAway], 1);
    manager.clearAll();
    EXPECT_FALSE(manager.isDown('A'));
    EXPECT_EQ(manager.mouseButtons[mouseRight], 0);
    EXPECT_EQ(manager.mouseButtonsPrevious[mouseRight], 0);
    EXPECT_FALSE(manager.handleMessage({.kind = MessageKind::resize, .width = 1, .height = 1}));
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
    fake.padState->leftX = 16384;
    updated();
    expectMove(1.5f, -0.5f);

    fake.padState = platform::PadState{.buttons = platform::padUp | platform::padA | platform::padB};
    release(39);
    EXPECT_EQ(updated().buttons, PlayerInput::jumpMask | PlayerInput::acceptMask | PlayerInput::backMask);
    expectMove(0, 1);
    fake.padState->buttons = platform::padX | platform::padStart | platform::padLeft | platform::padY;
    EXPECT_EQ(updated().buttons, PlayerInput::fireMask | PlayerInput::startMask | PlayerInput::acceptMask);
    expectMove(-1, 0);
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

TEST_F(Controllers, JoysticksThatCannotBeReadAreLeftOut) {
    fake.joysticks = {{.productName = "Controller (XBOX 360 For Windows)"},
                      {.productName = "Broken", .usable = false},
                      {.productName = "controller (xbox 360 for windows)"},
                      {.productName = "Fourth"},
                      {.productName = "Fifth"}};
    for (auto& joystick : fake.joysticks)
        joystick.state.buttons[0] = true;
    manager.startJoysticks();
    manager.update();
    EXPECT_FALSE(manager.isDown(256 + 32));
    EXPECT_FALSE(manager.isDown(256 + 64 + 32));
    EXPECT_TRUE(manager.isDown(256 + 128 + 32));
    EXPECT_TRUE(manager.isDown(256 + 192 + 32));
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
