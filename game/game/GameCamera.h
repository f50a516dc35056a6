// Follows the hero, keeps the view inside the current camera area, pans between areas, is pulled to a lock
// point, shakes, and carries the screen fade.
#pragma once

#include "gui/GuiWorkspace.h"
#include "math/Math.h"
#include "resources/Scene.h"

#include <vector>

namespace Zelkor {
struct Material;
}

class CameraBoundsEvent;
class CameraEdgeEvent;
class Thingy;

class GameCamera {
  public:
    enum Direction { right = 0, left = 1, up = 2, down = 3 };
    static constexpr float viewDistance = 180; // in front of the play plane
    static constexpr float nearDistance = 20, farDistance = 740;

    // scene: what the view shows; it must outlive the camera. Starts over a wide area, following nothing.
    explicit GameCamera(Zelkor::Scene& scene);
    // Lets the game go on if it stood still for a pan.
    ~GameCamera();
    GameCamera(const GameCamera&) = delete;

    // Once per update substep; its time step is the delta of the timer "main".
    void update();
    // boundsEvent is null when no event sets the area; the one before is reset, so that it can apply again.
    // Forgets all exit zones. Not instant: starts a pan, with the game standing still.
    void setArea(const Zelkor::Vec3& min, const Zelkor::Vec3& max, bool instant,
                 CameraBoundsEvent* boundsEvent);
    void addEdge(CameraEdgeEvent* edge);
    // Whether the hero may leave the area on that side at that position; beyond it, the zone's triggers fire.
    bool exitAllowed(int direction, const Zelkor::Vec3& position);
    // rate: lockWeight per second; 0 locks at once, -1000 and below releases at once.
    void setLock(const Zelkor::Vec3& point, float rate);
    // max(|x|, |y|) of the projected point: 1 is the edge of the screen.
    float screenDistance(const Zelkor::Vec3& point) const;

    std::vector<CameraEdgeEvent*> edges; // exit zones of the current area, owned by the event list
    CameraBoundsEvent* boundsEvent = nullptr;
    bool panActive = false;
    float fade = 0; // 0 clear, 1 faded out
    Zelkor::Camera view;
    Zelkor::Material* colourMaterial = nullptr; // may colour the whole view; none is needed
    // Drawn over the stage, under the menus, where the picture goes straight to the window.
    Zelkor::GuiScreenWorkspace overlay{false};
    Zelkor::Vec3 areaMin, areaMax;
    Zelkor::Vec3 position; // followed, before lock, shake and menus
    Thingy* target = nullptr;
    Zelkor::Vec2 targetOffset; // the followed actor's look-ahead, written by it each update
    bool snap = false;
    bool verticalFirst = false;
    Zelkor::Vec3 panVelocity;
    bool followEnabled = false;
    float shakeAmplitude = 0, shakeDecay = 0;
    Zelkor::Vec3 lockPoint;
    float lockWeight = 0, lockRate = 0;

  private:
    void updateFade(float dt);
    void applyLock(float dt);
    void applyShake(float dt);
    void applyMenus();
    Zelkor::Vec3 desiredPosition() const;
    Zelkor::Vec3 clampToArea(Zelkor::Vec3 desired) const;
    // True on arrival.
    bool panStep(float dt);
    void follow(float dt);
};
