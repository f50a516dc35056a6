// The picture of a frame, from the scene to the window. Processed, the scene goes into an off-screen target,
// is blurred twice into small ones and put together again on the window; direct, it goes straight to the
// window with a lighter pass over it. A fade rubs the picture out in both.
#pragma once

namespace Zelkor {
class Renderer;
struct Material;
} // namespace Zelkor

class GameCamera;
class Settings;

class PostChain {
  public:
    struct Size {
        int width = 0, height = 0; // pixels
    };
    // Fractions of the picture, from its upper left.
    struct Area {
        float x = 0, y = 0, width = 1, height = 1;
    };

    // The size the scene is drawn at. superSample 0: the window's, 1: twice its height, 2: twice both.
    static Size renderSize(const Size& window, int superSample);
    // The side of a target that holds wanted pixels: as it is, or grown to a power of two, never beyond
    // limit.
    static int grownSide(int side, int wanted, int limit);
    // The part of the picture that shows the scene, at its lower edge. viewSize: percent.
    static Area viewArea(int viewSize);

    // At the start of each session: makes the targets, once, and looks the passes' materials up.
    void setUp();
    // One frame, up to the interface. Leaves the window bound with the camera's view current.
    void draw(GameCamera& camera, const Settings& settings);

  private:
    // A share of a target that is in use, from its lower left.
    struct Used {
        float u = 1, v = 1;
    };

    bool canProcess() const;
    Used fitFramebuffer(const Size& wanted);
    void drawScene(GameCamera& camera, const Area& area, const Used& used);
    void drawMenus(const Used& used);
    void drawPass(const char* name, Zelkor::Material* material, const Used& used);
    void erase(float fade, const Used& used);
    void drawDirect(GameCamera& camera, const Area& area);
    void drawProcessed(GameCamera& camera, const Area& area, int superSample);

    int framebuffer_ = 0, blurBuffer1_ = 0, blurBuffer2_ = 0; // render targets, 0: there is none
    Size framebufferSize_;
    Zelkor::Material *blur1_ = nullptr, *blur2_ = nullptr, *post_ = nullptr;
    Zelkor::Material *noPost_ = nullptr, *eraser_ = nullptr;
};
