// Which units of a scene a camera sees, in drawing order.
#pragma once

#include "math/Math.h"

#include <vector>

namespace Zelkor {

class Scene;
class Unit;
struct Camera;

// The view of a camera as a sphere around its frustum and a cone through the corners of its far end.
struct ViewVolume {
    Vec3 sphereCentre;
    float sphereRadius = 0;
    Vec3 forward;
    float coneHalfAngle = 0; // radians

    static ViewVolume of(const Camera& camera);
};

class RenderLists {
  public:
    // Fills both lists for one frame. Each unit that is seen, and each visible child of it, gets its frame
    // update and its viewDepth.
    void update(const Scene& scene, const Camera& camera, int frameNumber);

    std::vector<Unit*> main;    // nearest first
    std::vector<Unit*> special; // farthest first

  private:
    void insert(Unit& unit);
};

} // namespace Zelkor
