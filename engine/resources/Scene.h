// What a camera looks at: units in drawing order, lights and fog.
#pragma once

#include "resources/Unit.h"

#include <list>
#include <memory>
#include <string>
#include <vector>

namespace Zelkor {

struct Light {
    enum Type { directional = 0, point = 1, unplaced = 2, spot = 3, viewHighlight = 4, pointHighlight = 5 };
    int type = directional;
    float red = 1, green = 1, blue = 1;
    Vec3 position;
    Vec3 direction{0, 0, -1};
    float constantAttenuation = 1, linearAttenuation = 0, quadraticAttenuation = 0;
    float spotCutoff = 45; // degrees
    bool castsShadows = false;
    int shadowIndex = -1;
};

enum class FogMode { none = 0, linear = 1, exponential = 2 };

class Scene {
  public:
    // Creates a unit of the named mesh through the unit manager; the scene owns it. Never null: a missing mesh
    // gives a unit that draws nothing.
    Unit* createUnit(const std::string& meshName, const Vec3& position = {}, const Quat& orientation = {});
    // The unit must belong to this scene; it is deleted.
    void removeUnit(Unit* unit);
    void clear();
    const std::list<std::unique_ptr<Unit>>& units() const { return units_; }

    std::vector<Light> lights;
    FogMode fogMode = FogMode::none;
    float fogStart = 0; // or the density of exponential fog
    float fogEnd = 0;
    Vec3 fogColour;
    bool showsEffects = false; // the particle effects play in this scene

  private:
    std::list<std::unique_ptr<Unit>> units_;
};

// The render camera.
struct Camera {
    Vec3 position;
    Quat orientation;
    float fieldOfView = 30; // vertical, degrees
    float aspect = 16.0f / 9.0f;
    float farDistance = 740;
    float nearDistance = 20;
    Scene* scene = nullptr;
    int backgroundShader = -1;
    int backgroundTexture = -1;
    bool backgroundIsCubeMap = false;
    Vec2 backgroundTexCoords[4] = {{0, 0}, {0, 1}, {1, 1}, {1, 0}};

    // World point to the screen: x and y in 0..1 inside the view, y downwards, z the view-space depth
    // (negative in front). A point on the camera plane projects to a far-off but finite place.
    Vec3 project(const Vec3& point) const;
};

} // namespace Zelkor
