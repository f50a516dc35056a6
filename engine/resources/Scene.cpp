#include "resources/Scene.h"

#include "core/EngineManagers.h"
#include "resources/UnitManager.h"

#include <cmath>

namespace Zelkor {

namespace {

// A point this near to the camera plane is projected as if it lay here.
constexpr float leastDepth = 1e-4f;

} // namespace

Unit* Scene::createUnit(const std::string& meshName, const Vec3& position, const Quat& orientation) {
    units_.push_back(engineManagers()->unitManager->createUnit(meshName));
    Unit* unit = units_.back().get();
    unit->place_ = std::prev(units_.end());
    unit->position = position;
    unit->orientation = orientation;
    unit->updateWorldBox();
    return unit;
}

void Scene::removeUnit(Unit* unit) {
    units_.erase(unit->place_);
}

void Scene::clear() {
    units_.clear();
    lights.clear();
    fogMode = FogMode::none;
}

Vec3 Camera::project(const Vec3& point) const {
    Quat inverse;
    Vec3 view;
    quatRotate(view, quatInverse(inverse, orientation), point - position);
    float depth = -view.z;
    if (std::fabs(depth) < leastDepth) depth = std::copysign(leastDepth, depth);
    const float halfHeight = depth * std::tan(fieldOfView * pi / 180 / 2);
    return {0.5f + 0.5f * view.x / (halfHeight * aspect), 0.5f - 0.5f * view.y / halfHeight, view.z};
}

} // namespace Zelkor
