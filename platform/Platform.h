// The one seam to the operating system: what the program asks of any desktop, as small abstract classes. The
// program talks to platform::current(); a back end for each system stands behind it, and a scripted one in
// tests. Everything is called from the main thread. Nothing throws: failures are return values.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

// --- Messages ----------------------------------------------------------------------------------------------

enum class MessageKind {
    activateApp, // down: whether the application has come to the front
    close,       // the player asked to close the window; nothing has been closed yet
    quit,        // postQuit was called and every earlier message is through; code: the exit code
    key,         // code: virtual key, down: pressed or released; a held key repeats its press
    mouseButton, // code: 0 left, 1 right, 2 middle; down: pressed or released
    wheel,       // delta: below 0 when turned towards the player
    resize,      // width, height: the new client size; also after a resize the program asked for
    toggleFullscreen, // the system's keys for it were pressed; they are no key messages
};

struct Message {
    MessageKind kind = MessageKind::close;
    bool down = false;
    int code = 0;
    int delta = 0;
    int width = 0, height = 0; // pixels
};

// --- Window ------------------------------------------------------------------------------------------------

struct WindowOptions {
    std::string title = {}; // UTF-8
    int width = 0;          // client size, pixels
    int height = 0;
    int bits = 32; // colour bits of a pixel; the depth buffer has at least 16
    bool fullscreen = false;
};

struct ClientPoint {
    int x = 0, y = 0; // pixels from the top-left corner of the client area, y downwards
};

struct ClientSize {
    int width = 0, height = 0; // pixels
};

// What went wrong while a window was taken down. Each is worth a word to the player, none stops the program.
struct WindowTeardown {
    bool contextReleased = true; // the context could be made not current
    bool contextDeleted = true;
    bool deviceReleased = true;
    bool windowDestroyed = true;
};

// A visible window with a double-buffered OpenGL compatibility context that is current on the main thread.
// While one exists, neither screen saver nor monitor power-down starts.
class Window {
  public:
    virtual ~Window() = default; // destroys what destroy() has not

    // Context first, then window. Afterwards every other operation does nothing.
    virtual WindowTeardown destroy() = 0;
    // A new client size at the same place. A resize message follows.
    virtual void resize(int width, int height) = 0;
    virtual ClientSize clientSize() const = 0;
    virtual void swapBuffers() = 0;
    // 1 waits for the vertical retrace at each swap, 0 does not. False: the driver decides.
    virtual bool setSwapInterval(int interval) = 0;
    // Above the other windows and with the keyboard focus, as far as the desktop allows it.
    virtual void bringToFront() = 0;
    virtual void minimise() = 0;
    virtual void maximise() = 0;
    virtual void restore() = 0;
    // The mouse cursor, also outside the client area (then below 0 or above the size). None when the system
    // cannot tell.
    virtual std::optional<ClientPoint> cursorPosition() const = 0;
    // Address of a function of the current context, null when unknown.
    virtual void* glFunction(const char* name) const = 0;
};

// --- Display, message boxes
// ----------------------------------------------------------------------------------

struct DisplayMode {
    int width = 0, height = 0; // pixels
    int bits = 32;             // colour bits of a pixel
    bool operator==(const DisplayMode&) const = default;
};

enum class MessageIcon { none, information, exclamation, question, stop };

// --- Game controllers
// ----------------------------------------------------------------------------------------

inline constexpr int maxJoysticks = 4;

// In the order of the elements of a standard joystick report.
enum JoystickAxis {
    axisX,
    axisY,
    axisZ,
    axisRotationX,
    axisRotationY,
    axisRotationZ,
    axisSlider0,
    axisSlider1
};

struct JoystickState {
    static constexpr std::uint32_t hatCentred = 0xFFFF;

    std::array<int, 8> axes{};      // -1000..1000, by JoystickAxis
    std::uint32_t hat = hatCentred; // hundredths of a degree, clockwise from up; low word 0xFFFF: centred
    std::array<bool, 32> buttons{};
};

enum PadButton : std::uint16_t {
    padUp = 0x0001,
    padDown = 0x0002,
    padLeft = 0x0004,
    padRight = 0x0008,
    padStart = 0x0010,
    padBack = 0x0020,
    padLeftThumb = 0x0040,
    padRightThumb = 0x0080,
    padLeftShoulder = 0x0100,
    padRightShoulder = 0x0200,
    padA = 0x1000,
    padB = 0x2000,
    padX = 0x4000,
    padY = 0x8000,
};

struct PadState {
    static constexpr int gamepad = 1;

    int type = gamepad;        // what the device says it is; only a gamepad is read as one
    std::uint16_t buttons = 0; // PadButton bits
    std::int16_t leftX = 0, leftY = 0, rightX = 0, rightY = 0; // right and up positive
};

// --- Sound
// -----------------------------------------------------------------------------------------------------

// Interleaved PCM: 8 bits unsigned or 16 bits signed little-endian.
struct SoundFormat {
    int channels = 2;
    int samplesPerSecond = 44100;
    int bitsPerSample = 16;
    int blockAlign() const { return channels * bitsPerSample / 8; } // bytes of one sample of all channels
};

// A part of a buffer that may be written: two pieces when it wraps around the end.
struct LockedSound {
    void* first = nullptr;
    std::size_t firstBytes = 0;
    void* second = nullptr;
    std::size_t secondBytes = 0;
};

// One sound in the memory of the device, mixed with the others while it plays. Positions are bytes from its
// start, multiples of the block. Silent until written.
class SoundBuffer {
  public:
    static constexpr int minVolume = -10000; // silence
    static constexpr int maxVolume = 0;      // as recorded

    virtual ~SoundBuffer() = default; // stops

    // From the current position; once to the end (which puts the position back to 0), or round and round. A
    // buffer that already plays goes on.
    virtual bool play(bool loop) = 0;
    // Keeps the position.
    virtual bool stop() = 0;
    virtual bool playing() const = 0;
    // Also while it plays.
    virtual bool setPosition(std::size_t bytes) = 0;
    // The play cursor: the byte that is heard now.
    virtual std::size_t position() const = 0;
    // Hundredths of a decibel, minVolume..maxVolume.
    virtual bool setVolume(int hundredthsOfDecibel) = 0;
    virtual std::size_t size() const = 0;
    // What is written between lock and unlock is heard from then on, also in a playing buffer ahead of its
    // cursor. One lock at a time; bytes at most size().
    virtual bool lock(std::size_t offset, std::size_t bytes, LockedSound& part) = 0;
    virtual bool unlock(const LockedSound& part) = 0;
};

class SoundDevice {
  public:
    virtual ~SoundDevice() = default; // after every buffer of it

    // The format that everything is mixed to. False: the device keeps its own.
    virtual bool setMixFormat(const SoundFormat& format) = 0;
    // Null on failure.
    virtual std::unique_ptr<SoundBuffer> createBuffer(const SoundFormat& format, std::size_t bytes) = 0;
    // Once a step of the program, with the seconds that it stands for: what plays in a loop takes up what was
    // written, and a device that was lost is looked for. Steps may fail to come for a while; what plays in a
    // loop then falls silent sooner or later and goes on where it was.
    virtual void update(float seconds) = 0;
    // False: everything plays on unheard. True at first.
    virtual void setAudible(bool audible) = 0;
};

// --- The system
// ----------------------------------------------------------------------------------------------

class Platform {
  public:
    virtual ~Platform() = default;

    // Makes windows possible; before the first createWindow. Again later: does nothing, true.
    virtual bool registerWindowClass() = 0;
    // Null when there is no such window or context; whatever was made of it is undone. One at a time, and
    // gone before the platform is.
    virtual std::unique_ptr<Window> createWindow(const WindowOptions& options) = 0;

    // Takes the next message; false when none waits.
    virtual bool pollMessage(Message& message) = 0;
    // A quit message follows when all others have been taken.
    virtual void postQuit(int exitCode) = 0;
    // Over the window. May be called before there is one.
    virtual void showCursor(bool visible) = 0;

    // Everything the display offers, in its order.
    virtual std::vector<DisplayMode> displayModes() = 0;
    // That of the desktop; none when unknown.
    virtual std::optional<DisplayMode> currentDisplayMode() = 0;
    // For full-screen windows, present or made next. False: the display has no such mode, nothing changed.
    virtual bool switchDisplayMode(const DisplayMode& mode) = 0;
    // Back to the desktop's own mode.
    virtual void restoreDisplayMode() = 0;

    // Modal; texts in UTF-8.
    virtual void showMessage(const std::string& text, const std::string& caption, MessageIcon icon) = 0;
    // True for Yes.
    virtual bool askYesNo(const std::string& text, const std::string& caption, MessageIcon icon) = 0;

    // Where the player's own files belong. It need not exist yet. None when the system has no such place.
    virtual std::optional<std::filesystem::path> documentsFolder() = 0;
    // Where pictures of the player's belong. As above.
    virtual std::optional<std::filesystem::path> picturesFolder() = 0;

    // Wall time since the process started.
    virtual std::int64_t milliseconds() = 0;
    // A clock as fine as there is, and its ticks in a second.
    virtual std::int64_t counter() = 0;
    virtual std::int64_t counterFrequency() = 0;

    // Takes hold of the joysticks that are attached now, at most maxJoysticks, without what pad() reads. Returns
    // how many have a number, from 0 on. Called again, it takes in what has been plugged in since: nothing that
    // is held changes its number, one that has gone keeps it for its return and is meanwhile at rest.
    virtual int enumerateJoysticks() = 0;
    // What each control of which device is to the pad: a text file of the mapping database, a line a device.
    // Before enumerateJoysticks. Returns how many lines apply here; 0 without such a file.
    virtual int addPadMappings(const std::filesystem::path& file) = 0;
    // Prepares a joystick for reading: its axes report -1000..1000 from now on. Gives its product name, or
    // none when it cannot be used.
    virtual std::optional<std::string> startJoystick(int index) = 0;
    // False when it does not answer; state is then untouched.
    virtual bool readJoystick(int index, JoystickState& state) = 0;
    // The first pad as it is now, whenever it was plugged in; none without one. While the program is not in
    // front, everything on it and on the joysticks is at rest.
    virtual std::optional<PadState> pad() = 0;

    // Null: there is no device, and the program stays silent. window: the one whose focus the sound follows,
    // may be null.
    virtual std::unique_ptr<SoundDevice> createSoundDevice(Window* window) = 0;
};

// The platform the whole program runs on; null until set. Not owned.
Platform* current();
void setCurrent(Platform* platform);

} // namespace platform
