// The keys that change between window and full screen.
#pragma once

namespace Zelkor {
class ControllerManager;
class Renderer;
} // namespace Zelkor
class Settings;

class FullscreenKeys {
  public:
    // Full screen takes the desktop's own size, so that its mode stays; back, the window has the size it had. The
    // settings follow.
    void toggle(Zelkor::Renderer& renderer, Settings& settings, Zelkor::ControllerManager& controllers);

  private:
    int windowWidth_ = 1280, windowHeight_ = 720; // pixels
};
