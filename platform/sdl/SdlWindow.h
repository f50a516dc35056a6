// An SDL window and its context.
#pragma once

#include "Platform.h"

#include <SDL.h>

#include <deque>

namespace platform {

class SdlWindow;

// What the platform and its window share.
struct SdlDesktop {
    bool headless = false;
    SdlWindow* window = nullptr;     // the one there is; it takes itself out when it is deleted
    std::deque<Message> ownMessages; // those that the system does not send by itself
};

class SdlWindow final : public Window {
  public:
    explicit SdlWindow(SdlDesktop& desktop) : desktop_(desktop) {}
    ~SdlWindow() override;

    // False when there is no window or no context; both are then gone.
    bool create(const WindowOptions& options, const SDL_DisplayMode* mode);
    bool owns(Uint32 windowId) const { return window_ && SDL_GetWindowID(window_) == windowId; }
    // Full-screen windows only; null: an ordinary window of the desktop.
    bool applyMode(const SDL_DisplayMode* mode);

    WindowTeardown destroy() override;
    void resize(int width, int height) override;
    ClientSize clientSize() const override;
    void swapBuffers() override;
    bool setSwapInterval(int interval) override;
    void bringToFront() override;
    void minimise() override;
    void maximise() override;
    void restore() override;
    std::optional<ClientPoint> cursorPosition() const override;
    void* glFunction(const char* name) const override;

  private:
    void resizeOffscreen(int width, int height);

    SdlDesktop& desktop_;
    WindowOptions options_;
    SDL_Window* window_ = nullptr;
    SDL_GLContext context_ = nullptr;
};

} // namespace platform
