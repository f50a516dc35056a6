// Window, paper, sun and camera: the surroundings in which exhibits are drawn.
#pragma once

#include "resources/Scene.h"

#include <memory>
#include <string>

namespace Zelkor {
struct EngineManagers;
class GlRenderer;
} // namespace Zelkor

namespace viewer {

class Studio {
  public:
    // platform::current() must be set. False, with a word on standard error, when there is no window.
    bool open(const std::string& dataFolder, int width, int height);
    Studio();
    ~Studio();

    // zoom 1: the view of the game, in which 720 lines show about 96 units at the plane of play.
    void aim(const Zelkor::Vec3& at, float zoom);
    void draw();
    // One of the redraws that the flicker chooses from.
    void redraw(int which);
    // Fixed-function drawing: flat colours.
    void drawFlat();

    Zelkor::GlRenderer& renderer();

    Zelkor::Scene scene;

  private:
    std::unique_ptr<Zelkor::EngineManagers> managers_;
    Zelkor::Camera camera_;
};

} // namespace viewer
