// The hero with a boiler on his back: he flies where the stick points, looks and shoots to the right, and knows no
// ground.
#pragma once

#include "actors/player/Player.h"

namespace Zelkor {
class Animation;
class AnimationMixState;
class EffectInstance;
} // namespace Zelkor

class PlayerRocket final : public Player {
  public:
    // Becomes the camera's target.
    PlayerRocket(Zelkor::Unit& ownUnit, const PlayerSurroundings& surroundings);
    ~PlayerRocket() override;

    void update(float time, float dt) override;
    void teleport(const Zelkor::Vec3& position) override;
    int onHit(const Attack& attack) override;
    void keepInView() override;
    void updateCameraOffset(float moveX, float dt) override;
    // He falls nowhere.
    void setGravityFrame(const Zelkor::Vec3&, const Zelkor::Vec3&) override {}
    // In a burst of steam; what follows is the session's restart.
    void die();

  private:
    void startPoses();
    void steer(float dt);
    void blendPoses(const Zelkor::Vec2& stick, float dt);
    void playHurt();
    void endHurt();
    void place(float time);
    void placeSteam();
    void stopSteam();

    Zelkor::AnimationMixState* poses_ = nullptr; // of the unit's skeleton; null without one
    Zelkor::Animation* hurt_ = nullptr;          // while it is in sight
    Zelkor::EffectInstance* steam_ = nullptr;    // of the boiler; null once it has ended
    int exhaust_ = -1;                           // the joint that it leaves from
    Zelkor::Vec2 leaning_;                       // the stick as the body follows it
};
