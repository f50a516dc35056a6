// The hero on foot: runs, jumps, crouches, is hurt and dies. update() is the order of one step; the states
// set the velocity and choose the next state.
#pragma once

#include "actors/player/Player.h"
#include "actors/player/PlayerState.h"

#include <array>
#include <memory>

class Minecart;
class Platform;
class PlayerCartState;
class PlayerClimbState;

class PlayerStandard final : public Player {
  public:
    // Becomes the camera's target.
    PlayerStandard(Zelkor::Unit& ownUnit, const PlayerSurroundings& surroundings);
    ~PlayerStandard() override;

    void update(float time, float dt) override;
    void teleport(const Zelkor::Vec3& position) override;
    int onHit(const Attack& attack) override;
    void keepInView() override;
    void updateCameraOffset(float moveX, float dt) override;
    // Once; what follows is the death menu, which restarts the session.
    void die(bool fallingOut);

    // For the states.
    void changeState(int next);
    // Upwards at the speed of a jump, with its clips; the state is the caller's to change.
    void startJump();
    // Turns to the side of x and moves the view ahead.
    void face(float x, float dt);
    bool movesIntoWall() const { return velocity.x * wallSide < 0; }
    // As the wall allows, but never against what carries the hero into it.
    void stopAtWall();
    void stopAtCeiling();
    // Nothing solid where the head would be when standing.
    bool hasHeadRoom() const;
    void standUpIfRoom();
    // Takes hold of a ladder that the stick asks for. False when there is none.
    bool grabLadder();
    // Lands in a mine cart, or is pushed out of it. False unless he rides now.
    bool boardCart();
    void showGun(bool shown);
    void poseGun() { poseWithGun(); }
    // Puts his feet there, however he leans.
    void standAt(const Zelkor::Vec3& feet);
    TileGrid* grid() const { return world_.grid; }
    ThingyManager* actors() const { return world_.actors; }

    Platform* standingOn = nullptr;
    Minecart* cart = nullptr; // ridden
    float climbCooldown = 0;  // seconds before a ladder may be grabbed again
    int state = PlayerState::onGround;

  private:
    PlayerClimbState& climbState();
    PlayerCartState& cartState();
    void settle();
    void turn(float dt);
    void placeUnit();
    void moveBody(const Zelkor::Vec3& delta);
    void collideWithPlatforms();
    void collideWithTiles(const Zelkor::Vec3& travelled, float dt);
    void holdInView(float x, bool leftEdge);
    void finishStep();
    Box hurtBox() const;
    void forgetLostPlatform();

    std::array<std::unique_ptr<PlayerState>, PlayerState::count> states_;
    bool lookedAhead_ = false;       // in this update
};
