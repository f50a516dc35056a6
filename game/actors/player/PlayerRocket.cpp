#include "actors/player/PlayerRocket.h"

#include "actors/ThingyManager.h"
#include "actors/player/HeroClips.h"
#include "actors/player/HeroConstants.h"
#include "animation/SkeletonInstance.h"
#include "core/EngineManagers.h"
#include "frontend/DeathMenu.h"
#include "fx/ParticleManager.h"
#include "game/GameCamera.h"
#include "game/Session.h"
#include "gui/HealthBar.h"
#include "resources/Unit.h"
#include "world/TileGrid.h"

#include <algorithm>

using Zelkor::absolute;
using Zelkor::moveTowards;
using Zelkor::Vec2;
using Zelkor::Vec3;

namespace {

const SpawnRow spawnRow{SpawnType::rocketPlayer, [](Zelkor::Unit& unit) -> std::unique_ptr<Thingy> {
                            return std::make_unique<PlayerRocket>(unit, PlayerSurroundings::ofGame());
                        }};

// World units, seconds, units per second and per second squared.
constexpr struct {
    float speed = 45, acceleration = 200, braking = 180;
    float stickIdle = 0.1f; // on each axis: below it he brakes
    float bobRate = 3;      // radians per second; he bobs by one unit
    float leanRate = 8;     // share of the way to the stick that the body follows in a second
    float knockUpSpeed = 10;
    // What he keeps from the edges of the camera's area.
    float sideMargin = 5, bottomMargin = 4, topMargin = 10;
    Vec3 pickupHalf{10, 12, 0};
    // Hurt boxes, from his place: the body as it lies in the air, and the head above it.
    Vec3 bodyMin{-5, -2, 0}, bodyMax{8, 10, 0};
    Vec3 headMin{0, 0, 0}, headMax{4, 13.5f, 0};
    int hurtLayer = 3; // over his flight and over the recoil of his arm
    float hurtFadeIn = 0.05f, hurtFadeOut = 0.15f;
} rocket;

constexpr const char* explosion = "bomb1_explosion";
constexpr const char* steam = "rocket";
constexpr const char* exhaustPath = "rig_JT_DRV_neck_Base1|rig_JT_DRV_Chest|rig_JT_DRV_Exhaust";
// In the order of the mix's children.
constexpr const char* poseClips[] = {HeroClips::hover, HeroClips::flyForward, HeroClips::flyBackward,
                                     HeroClips::flyUp, HeroClips::flyDown};

} // namespace

PlayerRocket::PlayerRocket(Zelkor::Unit& ownUnit, const PlayerSurroundings& surroundings)
    : Player(ownUnit, surroundings) {
    const float scale = heroConstants.unitScale;
    ownUnit.scale = {scale, scale, scale};
    startPoses();
    leadCamera();
    if (ownUnit.skeleton) exhaust_ = ownUnit.skeleton->findJoint(exhaustPath);
    if (const Zelkor::EngineManagers* managers = Zelkor::engineManagers())
        steam_ = managers->particleManager->createEffect(steam, bodyCentre);
}

PlayerRocket::~PlayerRocket() {
    stopSteam();
}

void PlayerRocket::stopSteam() {
    const Zelkor::EngineManagers* managers = Zelkor::engineManagers();
    if (steam_ && managers) managers->particleManager->release(steam_);
    steam_ = nullptr;
}

void PlayerRocket::startPoses() {
    Zelkor::SkeletonInstance* skeleton = unit->skeleton.get();
    if (!skeleton) return;
    auto mix = std::make_unique<Zelkor::AnimationMixState>(skeleton->jointCount());
    for (const char* clip : poseClips)
        if (Zelkor::Animation* child = skeleton->animation(clip)) mix->children[mix->childCount++] = child;
    // Weights go by place, so that a body without all of them keeps its bind pose.
    if (mix->childCount < static_cast<int>(std::size(poseClips))) return;
    poses_ = mix.get();
    skeleton->add(std::move(mix));
    blendPoses({}, 0);
    prepareArmRecoil(*unit, HeroClips::flightRecoil);
}

void PlayerRocket::update(float time, float dt) {
    if (dead) {
        if (healthBar) healthBar->update(0, dt);
        return;
    }
    steer(dt);
    const Vec3 travelled = velocity * dt;
    bodyCentre += travelled + carryVelocity * dt;
    carryVelocity = {};
    wallSide = groundSide = 0;
    pushOutOfPlatforms();
    if (!skipTileCollision && !pushOutOfTiles(travelled, dt, TileType::solid, TileType::solid)) die();
    skipTileCollision = false;
    if (!input.overridden) keepInView();
    place(time);

    collectPickups(position() - rocket.pickupHalf, position() + rocket.pickupHalf);
    if (healthBar) healthBar->update(health / maxHealth, dt);
    updateFlash(time, dt);
    endHurt();
    poseWithGun();
    placeSteam();
    if (world_.camera && world_.camera->target == this) world_.camera->targetOffset = lookAhead.offset;
    lastPosition = unit->position;
}

void PlayerRocket::steer(float dt) {
    Vec2 stick = input.direction();
    const float length = Zelkor::squareRoot(stick.x * stick.x + stick.y * stick.y);
    if (length > 1) stick = {stick.x / length, stick.y / length};
    updateCameraOffset(stick.x, dt);
    if (input.pressed(PlayerInputSnapshot::fire) && fire(false)) playArmRecoil(*unit, HeroClips::flightRecoil);

    const auto follow = [&](float& speed, float wanted, float contact) {
        const bool driven = absolute(wanted) >= rocket.stickIdle;
        speed = moveTowards(speed, driven ? rocket.speed * wanted : 0,
                            (driven ? rocket.acceleration : rocket.braking) * dt);
        if (speed * contact < 0) speed = 0; // into what was touched
    };
    follow(velocity.x, stick.x, wallSide);
    follow(velocity.y, stick.y, groundSide);
    blendPoses(stick, dt);
}

// The share of each pose follows the stick; the shares add up to one, also on the diagonal.
void PlayerRocket::blendPoses(const Vec2& stick, float dt) {
    const float share = Zelkor::clamp(rocket.leanRate * dt, 0, 1);
    leaning_.x += (stick.x - leaning_.x) * share;
    leaning_.y += (stick.y - leaning_.y) * share;
    if (!poses_) return;
    const float x = leaning_.x, y = leaning_.y;
    const float whole = std::max(1.0f, absolute(x) + absolute(y));
    poses_->childWeights = {1 - (absolute(x) + absolute(y)) / whole, std::max(x, 0.0f) / whole,
                            std::max(-x, 0.0f) / whole, std::max(y, 0.0f) / whole, std::max(-y, 0.0f) / whole};
}

void PlayerRocket::place(float time) {
    unit->orientation = Zelkor::quatFromAxisAngle(yaw, {0, 1, 0});
    unit->position = feet() + Vec3{0, Zelkor::sine(rocket.bobRate * time), 0};
}

// Where the boiler's nozzle will be drawn.
void PlayerRocket::placeSteam() {
    if (!steam_) return;
    Vec3 nozzle;
    if (exhaust_ >= 0) {
        const Vec3& joint = unit->skeleton->joints[static_cast<std::size_t>(exhaust_)].worldPosition;
        Zelkor::quatRotate(nozzle, unit->orientation, Zelkor::scaled(joint, unit->scale));
    }
    steam_->setTransform(position() + nozzle, unit->orientation);
}

void PlayerRocket::keepInView() {
    const GameCamera* camera = world_.camera;
    if (!camera) return;
    const Vec3 from = feet();
    const Vec3 to{Zelkor::clamp(from.x, camera->areaMin.x + rocket.sideMargin, camera->areaMax.x - rocket.sideMargin),
                  Zelkor::clamp(from.y, camera->areaMin.y + rocket.bottomMargin,
                                camera->areaMax.y - rocket.topMargin),
                  from.z};
    if ((to.x - from.x) * velocity.x < 0) velocity.x = 0;
    if ((to.y - from.y) * velocity.y < 0) velocity.y = 0;
    bodyCentre += to - from;
}

void PlayerRocket::updateCameraOffset(float moveX, float dt) {
    lookAhead.update(moveX, up, LookAhead::reach, dt);
}

void PlayerRocket::teleport(const Vec3& destination) {
    const Vec3 offset = destination - unit->position;
    velocity = {};
    unit->position += offset;
    bodyCentre += offset;
    lastPosition += offset;
}

int PlayerRocket::onHit(const Attack& attack) {
    if (dead || flash > 0) return 0;
    const Vec3 at = position();
    if (!overlaps(attack, {at + rocket.bodyMin, at + rocket.bodyMax}) &&
        !overlaps(attack, {at + rocket.headMin, at + rocket.headMax}))
        return 0;
    velocity = {heroConstants.knockSpeed * knockOf(attack), rocket.knockUpSpeed, 0};
    playHurt();
    takeBlow();
    health -= 1;
    if (health <= 0) die();
    return 1;
}

void PlayerRocket::playHurt() {
    hurt_ = unit->skeleton ? unit->skeleton->animation(HeroClips::flightHurt) : nullptr;
    if (!hurt_) return;
    hurt_->layer = rocket.hurtLayer;
    unit->skeleton->play(HeroClips::flightHurt, rocket.hurtFadeIn);
    hurt_->setTime(0);
    hurt_->loop = false;
}

// Back to the flight that goes on below it.
void PlayerRocket::endHurt() {
    if (!hurt_ || hurt_->time < hurt_->duration - rocket.hurtFadeOut) return;
    hurt_->fadeSpeed = -1 / rocket.hurtFadeOut;
    hurt_ = nullptr;
}

void PlayerRocket::die() {
    if (dead) return;
    dead = true;
    health = 0;
    velocity = {};
    stopSteam();
    unit->visible = false;
    if (gun_->unit()) gun_->unit()->visible = false;
    if (const Zelkor::EngineManagers* managers = Zelkor::engineManagers())
        managers->particleManager->createEffect(explosion, bodyCentre);
    openDeathMenu();
    notifyDeath(*this);
}
