#include "actors/enemies/Bandit1.h"

#include "actors/ThingyManager.h"
#include "actors/enemies/CarrierBird.h"
#include "actors/platforms/Platform.h"
#include "actors/player/HeldGun.h"
#include "core/EngineManagers.h"
#include "game/Game.h"
#include "resources/Unit.h"
#include "resources/UnitManager.h"

#include <algorithm>
#include <iterator>

using namespace Zelkor;

namespace {

const SpawnRow row{SpawnType::bandit1, createActor<Bandit1>};

constexpr float halfWidth = 3, height = 20, crouchedHeight = 9, halfDepth = 4;
constexpr float overhang = 5;                     // he may stand this far beyond the end of his floor
constexpr float floorProbe = 5, shallowProbe = 1; // below the feet; the second meets thin platforms
constexpr float platformEdge = 5;                 // to each side, where he stands on a platform
constexpr float wallReach = 4;                    // before him
constexpr float wallHeights[] = {2, 10, 18};      // above his feet
constexpr float floorEndReach = 5;
constexpr float deathTime = 0.75f; // seconds
constexpr float dieSpeed = 0.85f;  // of the clip
constexpr float headHit = 15;      // above the feet: from here on a hit throws him forwards
constexpr float droppedSpeed = -5; // at the most, of who is shot in the air
constexpr float footDistance = 2;
constexpr Vec3 aimAtFeet{0, 5, 0}, aimAtChest{0, 14, 0};

struct ModeStart {
    int mode;
    const char* clip; // empty keeps the one that plays
    bool crouched;
    Vec3 aim;
};

// A mode that nobody can be spawned in stands guard.
constexpr ModeStart modeStarts[] = {
    {Bandit1::stand, "idle", false, aimAtFeet}, {Bandit1::crouch, "crouch", true, aimAtFeet},
    {Bandit1::cover, "cover", true, aimAtFeet}, {Bandit1::dynamite, "dynamite_idle", false, aimAtChest},
    {Bandit1::run, "run", false, aimAtChest},   {Bandit1::fall, "", false, aimAtFeet},
    {Bandit1::hang, "hang", false, aimAtChest}};

Platform* platformBelow(const Vec3& feet) {
    auto* platform = dynamic_cast<Platform*>(Game::get().thingyManager->nearest(GROUP_PLATFORMS, feet));
    if (!platform) return nullptr;
    const bool below = platform->containsPoint(feet.x, feet.y - floorProbe) ||
                       platform->containsPoint(feet.x, feet.y - shallowProbe);
    return below ? platform : nullptr;
}

} // namespace

Bandit1::Bandit1(Unit& ownUnit) : Bandit(ownUnit), patrol(floorUnder(ownUnit.position)) {
    play("idle");
    platform_ = platformBelow(position());
    if (platform_) patrol = {position().x - platformEdge, position().x + platformEdge};
    hasFooting_ = platform_ || solidAt(position() - Vec3{0, floorProbe, 0});
}

Bandit1::~Bandit1() {
    if (bird_) bird_->letGo();
}

void Bandit1::setParameter(int index, float value) {
    if (index == 0) setMode(value >= 0 && value < static_cast<float>(dead) ? static_cast<int>(value) : 0);
    if (index == 1) mobile_ = value != 0;
    if (index == 2) startDelay_ = value;
}

void Bandit1::setMode(int newMode) {
    const auto* start = std::find_if(std::begin(modeStarts), std::end(modeStarts),
                                     [&](const ModeStart& candidate) { return candidate.mode == newMode; });
    if (start == std::end(modeStarts)) start = std::begin(modeStarts);
    if (start->mode == mode) return;
    mode = start->mode;
    if (*start->clip) play(start->clip);
    crouched = start->crouched;
    aimOffset = start->aim;
    step_ = 0;
    if (mode == dynamite) takeStick();
    if (mode == run) {
        faceHero(); // past whom he runs on, out of the screen
        startRun();
    }
    if (mode == fall) drop();
    if (mode == hang) startHanging();
}

void Bandit1::update(float time, float dt) {
    if (startDelay_ > 0 && mode != dead)
        startDelay_ -= dt;
    else
        modeStep(dt);
    move(dt);
    turn(dt);
    if (mode != dead) touchHero(hitBox());
    holdStick();
    updateFlash(time, dt);
}

// It has to be where the hand will be drawn, so he takes the pose of the coming frame here.
void Bandit1::holdStick() {
    if (!stick_) return;
    unit->frameUpdate(engineManagers()->unitManager->frameNumber + 1);
    stick_->follow();
}

void Bandit1::modeStep(float dt) {
    if (hasLostFooting()) drop();
    switch (mode) {
    case stand:
        return standStep(dt);
    case crouch:
        return crouchStep(dt);
    case cover:
        return coverStep(dt);
    case walk:
        return walkStep(dt);
    case dynamite:
        return dynamiteStep(dt);
    case run:
        return runStep(dt);
    case fall:
        return fallStep(dt);
    case hang:
        return hangStep(dt);
    default:
        return deathStep(dt);
    }
}

// A bridge has broken under him, or a platform has gone.
bool Bandit1::hasLostFooting() const {
    if (!hasFooting_ || platform_ || mode > dynamite) return false;
    return !solidAt(position() + Vec3{-halfWidth, -floorProbe, 0}) &&
           !solidAt(position() + Vec3{halfWidth, -floorProbe, 0});
}

void Bandit1::move(float dt) {
    ridePlatform();
    Vec3& place = unit->position;
    const bool loose = mode == run || mode == fall;
    if (!loose || !isBlocked()) place.x += velocity.x * dt;
    place.y += velocity.y * dt;
    if (!platform_ && !bird_) place.x = clamp(place.x, patrol.left - overhang, patrol.right + overhang);
}

void Bandit1::ridePlatform() {
    if (platform_ && !Game::get().thingyManager->contains(GROUP_PLATFORMS, platform_)) platform_ = nullptr;
    if (!platform_) return;
    const Vec3 carried = platform_->carry();
    unit->position += carried;
    patrol.left += carried.x;
    patrol.right += carried.x;
}

bool Bandit1::isBlocked() const {
    if (velocity.x == 0) return false;
    const float reach = velocity.x < 0 ? -wallReach : wallReach;
    return std::any_of(std::begin(wallHeights), std::end(wallHeights), [&](float above) {
        return solidAt(position() + Vec3{reach, above, 0});
    });
}

void Bandit1::faceHero() {
    if (const Thingy* hero = nearestHero()) facing = hero->position().x < position().x ? -1 : 1;
}

void Bandit1::hurry(float dt) {
    walkTowards(*this, facing, BanditPace::speed, BanditPace::acceleration, dt);
}

bool Bandit1::atFloorEnd() const {
    return patrol.ahead(position().x, facing) <= floorEndReach;
}

Box Bandit1::hitBox() const {
    return boxAround(position(), {-halfWidth, 0, -halfDepth},
                     {halfWidth, crouched ? crouchedHeight : height, halfDepth});
}

void Bandit1::die(const Attack& attack) {
    if (mode == hang || mode == fall) {
        velocity.y = std::min(velocity.y, droppedSpeed);
        liftLimits();
    }
    if (bird_) bird_->letGo();
    stick_.reset();
    mode = dead;
    const float hitHeight = (attack.boxMin.y + attack.boxMax.y) / 2 - position().y;
    if (hitHeight > headHit || isFromBehind(attack))
        startDying("die", dieSpeed, deathTime);
    else
        startDying("die2", 1, deathTime);
    dropLoot(position());
}

void Bandit1::deathStep(float dt) {
    velocity.x = moveTowards(velocity.x, 0, BanditPace::acceleration * dt);
    if (velocity.y < 0) {
        velocity.y = std::max(velocity.y - BanditPace::gravity * dt, -BanditPace::fastestFall);
        standOnTiles(*this, footDistance);
    }
    dieStep(dt);
}
