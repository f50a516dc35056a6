// The system behind SDL2.
#pragma once

#include "Platform.h"

#include <memory>

namespace platform {

struct SdlOptions {
    // Windows without a screen: same context, same picture, no focus, no cursor, and no message box (texts go
    // to standard error, questions are answered Yes). No display modes either: any window size is as good as
    // another, and a full-screen window is refused. Sound is mixed and thrown away.
    bool headless = false;
    // Sound goes into this wave file instead, in the program's own time: a second of updates is a second there.
    std::filesystem::path soundFile = {};
    // Joysticks and the pad also without a screen. Otherwise such a run is the same on every machine, whatever
    // is plugged into it.
    bool alwaysControllers = false;
};

class SdlPlatform final : public Platform {
  public:
    explicit SdlPlatform(SdlOptions options = {});
    ~SdlPlatform() override;
    SdlPlatform(const SdlPlatform&) = delete;

    // Whether there is a screen that a window could be shown on. Opens none; before constructing a platform.
    static bool displayAvailable();
    // Where the running program lies; empty when the system cannot tell.
    static std::filesystem::path programFolder();

    bool registerWindowClass() override;
    std::unique_ptr<Window> createWindow(const WindowOptions& options) override;
    bool pollMessage(Message& message) override;
    void postQuit(int exitCode) override;
    void showCursor(bool visible) override;
    std::vector<DisplayMode> displayModes() override;
    std::optional<DisplayMode> currentDisplayMode() override;
    bool switchDisplayMode(const DisplayMode& mode) override;
    void restoreDisplayMode() override;
    void showMessage(const std::string& text, const std::string& caption, MessageIcon icon) override;
    bool askYesNo(const std::string& text, const std::string& caption, MessageIcon icon) override;
    std::optional<std::filesystem::path> documentsFolder() override;
    std::optional<std::filesystem::path> picturesFolder() override;
    std::int64_t milliseconds() override;
    std::int64_t counter() override;
    std::int64_t counterFrequency() override;
    int enumerateJoysticks() override;
    int addPadMappings(const std::filesystem::path& file) override;
    std::optional<std::string> startJoystick(int index) override;
    bool readJoystick(int index, JoystickState& state) override;
    std::optional<PadState> pad() override;
    // One at a time.
    std::unique_ptr<SoundDevice> createSoundDevice(Window* window) override;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace platform
