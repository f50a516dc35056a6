// Joysticks and pads that exist in SDL only: their buttons are pressed as a driver would, and what the game sees
// of it has gone through everything between.
#include "input/ControllerManager.h"
#include "sdl/SdlPlatform.h"
#include "support/TempData.h"

#include <gtest/gtest.h>

#include <SDL.h>

namespace {

using namespace Zelkor;

class Device {
  public:
    Device(const char* name, Uint16 type = SDL_JOYSTICK_TYPE_UNKNOWN) {
        SDL_VirtualJoystickDesc description{};
        description.version = SDL_VIRTUAL_JOYSTICK_DESC_VERSION;
        description.type = type;
        description.naxes = 8;
        description.nbuttons = 32;
        description.nhats = 1;
        description.vendor_id = 0x1234; // devices without one cannot be mapped
        description.product_id = 0x5678;
        description.name = name; // part of what it is known by
        const int index = SDL_JoystickAttachVirtualEx(&description);
        EXPECT_GE(index, 0) << SDL_GetError();
        joystick_ = SDL_JoystickOpen(index);
        id_ = SDL_JoystickInstanceID(joystick_);
    }
    ~Device() { unplug(); }
    Device(const Device&) = delete;

    void unplug() {
        for (int index = 0; joystick_ && index < SDL_NumJoysticks(); ++index)
            if (SDL_JoystickGetDeviceInstanceID(index) == id_) SDL_JoystickDetachVirtual(index);
        if (joystick_) SDL_JoystickClose(joystick_);
        joystick_ = nullptr;
    }
    void button(int which, bool down = true) { SDL_JoystickSetVirtualButton(joystick_, which, down); }
    void axis(int which, int value) {
        SDL_JoystickSetVirtualAxis(joystick_, which, static_cast<Sint16>(value));
    }
    void hat(Uint8 value) { SDL_JoystickSetVirtualHat(joystick_, 0, value); }
    std::string model() const {
        char text[33] = {};
        SDL_JoystickGetGUIDString(SDL_JoystickGetGUID(joystick_), text, sizeof text);
        return text;
    }

  private:
    SDL_Joystick* joystick_ = nullptr;
    SDL_JoystickID id_ = -1;
};

class VirtualDevices : public ::testing::Test {
  protected:
    VirtualDevices() {
        SDL_SetHint("SDL_JOYSTICK_DISABLE_UDEV", "1");
        platform::setCurrent(&sdl);
        sdl.registerWindowClass(); // which starts the events
        sdl.addPadMappings("");    // and this the devices
    }
    ~VirtualDevices() override { platform::setCurrent(nullptr); }

    // A frame of one substep. The codes of joysticks that are down.
    std::vector<int> frame() {
        manager.endOfFrame();
        platform::Message message;
        while (sdl.pollMessage(message))
            manager.handleMessage(message);
        manager.update();
        std::vector<int> down;
        for (int code = firstJoystickCode; code < rawButtonCount; ++code)
            if (manager.isDown(code)) down.push_back(code);
        return down;
    }
    using Codes = std::vector<int>;

    platform::SdlPlatform sdl{{.headless = true, .alwaysControllers = true}};
    ControllerManager manager;
    PlayerInput& player = manager.firstPlayer();
};

TEST_F(VirtualDevices, JoystickElementsHaveTheirCodes) {
    Device stick("Stick");
    manager.startJoysticks();
    for (int which = 0; which < 8; ++which)
        stick.axis(which, which % 2 == 0 ? 16810 : -16810);
    EXPECT_EQ(frame(), (Codes{256, 259, 260, 263, 264, 267, 268, 271}));
    for (int which = 0; which < 8; ++which)
        stick.axis(which, which % 2 == 0 ? 16800 : -16800); // 512 of 1000 is not beyond
    EXPECT_EQ(frame(), Codes{});
    const std::pair<Uint8, Codes> hats[] = {{SDL_HAT_RIGHTUP, {276, 277}},
                                            {SDL_HAT_RIGHTDOWN, {277, 278}},
                                            {SDL_HAT_LEFT, {279}},
                                            {SDL_HAT_LEFTUP, {276, 279}},
                                            {SDL_HAT_CENTERED, {}}};
    for (const auto& [hat, codes] : hats) {
        stick.hat(hat);
        EXPECT_EQ(frame(), codes) << int(hat);
    }
    manager.bindings[bindingFire] = 319;
    stick.button(31);
    EXPECT_EQ(frame(), Codes{319});
    EXPECT_TRUE(manager.isPressed(319) && player.pressed(PlayerInput::fireMask));
    frame();
    EXPECT_FALSE(manager.isPressed(319) || player.pressed(PlayerInput::fireMask));
}

TEST_F(VirtualDevices, TheFirstPadIsNoJoystick) {
    Device pad("Pad", SDL_JOYSTICK_TYPE_GAMECONTROLLER), second("Second", SDL_JOYSTICK_TYPE_GAMECONTROLLER);
    manager.startJoysticks();
    EXPECT_EQ(frame(), Codes{}); // also the triggers, which rest at their lower ends
    EXPECT_EQ(player.aim.y, 0);  // there is no dead zone to hide a stick that rests beside its centre
    pad.axis(SDL_CONTROLLER_AXIS_LEFTX, 7849);
    pad.axis(SDL_CONTROLLER_AXIS_LEFTY, -16384);
    pad.button(SDL_CONTROLLER_BUTTON_A);
    second.button(SDL_CONTROLLER_BUTTON_X);
    EXPECT_EQ(frame(), Codes{290});
    EXPECT_EQ(player.buttons, PlayerInput::jumpMask | PlayerInput::acceptMask);
    EXPECT_EQ(player.move.x, 0);
    EXPECT_FLOAT_EQ(player.move.y, 0.5f);
    pad.unplug();
    EXPECT_EQ(frame(), Codes{290}); // the second stays what it was
    EXPECT_EQ(player.buttons, 0u);
    Device again("Pad", SDL_JOYSTICK_TYPE_GAMECONTROLLER);
    again.button(SDL_CONTROLLER_BUTTON_DPAD_LEFT);
    EXPECT_EQ(frame(), Codes{290});
    EXPECT_EQ(player.move.x, -1);
}

TEST_F(VirtualDevices, ComeAndGoUnderTheirOwnNumbers) {
    Device a("A"), b("B");
    manager.startJoysticks();
    a.button(0);
    b.button(1);
    EXPECT_EQ(frame(), (Codes{288, 353}));
    a.unplug(); // with its button held
    EXPECT_EQ(frame(), (Codes{353}));
    Device c("C"), d("D"), e("E"), f("F");
    for (Device* device : {&c, &d, &e, &f})
        device->button(0);
    EXPECT_EQ(frame(), (Codes{288, 353, 416, 480})); // C and D are new, E inherits from A, F is one too many
    e.unplug();
    f.unplug();
    d.unplug();
    EXPECT_EQ(frame(), (Codes{353, 416}));
    Device backAgain("D");
    backAgain.button(2);
    EXPECT_EQ(frame(), (Codes{353, 416, 482}));
}

TEST_F(VirtualDevices, ThePlayersMappingsMakeAPad) {
    const TempData folder;
    Device stick("Odd Stick");
    const auto file = folder.write(
        "Zoë/db.txt", "# mine\nnonsense,,\n" + stick.model() + ",Odd Stick,x:b7,leftx:a5,platform:Linux,\n");
    EXPECT_EQ(sdl.addPadMappings(folder.folder()), 0);
    EXPECT_EQ(sdl.addPadMappings(file), 1);
    manager.startJoysticks();
    stick.button(7);
    stick.axis(5, 32767);
    EXPECT_EQ(frame(), Codes{});
    EXPECT_EQ(player.buttons, PlayerInput::fireMask);
    EXPECT_NEAR(player.move.x, 1, 1e-4f);
}

TEST_F(VirtualDevices, NothingIsHeldInTheBackground) {
    Device stick("Stick"), pad("Pad", SDL_JOYSTICK_TYPE_GAMECONTROLLER);
    const auto window = sdl.createWindow({.title = "t", .width = 64, .height = 64});
    manager.startJoysticks();
    stick.button(0);
    stick.button(1);
    pad.button(SDL_CONTROLLER_BUTTON_X);
    EXPECT_EQ(frame(), (Codes{288, 289}));
    for (const Uint8 change : {SDL_WINDOWEVENT_FOCUS_LOST, SDL_WINDOWEVENT_FOCUS_GAINED}) {
        SDL_Event event{};
        event.window = {SDL_WINDOWEVENT, 0, SDL_GetWindowID(SDL_GL_GetCurrentWindow()), change, 0, 0, 0, 0, 0};
        SDL_PushEvent(&event);
        const bool front = change == SDL_WINDOWEVENT_FOCUS_GAINED;
        EXPECT_EQ(frame(), front ? Codes{288} : Codes{});
        EXPECT_EQ(player.down(PlayerInput::fireMask), front);
        stick.button(1, false); // let go in the background
    }
}

} // namespace
