// Bandit1 on guard: standing, crouched, behind cover, and the walk between two watches.
#include "actors/enemies/Bandit1.h"

#include <array>
#include <cmath>

using namespace Zelkor;

// One step of the cycle of who ducks.
struct ShotStep {
    const char* clip; // none keeps the one that plays
    float seconds;
    bool crouched, shoots;
};

namespace {

// Seconds.
constexpr float lookTime = 0.5f;   // before a shot he may still change his aim
constexpr float turnTime = 0.75f;  // from a turn to the shot
constexpr float raiseTime = 0.25f; // before that shot the gun is up again
constexpr float pairTime = 0.6f, restTime = 1.8f;
constexpr float walkPause = 1.2f, walkEndPause = 0.52f;
constexpr float offScreenPause = 0.6f;

// World units.
constexpr float heroBelow = -8;     // he aims down from here on
constexpr float sideMargin = 5;     // a hero no farther aside counts as right of him
constexpr float turnMargin = 15;    // aiming down he turns only this near to the end of his floor
constexpr float heroNear = 16;      // he does not walk towards one nearer than this
constexpr float roomToWalk = 30;    // of his floor
constexpr float screenHalf = 0.55f; // from the middle of the screen, where the edge is 0.5
constexpr float clipBlend = 0.1f;   // seconds

constexpr const char* idleClips[] = {"idle", "idle_up", "idle_down"};
constexpr const char* fireClips[] = {"fire", "fire_up", "fire_down"};

constexpr std::array<ShotStep, 4> crouchCycle{{{"idle", 0.25f, false, false},
                                               {"fire", 0.6f, false, true},
                                               {"fire", 0.7f, false, true},
                                               {"crouch", 2, true, false}}};
constexpr std::array<ShotStep, 3> coverCycle{
    {{"cover_shoot", 0.5f, true, false}, {nullptr, 0.25f, true, true}, {nullptr, 3, true, true}}};

} // namespace

bool Bandit1::onScreen() const {
    return std::abs(screenPlace().x - 0.5f) < screenHalf;
}

void Bandit1::standStep(float dt) {
    if (timer_ < lookTime && !waitingToShoot_ && shots_ % 2 == 0) lookAtHero();
    if (mobile_ && shots_ >= 2 && startWalk()) return;
    const float before = timer_;
    timer_ -= dt;
    if (waitingToShoot_ && before >= raiseTime && timer_ < raiseTime) play(idleClips[step_], clipBlend);
    if (timer_ > 0) return;
    timer_ = !mobile_ && shots_ % 2 == 1 ? restTime : pairTime;
    waitingToShoot_ = false;
    if (onScreen()) {
        play(fireClips[step_]);
        fireShot();
    }
    ++shots_;
}

void Bandit1::lookAtHero() {
    const Thingy* hero = nearestHero();
    if (!hero) return;
    const Vec3 way = hero->position() - position();
    const bool steep = std::abs(way.y) > std::abs(way.x) / 2;
    setAim(steep && way.y < heroBelow ? aimDown : steep ? aimUp : aimLevel);
    const int wanted = wantedFacing(way.x);
    if (wanted == facing) return;
    facing = wanted;
    play("walk1", clipBlend);
    timer_ = turnTime;
    waitingToShoot_ = true;
}

void Bandit1::setAim(int newAim) {
    if (newAim == step_) return;
    step_ = newAim;
    play(idleClips[step_], clipBlend);
}

// Where the hero is; a shot down over the other end of the floor would only hit the floor.
int Bandit1::wantedFacing(float dx) const {
    const int side = dx > -sideMargin ? 1 : -1;
    const bool mayTurn = step_ != aimDown || patrol.ahead(position().x, side) < turnMargin;
    return mayTurn ? side : facing;
}

// After his shots: towards a hero who is far off, else to the other end; a wall ends his floor as an edge
// does. False when there is no room.
bool Bandit1::startWalk() {
    shots_ = 0;
    timer_ = walkPause;
    const Thingy* hero = nearestHero();
    const float dx = hero ? hero->position().x - position().x : 0;
    const int side = dx < 0 ? -1 : 1;
    const bool towardsHero = std::abs(dx) >= heroNear;
    facing = towardsHero ? side : -facing;
    if (!towardsHero && patrol.length() <= roomToWalk) return false;
    if (atFloorEnd()) return false;
    mode = walk;
    play("walk1", clipBlend);
    return true;
}

void Bandit1::walkStep(float dt) {
    hurry(dt);
    if (!atFloorEnd()) return;
    velocity.x = 0;
    shots_ = 0;
    mode = stand;
    timer_ = walkEndPause;
    step_ = aimLevel;
    play("idle", clipBlend);
}

// The step that is due, and on to the next of the cycle.
void Bandit1::startCycleStep(std::span<const ShotStep> cycle) {
    const ShotStep& now = cycle[static_cast<std::size_t>(step_)];
    step_ = (step_ + 1) % static_cast<int>(cycle.size());
    if (now.clip) play(now.clip, clipBlend);
    timer_ = now.seconds;
    crouched = now.crouched;
    if (now.shoots) fireShot();
}

void Bandit1::crouchStep(float dt) {
    timer_ -= dt;
    if (timer_ > 0) return;
    if (!onScreen()) {
        timer_ = offScreenPause;
        return;
    }
    if (step_ == 0) faceHero(); // as he comes up, never between two shots
    startCycleStep(crouchCycle);
}

void Bandit1::coverStep(float dt) {
    timer_ -= dt;
    if (timer_ <= 0) startCycleStep(coverCycle);
}
