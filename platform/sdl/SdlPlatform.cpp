#include "sdl/SdlPlatform.h"

#include "sdl/AlSoundDevice.h"
#include "sdl/SdlControllers.h"
#include "sdl/SdlKeys.h"
#include "sdl/SdlWindow.h"
#include "sdl/UserFolders.h"

#include <SDL.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>

namespace platform {

namespace {

const auto processStart = std::chrono::steady_clock::now();

constexpr const char* offscreenDriver = "offscreen";

bool isOffscreen(const char* driver) {
    return driver && std::strcmp(driver, offscreenDriver) == 0;
}

// Drivers that open windows nobody sees.
bool isUnseen(const char* driver) {
    return isOffscreen(driver) || std::strcmp(driver, "dummy") == 0 || std::strcmp(driver, "evdev") == 0;
}

// Leaves video as it is when it already is of the wanted kind.
bool initVideo(bool headless) {
    if (SDL_InitSubSystem(SDL_INIT_EVENTS) != 0) return false;
    if (SDL_WasInit(SDL_INIT_VIDEO)) {
        if (isOffscreen(SDL_GetCurrentVideoDriver()) == headless) return true;
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
    }
    if (headless) SDL_SetHintWithPriority(SDL_HINT_VIDEODRIVER, offscreenDriver, SDL_HINT_OVERRIDE);
    const bool ready = SDL_InitSubSystem(SDL_INIT_VIDEO) == 0;
    SDL_ResetHint(SDL_HINT_VIDEODRIVER);
    return ready;
}

int bitsOf(const SDL_DisplayMode& mode) {
    return SDL_BYTESPERPIXEL(mode.format) * 8;
}

DisplayMode fromSdl(const SDL_DisplayMode& mode) {
    return {mode.w, mode.h, bitsOf(mode)};
}

Uint32 messageBoxFlags(MessageIcon icon) {
    switch (icon) {
    case MessageIcon::stop:
        return SDL_MESSAGEBOX_ERROR;
    case MessageIcon::exclamation:
        return SDL_MESSAGEBOX_WARNING;
    default:
        return SDL_MESSAGEBOX_INFORMATION;
    }
}

std::optional<Message> fromWindowEvent(const SDL_WindowEvent& event) {
    switch (event.event) {
    case SDL_WINDOWEVENT_FOCUS_GAINED:
        return Message{.kind = MessageKind::activateApp, .down = true};
    case SDL_WINDOWEVENT_FOCUS_LOST:
        return Message{.kind = MessageKind::activateApp, .down = false};
    case SDL_WINDOWEVENT_SIZE_CHANGED:
        return Message{.kind = MessageKind::resize, .width = event.data1, .height = event.data2};
    default:
        return {};
    }
}

std::optional<Message> fromMouseButton(const SDL_MouseButtonEvent& event) {
    const bool down = event.type == SDL_MOUSEBUTTONDOWN;
    switch (event.button) {
    case SDL_BUTTON_LEFT:
        return Message{.kind = MessageKind::mouseButton, .down = down, .code = 0};
    case SDL_BUTTON_RIGHT:
        return Message{.kind = MessageKind::mouseButton, .down = down, .code = 1};
    case SDL_BUTTON_MIDDLE:
        return Message{.kind = MessageKind::mouseButton, .down = down, .code = 2};
    default:
        return {};
    }
}

bool isFullscreenKey(const SDL_Keysym& key) {
    return key.scancode == SDL_SCANCODE_RETURN && (key.mod & KMOD_ALT);
}

std::optional<Message> fromEvent(const SDL_Event& event) {
    switch (event.type) {
    // Also what a terminal's interrupt becomes; the close button of the last window ends up here too.
    case SDL_QUIT:
        return Message{.kind = MessageKind::close};
    case SDL_WINDOWEVENT:
        return fromWindowEvent(event.window);
    case SDL_KEYDOWN:
    case SDL_KEYUP: {
        if (event.type == SDL_KEYDOWN && isFullscreenKey(event.key.keysym)) {
            if (event.key.repeat) return {};
            return Message{.kind = MessageKind::toggleFullscreen};
        }
        const int code = virtualKeyFromScancode(event.key.keysym.scancode);
        if (code == 0) return {};
        return Message{.kind = MessageKind::key, .down = event.type == SDL_KEYDOWN, .code = code};
    }
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
        return fromMouseButton(event.button);
    case SDL_MOUSEWHEEL: {
        const int delta = event.wheel.direction == SDL_MOUSEWHEEL_FLIPPED ? -event.wheel.y : event.wheel.y;
        if (delta == 0) return {};
        return Message{.kind = MessageKind::wheel, .delta = delta};
    }
    default:
        return {};
    }
}

} // namespace

struct SdlPlatform::State {
    SdlDesktop desktop;
    std::filesystem::path soundFile;
    bool videoReady = false;
    std::optional<int> quitCode;
    std::optional<SDL_DisplayMode> chosenMode; // what full-screen windows use instead of the desktop's
    bool wantsControllers = true;
    std::unique_ptr<SdlControllers> controllers;

    bool startVideo();
    // Null where there are none.
    SdlControllers* startControllers();
    std::vector<SDL_DisplayMode> sdlModes();
};

// Video, events and the driver's library stay up until the process ends: drivers and the desktop's libraries
// leave memory behind each time they are unloaded, and a new display mode would have to load them again.
bool SdlPlatform::State::startVideo() {
    if (videoReady) return true;
    if (!initVideo(desktop.headless)) return false;
    videoReady = true;
    // Losing the focus is a message; what to do about it is the program's decision.
    SDL_SetHint(SDL_HINT_VIDEO_MINIMIZE_ON_FOCUS_LOSS, "0");
    // Keys are keys here; an input method would swallow some of them.
    SDL_StopTextInput();
    // Without OpenGL this fails, and creating a window will fail in its turn.
    SDL_GL_LoadLibrary(nullptr);
    return true;
}

SdlControllers* SdlPlatform::State::startControllers() {
    if (wantsControllers && !controllers) controllers = std::make_unique<SdlControllers>();
    return controllers.get();
}

std::vector<SDL_DisplayMode> SdlPlatform::State::sdlModes() {
    std::vector<SDL_DisplayMode> modes;
    if (desktop.headless || !startVideo()) return modes;
    for (int index = 0; index < SDL_GetNumDisplayModes(0); ++index) {
        SDL_DisplayMode mode;
        if (SDL_GetDisplayMode(0, index, &mode) == 0) modes.push_back(mode);
    }
    return modes;
}

SdlPlatform::SdlPlatform(SdlOptions options) : state_(std::make_unique<State>()) {
    state_->desktop.headless = options.headless;
    state_->soundFile = std::move(options.soundFile);
    state_->wantsControllers = !options.headless || options.alwaysControllers;
}

SdlPlatform::~SdlPlatform() = default;

bool SdlPlatform::displayAvailable() {
    return initVideo(false) && !isUnseen(SDL_GetCurrentVideoDriver()) && SDL_GetNumVideoDisplays() > 0;
}

std::filesystem::path SdlPlatform::programFolder() {
    char* folder = SDL_GetBasePath();
    const std::filesystem::path found = folder ? folder : "";
    SDL_free(folder);
    return found;
}

bool SdlPlatform::registerWindowClass() {
    return state_->startVideo();
}

std::unique_ptr<Window> SdlPlatform::createWindow(const WindowOptions& options) {
    if (!state_->startVideo() || (options.fullscreen && state_->desktop.headless)) return nullptr;
    SDL_DisplayMode mode;
    if (state_->chosenMode)
        mode = *state_->chosenMode;
    else
        SDL_GetDesktopDisplayMode(0, &mode);
    auto window = std::make_unique<SdlWindow>(state_->desktop);
    if (!window->create(options, &mode)) return nullptr;
    // Nobody will ever give an unseen window the focus.
    if (state_->desktop.headless)
        state_->desktop.ownMessages.push_back({.kind = MessageKind::activateApp, .down = true});
    return window;
}

bool SdlPlatform::pollMessage(Message& message) {
    SDL_Event event;
    while (state_->videoReady && SDL_PollEvent(&event)) {
        // A window that is gone may still have events under way.
        if (event.type == SDL_WINDOWEVENT &&
            !(state_->desktop.window && state_->desktop.window->owns(event.window.windowID)))
            continue;
        if (const auto translated = fromEvent(event)) {
            if (translated->kind == MessageKind::activateApp && state_->controllers)
                state_->controllers->setInFront(translated->down);
            message = *translated;
            return true;
        }
    }
    if (!state_->desktop.ownMessages.empty()) {
        message = state_->desktop.ownMessages.front();
        state_->desktop.ownMessages.pop_front();
        return true;
    }
    if (!state_->quitCode) return false;
    message = {.kind = MessageKind::quit, .code = *state_->quitCode};
    state_->quitCode.reset();
    return true;
}

void SdlPlatform::postQuit(int exitCode) {
    state_->quitCode = exitCode;
}

void SdlPlatform::showCursor(bool visible) {
    if (state_->startVideo()) SDL_ShowCursor(visible ? SDL_ENABLE : SDL_DISABLE);
}

std::vector<DisplayMode> SdlPlatform::displayModes() {
    std::vector<DisplayMode> modes;
    for (const SDL_DisplayMode& mode : state_->sdlModes()) {
        // The same size at another refresh rate is the same mode to the program.
        if (std::find(modes.begin(), modes.end(), fromSdl(mode)) == modes.end())
            modes.push_back(fromSdl(mode));
    }
    return modes;
}

std::optional<DisplayMode> SdlPlatform::currentDisplayMode() {
    SDL_DisplayMode mode;
    if (state_->desktop.headless || !state_->startVideo() || SDL_GetDesktopDisplayMode(0, &mode) != 0)
        return {};
    return fromSdl(mode);
}

bool SdlPlatform::switchDisplayMode(const DisplayMode& wanted) {
    const auto modes = state_->sdlModes();
    const auto found = std::find_if(modes.begin(), modes.end(), [&wanted](const SDL_DisplayMode& mode) {
        return fromSdl(mode) == wanted;
    });
    if (found == modes.end()) return false;
    if (state_->desktop.window && !state_->desktop.window->applyMode(&*found)) return false;
    state_->chosenMode = *found;
    return true;
}

void SdlPlatform::restoreDisplayMode() {
    state_->chosenMode.reset();
    if (state_->desktop.window) state_->desktop.window->applyMode(nullptr);
}

void SdlPlatform::showMessage(const std::string& text, const std::string& caption, MessageIcon icon) {
    if (!state_->desktop.headless &&
        SDL_ShowSimpleMessageBox(messageBoxFlags(icon), caption.c_str(), text.c_str(), nullptr) == 0)
        return;
    std::fprintf(stderr, "%s: %s\n", caption.c_str(), text.c_str());
}

bool SdlPlatform::askYesNo(const std::string& text, const std::string& caption, MessageIcon icon) {
    constexpr int yes = 1, no = 0;
    if (!state_->desktop.headless) {
        const SDL_MessageBoxButtonData buttons[] = {
            {SDL_MESSAGEBOX_BUTTON_RETURNKEY_DEFAULT, yes, "Yes"},
            {SDL_MESSAGEBOX_BUTTON_ESCAPEKEY_DEFAULT, no, "No"},
        };
        const SDL_MessageBoxData box{
            messageBoxFlags(icon), nullptr, caption.c_str(), text.c_str(), 2, buttons, nullptr};
        int pressed = no;
        if (SDL_ShowMessageBox(&box, &pressed) == 0) return pressed == yes;
    }
    // Without anyone to answer, the program goes on.
    std::fprintf(stderr, "%s: %s [Yes]\n", caption.c_str(), text.c_str());
    return true;
}

std::optional<std::filesystem::path> SdlPlatform::documentsFolder() {
    return dataHome();
}

std::optional<std::filesystem::path> SdlPlatform::picturesFolder() {
    return picturesHome();
}

std::int64_t SdlPlatform::milliseconds() {
    const auto elapsed = std::chrono::steady_clock::now() - processStart;
    return std::chrono::duration_cast<std::chrono::milliseconds>(elapsed).count();
}

std::int64_t SdlPlatform::counter() {
    return static_cast<std::int64_t>(SDL_GetPerformanceCounter());
}

std::int64_t SdlPlatform::counterFrequency() {
    return static_cast<std::int64_t>(SDL_GetPerformanceFrequency());
}

int SdlPlatform::enumerateJoysticks() {
    SdlControllers* controllers = state_->startControllers();
    return controllers ? controllers->enumerate() : 0;
}

int SdlPlatform::addPadMappings(const std::filesystem::path& file) {
    SdlControllers* controllers = state_->startControllers();
    return controllers ? controllers->addMappings(file) : 0;
}

std::optional<std::string> SdlPlatform::startJoystick(int index) {
    return state_->controllers ? state_->controllers->productName(index) : std::nullopt;
}

bool SdlPlatform::readJoystick(int index, JoystickState& state) {
    return state_->controllers && state_->controllers->read(index, state);
}

std::optional<PadState> SdlPlatform::pad() {
    return state_->controllers ? state_->controllers->pad() : std::nullopt;
}

std::unique_ptr<SoundDevice> SdlPlatform::createSoundDevice(Window*) {
    if (!state_->soundFile.empty()) return AlSoundDevice::openFile(state_->soundFile);
    return state_->desktop.headless ? AlSoundDevice::openUnheard() : AlSoundDevice::openSpeakers();
}

} // namespace platform
