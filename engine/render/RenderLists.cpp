#include "render/RenderLists.h"

#include "core/ProfileSections.h"
#include "resources/Scene.h"

#include <algorithm>
#include <cmath>

namespace Zelkor {

namespace {

struct Sphere {
    Vec3 centre;
    float radius = 0;
};

Sphere worldSphere(const Unit& unit) {
    Vec3 offset;
    quatRotate(offset, unit.orientation, unit.boundingCentre);
    return {unit.position + scaled(unit.scale, offset), length(unit.scale) * unit.boundingRadius};
}

float viewSpaceZ(const Camera& camera, const Vec3& point) {
    Quat inverse;
    Vec3 view;
    return quatRotate(view, quatInverse(inverse, camera.orientation), point - camera.position).z;
}

bool insideCone(const ViewVolume& view, const Camera& camera, const Sphere& sphere) {
    const Vec3 fromCamera = sphere.centre + sphere.radius * view.forward - camera.position;
    return dot(fromCamera, view.forward) >= cosine(view.coneHalfAngle) * length(fromCamera);
}

bool insideDepthRange(const Camera& camera, float z, float radius) {
    return radius - z >= camera.nearDistance && -z - radius <= camera.farDistance;
}

bool boxOnScreen(const Camera& camera, const Vec3& low, const Vec3& high) {
    bool right = false, left = false, below = false, above = false;
    for (int corner = 0; corner < 8; ++corner) {
        const Vec3 screen = camera.project(
            {corner & 1 ? high.x : low.x, corner & 2 ? high.y : low.y, corner & 4 ? high.z : low.z});
        right |= screen.x > 0;
        left |= screen.x < 1;
        below |= screen.y > 0;
        above |= screen.y < 1;
    }
    return right && left && below && above;
}

// Cheapest test first.
bool sees(const Camera& camera, const ViewVolume& view, Unit& unit) {
    const Sphere sphere = worldSphere(unit);
    if (!(distance(sphere.centre, view.sphereCentre) < sphere.radius + view.sphereRadius)) return false;
    if (!insideCone(view, camera, sphere)) return false;
    unit.viewDepth = viewSpaceZ(camera, sphere.centre);
    if (!insideDepthRange(camera, unit.viewDepth, sphere.radius)) return false;
    unit.updateWorldBox();
    return boxOnScreen(camera, unit.worldBoxMin, unit.worldBoxMax);
}

} // namespace

ViewVolume ViewVolume::of(const Camera& camera) {
    const float tangent = std::tan(camera.fieldOfView * pi / 180 / 2);
    // Half the diagonal of the view at distance 1.
    const float corner = tangent * std::sqrt(1 + camera.aspect * camera.aspect);
    const float nearest = camera.nearDistance, farthest = camera.farDistance;
    // The centre lies on the axis, as far from the near corners as from the far ones; for a wide view that
    // point is behind the far end, and the sphere around the far end is the smaller one.
    const float middle = std::min((nearest + farthest) * (1 + corner * corner) / 2, farthest);
    ViewVolume view;
    Vec3 backward;
    view.forward = -quatAxisZ(backward, camera.orientation);
    view.sphereCentre = camera.position + middle * view.forward;
    view.sphereRadius = std::hypot(farthest - middle, farthest * corner);
    view.coneHalfAngle = std::atan(corner);
    return view;
}

void RenderLists::insert(Unit& unit) {
    const auto nearer = [](const Unit* a, const Unit* b) { return a->viewDepth > b->viewDepth; };
    const auto farther = [](const Unit* a, const Unit* b) { return a->viewDepth < b->viewDepth; };
    // Behind those of equal depth, so that they keep their order.
    if (unit.inMainList) main.insert(std::upper_bound(main.begin(), main.end(), &unit, nearer), &unit);
    if (unit.inSpecialList)
        special.insert(std::upper_bound(special.begin(), special.end(), &unit, farther), &unit);
}

void RenderLists::update(const Scene& scene, const Camera& camera, int frameNumber) {
    ProfileSection section(ProfileId::updateRenderLists);
    main.clear();
    special.clear();
    const ViewVolume view = ViewVolume::of(camera);
    for (const auto& unit : scene.units()) {
        if (!unit->visible || !sees(camera, view, *unit)) continue;
        unit->frameUpdate(frameNumber);
        for (Unit* child : unit->children) {
            if (!child->visible) continue;
            child->frameUpdate(frameNumber);
            child->viewDepth = viewSpaceZ(camera, worldSphere(*child).centre);
            child->updateWorldBox();
            insert(*child);
        }
        insert(*unit);
    }
}

} // namespace Zelkor
