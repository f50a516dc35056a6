#include "sdl/SdlWindow.h"

namespace platform {

namespace {

void setContextAttributes(int bits) {
    const int channelBits = bits >= 24 ? 8 : 5;
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_COMPATIBILITY);
    SDL_GL_SetAttribute(SDL_GL_RED_SIZE, channelBits);
    SDL_GL_SetAttribute(SDL_GL_GREEN_SIZE, channelBits);
    SDL_GL_SetAttribute(SDL_GL_BLUE_SIZE, channelBits);
    SDL_GL_SetAttribute(SDL_GL_ALPHA_SIZE, 1);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 16);
    SDL_GL_SetAttribute(SDL_GL_STENCIL_SIZE, 0);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
}

SDL_Window* openWindow(const WindowOptions& options) {
    Uint32 flags = SDL_WINDOW_OPENGL;
    // A window that is to fill the screen has no frame while it is restored to the desktop.
    flags |= options.fullscreen ? SDL_WINDOW_BORDERLESS : SDL_WINDOW_RESIZABLE;
    return SDL_CreateWindow(options.title.c_str(), SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED,
                            options.width, options.height, flags);
}

} // namespace

SdlWindow::~SdlWindow() {
    destroy();
    if (desktop_.window == this) desktop_.window = nullptr;
}

bool SdlWindow::create(const WindowOptions& options, const SDL_DisplayMode* mode) {
    options_ = options;
    setContextAttributes(options.bits);
    window_ = openWindow(options);
    if (!window_) return false;
    if (options.fullscreen) applyMode(mode);
    context_ = SDL_GL_CreateContext(window_);
    if (!context_ || SDL_GL_MakeCurrent(window_, context_) != 0) {
        destroy();
        return false;
    }
    SDL_DisableScreenSaver();
    desktop_.window = this;
    return true;
}

bool SdlWindow::applyMode(const SDL_DisplayMode* mode) {
    if (!window_ || !options_.fullscreen) return true;
    if (!mode) return SDL_SetWindowFullscreen(window_, 0) == 0;
    SDL_RestoreWindow(window_);
    SDL_DisplayMode desktop;
    if (SDL_GetDesktopDisplayMode(0, &desktop) == 0 && desktop.w == mode->w && desktop.h == mode->h)
        return SDL_SetWindowFullscreen(window_, SDL_WINDOW_FULLSCREEN_DESKTOP) == 0; // the display's mode stays
    return SDL_SetWindowDisplayMode(window_, mode) == 0 &&
           SDL_SetWindowFullscreen(window_, SDL_WINDOW_FULLSCREEN) == 0;
}

WindowTeardown SdlWindow::destroy() {
    WindowTeardown result;
    if (context_) {
        result.contextReleased = SDL_GL_MakeCurrent(window_, nullptr) == 0;
        SDL_GL_DeleteContext(context_);
        context_ = nullptr;
    }
    if (window_) {
        SDL_DestroyWindow(window_);
        window_ = nullptr;
        SDL_EnableScreenSaver();
    }
    return result;
}

void SdlWindow::resize(int width, int height) {
    if (!window_) return;
    if (desktop_.headless)
        resizeOffscreen(width, height);
    else
        SDL_SetWindowSize(window_, width, height);
}

// An off-screen window keeps its first size for ever: another takes over its context.
void SdlWindow::resizeOffscreen(int width, int height) {
    const ClientSize before = clientSize();
    if (before.width == width && before.height == height) return;
    WindowOptions options = options_;
    options.width = width;
    options.height = height;
    SDL_Window* larger = openWindow(options);
    if (!larger || SDL_GL_MakeCurrent(larger, context_) != 0) {
        if (larger) SDL_DestroyWindow(larger);
        return;
    }
    SDL_DestroyWindow(window_);
    window_ = larger;
    options_ = options;
    desktop_.ownMessages.push_back({.kind = MessageKind::resize, .width = width, .height = height});
}

ClientSize SdlWindow::clientSize() const {
    ClientSize size;
    if (window_) SDL_GL_GetDrawableSize(window_, &size.width, &size.height);
    return size;
}

void SdlWindow::swapBuffers() {
    if (window_) SDL_GL_SwapWindow(window_);
}

bool SdlWindow::setSwapInterval(int interval) {
    return window_ && SDL_GL_SetSwapInterval(interval) == 0;
}

void SdlWindow::bringToFront() {
    if (!window_) return;
    SDL_RaiseWindow(window_);
    // Raising is not enough where no window manager hands out the focus.
    SDL_SetWindowInputFocus(window_);
}

void SdlWindow::minimise() {
    if (window_) SDL_MinimizeWindow(window_);
}

void SdlWindow::maximise() {
    if (!window_) return;
    const Uint32 flags = SDL_GetWindowFlags(window_);
    if (flags & SDL_WINDOW_MINIMIZED) SDL_RestoreWindow(window_);
    if (!(flags & SDL_WINDOW_FULLSCREEN)) SDL_MaximizeWindow(window_);
}

void SdlWindow::restore() {
    if (window_) SDL_RestoreWindow(window_);
}

std::optional<ClientPoint> SdlWindow::cursorPosition() const {
    if (!window_ || desktop_.headless) return {};
    int left = 0, top = 0;
    ClientPoint cursor;
    SDL_GetWindowPosition(window_, &left, &top);
    if (SDL_GetMouseFocus() == window_) {
        // From the window's own messages: a pointer that another program moves, such as a remote desktop, sends no
        // others.
        SDL_GetMouseState(&cursor.x, &cursor.y);
        return cursor;
    }
    // Global, because inside a window SDL stops at its edge.
    SDL_GetGlobalMouseState(&cursor.x, &cursor.y);
    return ClientPoint{cursor.x - left, cursor.y - top};
}

void* SdlWindow::glFunction(const char* name) const {
    return context_ ? SDL_GL_GetProcAddress(name) : nullptr;
}

} // namespace platform
