// A system that a test scripts and inspects. What is asked of it is recorded, what it answers is set
// beforehand; nothing reaches the real one.
#pragma once

#include "Platform.h"
#include "fake/FakeSound.h"

#include <deque>
#include <string>
#include <vector>

namespace platform {

struct RecordedMessageBox {
    std::string text, caption;
    MessageIcon icon = MessageIcon::none;
    bool question = false; // Yes and No rather than OK
};

class FakePlatform final : public Platform {
  public:
    // Becomes platform::current() for its lifetime.
    FakePlatform();
    ~FakePlatform() override;
    FakePlatform(const FakePlatform&) = delete;

    // --- Set by the test ---
    bool windowClassFails = false;
    int failingWindows = 0; // how many createWindow calls fail from now on
    WindowTeardown teardown;
    bool swapIntervalSupported = true;
    std::optional<ClientPoint> cursor;
    std::vector<DisplayMode> modes;
    std::optional<DisplayMode> desktopMode;
    bool modeSwitchesFail = false; // otherwise they fail for what modes does not list
    std::deque<bool> answers;      // to the next questions; Yes when it is empty
    std::optional<std::filesystem::path> documents, pictures;
    std::int64_t clock = 0; // milliseconds
    std::int64_t ticks = 0;
    std::int64_t ticksPerSecond = 1'000'000;
    std::int64_t ticksPerRead = 0; // by which each reading of the counter advances it
    struct Joystick {
        std::string productName = {};
        bool usable = true;    // startJoystick succeeds
        bool answering = true; // readJoystick succeeds
        JoystickState state = {};
    };
    std::vector<Joystick> joysticks;
    std::optional<PadState> padState;
    FakeSoundCard sound; // also what reached it
    std::deque<Message> messages;

    void pressKey(int code) { messages.push_back({.kind = MessageKind::key, .down = true, .code = code}); }
    void releaseKey(int code) { messages.push_back({.kind = MessageKind::key, .down = false, .code = code}); }

    // --- Read by the test ---
    // What was called, in order, with its arguments: "createWindow 1280 720 32 fullscreen", "swapBuffers",
    // "switchDisplayMode 640 480 32", "showCursor 0", "bringToFront", "destroy", ...
    std::vector<std::string> calls;
    std::vector<RecordedMessageBox> messageBoxes;

    // --- Platform ---
    bool registerWindowClass() override;
    // Without a context.
    std::unique_ptr<Window> createWindow(const WindowOptions& options) override;
    bool pollMessage(Message& message) override;
    void postQuit(int exitCode) override;
    void showCursor(bool visible) override;
    std::vector<DisplayMode> displayModes() override { return modes; }
    std::optional<DisplayMode> currentDisplayMode() override { return desktopMode; }
    bool switchDisplayMode(const DisplayMode& mode) override;
    void restoreDisplayMode() override;
    void showMessage(const std::string& text, const std::string& caption, MessageIcon icon) override;
    bool askYesNo(const std::string& text, const std::string& caption, MessageIcon icon) override;
    std::optional<std::filesystem::path> documentsFolder() override { return documents; }
    std::optional<std::filesystem::path> picturesFolder() override { return pictures; }
    std::int64_t milliseconds() override { return clock; }
    std::int64_t counter() override { return ticks += ticksPerRead; }
    std::int64_t counterFrequency() override { return ticksPerSecond; }
    int enumerateJoysticks() override;
    int addPadMappings(const std::filesystem::path&) override { return 0; }
    std::optional<std::string> startJoystick(int index) override;
    bool readJoystick(int index, JoystickState& state) override;
    std::optional<PadState> pad() override { return padState; }
    std::unique_ptr<SoundDevice> createSoundDevice(Window*) override { return sound.open(); }

  private:
    Platform* previous_ = nullptr;
    std::optional<int> quitCode_;
};

} // namespace platform
