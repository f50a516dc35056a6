#include "game/GameCamera.h"

#include "VirtualKeys.h"
#include "actors/Thingy.h"
#include "audio/AudioManager.h"
#include "core/EngineManagers.h"
#include "core/TimerManager.h"
#include "frontend/MenuManager.h"
#include "game/Game.h"
#include "input/ControllerManager.h"
#include "render/MaterialManager.h"
#include "render/Renderer.h"
#include "world/events/AreaEvents.h"

#include <algorithm>
#include <cmath>

using namespace Zelkor;

namespace {

constexpr float wideArea = 1000; // half-size of the area before any event sets one

constexpr float fadeRate = 3;    // per second, by the debug keys
constexpr float followRate = 10; // share of the way to the hero, per second
constexpr float maxShake = 100;
constexpr float releaseAtOnce = -1000; // lock rate
constexpr float leastMenuWeight = 0.001f;

// Pans: speeds in units per second, accelerations in units per second squared.
constexpr float zoomSpeed = 80, zoomAcceleration = 180;
constexpr float slideSpeed = 320, slideAcceleration = 1880;
constexpr float slideDepth = 40;  // from the goal's depth within which the view slides
constexpr float otherAxisAt = 50; // distance left on the longer axis when the shorter one joins in
constexpr float arrivalRate = 10; // most of the distance left, per second
constexpr float arrivalRadius = 1.5f;

// How far beyond the area the hero counts as having left it.
constexpr float upMargin = -5, downMargin = 10;

GameTimer& timer(const char* name) {
    return *TimerManager::instance().findTimer(name);
}

float signOf(float x) {
    return x < 0 ? -1.0f : 1.0f;
}

// Half of the height that the view shows at a depth of 1.
float slope(const Camera& view) {
    return std::tan(view.fieldOfView * pi / 180 / 2);
}

} // namespace

GameCamera::GameCamera(Scene& scene) {
    view.scene = &scene;
    view.farDistance = farDistance;
    view.nearDistance = nearDistance;
    setArea({-wideArea, -wideArea, -wideArea}, {wideArea, wideArea, wideArea}, true, nullptr);
}

GameCamera::~GameCamera() {
    if (panActive) timer("game").paused = 0;
    const EngineManagers* engine = engineManagers();
    if (engine && engine->audioManager && engine->audioManager->listener == &view)
        engine->audioManager->listener = nullptr;
}

void GameCamera::update() {
    const float dt = timer("main").delta;
    // The same width of the world on a screen of any shape, and a little more.
    if (const float aspect = engineManagers()->renderer->aspect; aspect > 0)
        view.fieldOfView = 53.333332f / aspect * 0.5f + 15;
    updateFade(dt);
    if (panActive) {
        if (panStep(dt)) {
            timer("game").paused = 0;
            panActive = false;
        }
        return;
    }
    if (followEnabled) follow(dt);
    applyLock(dt);
    applyShake(dt);
    applyMenus();
}

void GameCamera::updateFade(float dt) {
    const ControllerManager& controllers = *engineManagers()->controllerManager;
    if (controllers.isDown('F')) fade += fadeRate * dt;
    if (controllers.isDown('G')) fade -= fadeRate * dt;
    fade = clamp(fade, 0, 1);
}

// --- Following --------------------------------------------------------------------------------------------

Vec3 GameCamera::desiredPosition() const {
    if (!target) return clampToArea(position);
    return clampToArea(target->position() + Vec3{targetOffset.x, targetOffset.y, viewDistance});
}

// Where the area is smaller than the view, the camera comes closer until it fills the view.
Vec3 GameCamera::clampToArea(Vec3 desired) const {
    const float slopeY = slope(view), slopeX = view.aspect * slopeY;
    const float width = areaMax.x - areaMin.x, height = areaMax.y - areaMin.y;
    if (width < 2 * desired.z * slopeX) desired.z = width / 2 / slopeX;
    if (height < 2 * desired.z * slopeY) desired.z = height / 2 / slopeY;
    const float halfWidth = desired.z * slopeX, halfHeight = desired.z * slopeY;
    desired.x = clamp(desired.x, areaMin.x + halfWidth, areaMax.x - halfWidth);
    desired.y = clamp(desired.y, areaMin.y + halfHeight, areaMax.y - halfHeight);
    return desired;
}

void GameCamera::follow(float dt) {
    const Vec3 desired = desiredPosition();
    const float share = snap ? 1 : clamp(followRate * dt, 0, 1);
    position = (1 - share) * position + share * desired;
    snap = false;
    view.position = position;
}

void GameCamera::applyLock(float dt) {
    lockWeight = clamp(lockWeight + lockRate * dt, 0, 1);
    if (lockWeight > 0) view.position = lockWeight * lockPoint + (1 - lockWeight) * position;
}

void GameCamera::applyShake(float dt) {
    if (!(shakeAmplitude > 0)) return;
    shakeAmplitude = clamp(shakeAmplitude - shakeDecay * dt, 0, maxShake);
    const double t = timer("main").total;
    view.position += shakeAmplitude * Vec3{static_cast<float>(std::sin(300 * t)),
                                           static_cast<float>(std::sin(310 * t + 100)),
                                           0.3f * static_cast<float>(std::sin(400 * t + 30.1))};
}

void GameCamera::applyMenus() {
    view.orientation = {};
    const Game* game = Game::current();
    if (!game || !game->menuManager || game->menuManager->empty()) return;
    const MenuCameraPose pose = game->menuManager->cameraPose();
    if (pose.weight > leastMenuWeight) {
        view.position = (1 - pose.weight) * view.position + pose.weight * pose.position;
        quatSlerp(view.orientation, view.orientation, pose.orientation, pose.weight, true);
    }
    if (colourMaterial) MaterialManager::setShaderParam4(*colourMaterial, "MultColor", 1, 1, 1, 0);
}

void GameCamera::setLock(const Vec3& point, float rate) {
    if (rate >= 0) lockPoint = point;
    if (rate == 0) lockWeight = 1;
    if (rate <= releaseAtOnce) lockWeight = 0;
    lockRate = rate;
}

// --- Areas ------------------------------------------------------------------------------------------------

void GameCamera::setArea(const Vec3& min, const Vec3& max, bool instant, CameraBoundsEvent* newBoundsEvent) {
    if (boundsEvent) boundsEvent->reset();
    boundsEvent = newBoundsEvent;
    edges.clear();
    areaMin = min;
    areaMax = max;
    if (instant) return;
    position = desiredPosition();
    verticalFirst = std::fabs(position.y - view.position.y) > std::fabs(position.x - view.position.x);
    panVelocity = {};
    panActive = true;
    timer("game").paused = 1;
}

// First out to the goal's depth, then along the longer axis, then along the other, then in.
bool GameCamera::panStep(float dt) {
    position = desiredPosition();
    const Vec3 d = position - view.position;
    const bool nearX = std::fabs(d.x) < otherAxisAt, nearY = std::fabs(d.y) < otherAxisAt;

    if (position.z < view.position.z)
        panVelocity.z = moveTowards(panVelocity.z, -zoomSpeed, zoomAcceleration * dt);
    if (view.position.z - slideDepth < position.z) {
        const float step = slideAcceleration * dt;
        if (verticalFirst || nearX)
            panVelocity.y = moveTowards(panVelocity.y, slideSpeed * signOf(d.y), step);
        if (!verticalFirst || nearY)
            panVelocity.x = moveTowards(panVelocity.x, slideSpeed * signOf(d.x), step);
    }
    if (position.z > view.position.z && nearX && nearY)
        panVelocity.z = moveTowards(panVelocity.z, zoomSpeed, zoomAcceleration * dt);

    const Vec3 limit{arrivalRate * std::fabs(d.x), arrivalRate * std::fabs(d.y),
                     arrivalRate * std::fabs(d.z)};
    panVelocity = clampVec3(panVelocity, -limit, limit);
    view.position += panVelocity * dt;
    return distance(view.position, position) < arrivalRadius;
}

void GameCamera::addEdge(CameraEdgeEvent* edge) {
    edges.push_back(edge);
}

bool GameCamera::exitAllowed(int direction, const Vec3& point) {
    const bool sideways = direction == right || direction == left;
    const auto spans = [&](const CameraEdgeEvent* edge) {
        if (edge->direction != direction) return false;
        const EventBox& box = edge->box;
        return sideways ? box.min.y < point.y && point.y < box.max.y
                        : box.min.x < point.x && point.x < box.max.x;
    };
    const auto found = std::find_if(edges.begin(), edges.end(), spans);
    if (found == edges.end()) return false;

    const bool beyond = (direction == right && point.x > areaMax.x) ||
                        (direction == left && point.x < areaMin.x) ||
                        (direction == up && point.y > areaMax.y + upMargin) ||
                        (direction == down && point.y < areaMin.y - downMargin);
    if (beyond) (*found)->fire();
    return true;
}

float GameCamera::screenDistance(const Vec3& point) const {
    const Vec3 p = view.project(point);
    return std::max(std::fabs(2 * p.x - 1), std::fabs(2 * p.y - 1));
}
