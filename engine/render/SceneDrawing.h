// Drawing a scene as a camera sees it, by the renderer of the engine.
#pragma once

namespace Zelkor {

class Scene;
class Unit;
struct Camera;

// After setViewport or resetProjection. Leaves the camera's view current.
void renderScene(Scene& scene, Camera& camera);

// One unit with the view of the camera current. special: this is the pass over the special list.
void renderUnit(Unit& unit, const Scene& scene, const Camera& camera, bool special);

} // namespace Zelkor
