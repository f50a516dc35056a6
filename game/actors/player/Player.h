// The hero, whatever he does: his health, facing, input, movement frame and the view ahead of him.
#pragma once

#include "actors/Thingy.h"
#include "actors/player/LookAhead.h"
#include "actors/player/HeldGun.h"
#include "actors/player/PlayerInputSnapshot.h"
#include "actors/weapons/PlayerWeapon.h"

#include <memory>
#include <vector>

namespace Zelkor {
class GuiPanel;
}
class GameCamera;
class HealthBar;
class MenuManager;
class Platform;
class Session;
class ThingyManager;
class TileGrid;

// What the hero lives in. None of it is owned; the pointers may be null, and what needs them then does
// nothing.
struct PlayerSurroundings {
    // Of the running game, with the first player's device. There must be a ControllerManager.
    static PlayerSurroundings ofGame();

    const Zelkor::PlayerInput* device = nullptr; // never null
    TileGrid* grid = nullptr;
    GameCamera* camera = nullptr;
    ThingyManager* actors = nullptr;
    Session* session = nullptr;
    Zelkor::GuiPanel* display = nullptr;
    const MenuManager* menus = nullptr;
};

class Player : public Thingy {
  public:
    Player(Zelkor::Unit& ownUnit, const PlayerSurroundings& surroundings);
    ~Player() override;

    // Blinks red while a hit protects the hero from the next; red for good in death.
    void updateFlash(float time, float dt) override;
    // Holds the hero in the camera area and kills him below it.
    virtual void keepInView() = 0;
    // Moves the view ahead; the first call in an update counts.
    virtual void updateCameraOffset(float moveX, float dt) = 0;

    // The mouth of the gun in the right or left hand.
    virtual Zelkor::Vec3 muzzlePoint(bool left) const;
    // Shoots from that hand; true when a shot left.
    virtual bool fire(bool left);
    // Changes guns; one that he has picked up flies away. The gun he has already stays.
    void setWeapon(int index);

    // Stands the hero on other axes for as long as it is called in every frame. Unit vectors along world
    // axes.
    virtual void setGravityFrame(const Zelkor::Vec3& newUp, const Zelkor::Vec3& newRight);

    // The lowest point of the body, along up.
    Zelkor::Vec3 feet() const;
    // velocity, turned from the movement frame into the world.
    Zelkor::Vec3 worldVelocity() const;
    float playerTime() const;

    float aimAngle; // the yaw to turn to, radians: facing x pi/2
    int facing = 1; // +1 right, -1 left
    bool crouching = false;
    bool skipTileCollision = false; // for one frame, when something else has placed the hero
    // The movement frame. velocity is in it: x along right, y along up.
    Zelkor::Vec3 up{0, 1, 0}, right{1, 0, 0};
    Zelkor::Vec3 bodyCentre;
    float yaw;                  // radians, follows aimAngle
    Zelkor::Vec3 carryVelocity; // added for one frame by what carries the hero, world units per second
    PlayerInputSnapshot input;
    float wallSide = 0;   // direction of the last push by a wall: -1 towards -x, 0 none
    float groundSide = 0; // +1 ground under the feet, -1 a ceiling, 0 neither
    LookAhead lookAhead;
    Zelkor::Vec3 lastPosition;           // of the unit, at the end of the previous update
    float rollAngle = 0, targetRoll = 0; // radians, 0 when up is (0, 1, 0)
    bool inGravityField = false;
    bool dead = false;
    std::unique_ptr<PlayerWeapon> weapon;
    std::unique_ptr<HealthBar> healthBar; // none without a display

    // Fixed at construction, from the stage's gravity factor.
    float gravity, heldJumpGravity, terminalSpeed;

  protected:
    struct Box {
        Zelkor::Vec3 min, max;
    };
    static bool overlaps(const Attack& attack, const Box& box);
    // Which way the attack throws him: +1 to the right.
    float knockOf(const Attack& attack) const;
    // What every hit does to whoever he is: red, a shaken view, a cry and the picked-up gun lost.
    void takeBlow();

    // Becomes what the camera follows.
    void leadCamera();
    // Pushes his body out of every platform near; the contacts go to wallSide and groundSide. Returns the last
    // one that he stands on, null for none.
    Platform* pushOutOfPlatforms();
    // Out of the tiles: the masks are those of TileBody. travelled: over this step, by himself, in the world.
    // False when a deadly one was touched, and then nothing has moved.
    bool pushOutOfTiles(const Zelkor::Vec3& travelled, float dt, int lowerMask, int upperMask);
    // Takes the pose of the coming frame, and the gun with it.
    void poseWithGun();

    // Takes every pickup whose middle, grown by 3, overlaps the box.
    void collectPickups(const Zelkor::Vec3& boxMin, const Zelkor::Vec3& boxMax);
    void takePickup(int kind);

    PlayerSurroundings world_;
    std::unique_ptr<HeldGun> gun_;

  private:
    Platform* pushOutOf(Platform& platform);

    std::vector<Thingy*> near_; // scratch of one step
};
