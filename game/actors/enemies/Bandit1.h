// The gunslinger in all his trades: standing guard, ducking, behind cover, throwing dynamite, running,
// falling, hanging under a bird. update() is the order of one step; each trade has its steps in a file of its
// own.
#pragma once

#include "actors/enemies/Bandit.h"
#include "actors/enemies/Walking.h"

#include <memory>
#include <span>

class CarrierBird;
class HeldGun;
class Platform;
struct ShotStep;

class Bandit1 final : public Bandit {
  public:
    enum Mode {
        stand = 0,
        crouch = 1,
        cover = 2,
        walk = 3,
        dynamite = 4,
        run = 5,
        fall = 6,
        hang = 7,
        dead = 100
    };

    explicit Bandit1(Zelkor::Unit& ownUnit);
    ~Bandit1() override;

    void update(float time, float dt) override;
    // 0 the mode; 1 not 0: walks about between his shots; 2 seconds for which he does nothing.
    void setParameter(int index, float value) override;
    // The bird that carries him is gone.
    void loseBird() { bird_ = nullptr; }

    FloorLimits patrol; // he stays on it
    int mode = stand;
    bool crouched = false;

  protected:
    Box hitBox() const override;
    void die(const Attack& attack) override;

  private:
    enum AimLevel { aimLevel, aimUp, aimDown };
    enum FallPhase { rising, falling, shotFired };
    enum DynamitePhase { holding, throwing, walking };

    void setMode(int newMode);
    void modeStep(float dt);
    void deathStep(float dt);
    void move(float dt);
    void ridePlatform();
    bool isBlocked() const;
    bool hasLostFooting() const;
    void faceHero();
    // Towards 50 a second.
    void hurry(float dt);
    // He is this far from the end of his floor, or nearer.
    bool atFloorEnd() const;

    // Standing guard, and walking between two watches.
    void standStep(float dt);
    void lookAtHero();
    void setAim(int newAim);
    int wantedFacing(float dx) const;
    bool startWalk();
    void walkStep(float dt);
    bool onScreen() const;
    // Crouched and behind cover: a cycle of poses and shots.
    void crouchStep(float dt);
    void coverStep(float dt);
    void startCycleStep(std::span<const ShotStep> cycle);

    // Running, falling, hanging.
    void liftLimits();
    void startRun();
    void runStep(float dt);
    void startFall(int phase, float upwards);
    void leap(float speed);
    void drop();
    void fallStep(float dt);
    void land();
    void startHanging();
    void hangStep(float dt);

    // Dynamite.
    void takeStick();
    void dynamiteStep(float dt);
    void throwOrWalk();
    void walkWithStick();
    void throwStick();
    void holdStick();

    float timer_ = -1; // seconds; what it counts is the mode's
    int step_ = 0;     // aim level, phase or place in the cycle, as the mode has it
    int shots_ = 0;
    bool waitingToShoot_ = false; // he has turned and not shot since
    bool mobile_ = false;
    float startDelay_ = 0; // seconds
    bool hasFooting_ = false;
    Platform* platform_ = nullptr;   // ridden
    CarrierBird* bird_ = nullptr;    // that carries him
    std::unique_ptr<HeldGun> stick_; // of dynamite, in his hand
};

// Of all his movement: units a second and a second squared.
namespace BanditPace {
inline constexpr float speed = 50, acceleration = 200;
inline constexpr float gravity = 300, fastestFall = 300;
} // namespace BanditPace
