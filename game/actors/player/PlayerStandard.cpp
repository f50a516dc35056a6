#include "actors/player/PlayerStandard.h"

#include "actors/ActorSound.h"
#include "actors/ThingyManager.h"
#include "actors/platforms/Platform.h"
#include "actors/player/HeroClips.h"
#include "actors/player/HeroConstants.h"
#include "actors/player/PlayerCartState.h"
#include "actors/player/PlayerClimbState.h"
#include "actors/player/PlayerHurt.h"
#include "actors/player/PlayerInAirState.h"
#include "actors/player/PlayerOnGroundState.h"
#include "actors/rides/Minecart.h"
#include "frontend/DeathMenu.h"
#include "game/GameCamera.h"
#include "game/Session.h"
#include "gui/HealthBar.h"
#include "resources/Unit.h"
#include "world/TileGrid.h"

#include <algorithm>

using Zelkor::Quat;
using Zelkor::Vec3;

namespace {

const SpawnRow spawnRow{SpawnType::player, [](Zelkor::Unit& unit) -> std::unique_ptr<Thingy> {
                            return std::make_unique<PlayerStandard>(unit, PlayerSurroundings::ofGame());
                        }};

constexpr Vec3 normalUp{0, 1, 0}, normalRight{1, 0, 0};

// Whoever steps on a ladder top from above stands on it, also with one foot beside it.
constexpr int groundMask = TileType::solid | TileType::ladderTop;

} // namespace

PlayerStandard::PlayerStandard(Zelkor::Unit& ownUnit, const PlayerSurroundings& surroundings)
    : Player(ownUnit, surroundings), states_{std::make_unique<PlayerOnGroundState>(*this),
                                             std::make_unique<PlayerInAirState>(*this),
                                             std::make_unique<PlayerHurt>(*this),
                                             std::make_unique<PlayerClimbState>(*this),
                                             std::make_unique<PlayerCartState>(*this)} {
    const float scale = heroConstants.unitScale;
    ownUnit.scale = {scale, scale, scale};
    playClip(ownUnit, HeroClips::idle);
    prepareArmRecoil(ownUnit);
    leadCamera();
    settle();
}

PlayerStandard::~PlayerStandard() = default;

void PlayerStandard::update(float time, float dt) {
    lookedAhead_ = false;
    forgetLostPlatform();
    if (climbCooldown > 0) climbCooldown -= dt;

    states_[static_cast<std::size_t>(state)]->update(time, dt);
    bodyCentre += worldVelocity() * dt;
    turn(dt);
    placeUnit();
    // What the hero did by himself in this step, before anything carries or pushes him.
    const Vec3 travelled = unit->position - lastPosition;

    updateCameraOffset(0, dt);
    bodyCentre += carryVelocity * dt;
    carryVelocity = {};
    wallSide = groundSide = 0;
    // Platforms first: what they push into a tile, the tile pushes back out.
    collideWithPlatforms();
    if (!skipTileCollision) collideWithTiles(travelled, dt);
    skipTileCollision = false;
    placeUnit();

    if (!input.overridden) keepInView();
    const Box body = hurtBox();
    collectPickups(body.min, body.max);
    if (healthBar) healthBar->update(health / maxHealth, dt);
    updateFlash(time, dt);
    finishStep();
}

void PlayerStandard::turn(float dt) {
    // Rolled over, or onto his right side, his turn to the right would show as one to the left.
    const float target = up.x > 0.5f || up.y < -0.5f ? -aimAngle : aimAngle;
    const float share = heroConstants.yawRate * dt;
    yaw = yaw * (1 - share) + target * share;
    rollAngle = rollAngle * (1 - share) + targetRoll * share;
}

void PlayerStandard::placeUnit() {
    const Quat roll = Zelkor::quatFromAxisAngle(rollAngle, {0, 0, 1});
    const Quat turned = Zelkor::quatFromAxisAngle(yaw, {0, 1, 0});
    Zelkor::quatMultiply(unit->orientation, roll, turned);
    Vec3 toCentre;
    Zelkor::quatRotate(toCentre, unit->orientation, {0, heroConstants.feetBelowCentre, 0});
    unit->position = bodyCentre - toCentre;
}

void PlayerStandard::moveBody(const Vec3& delta) {
    bodyCentre += delta;
    unit->position += delta;
}

// A platform may have been removed since the hero stepped on it.
void PlayerStandard::forgetLostPlatform() {
    if (!world_.actors || !world_.actors->contains(GROUP_PLATFORMS, standingOn)) standingOn = nullptr;
}

void PlayerStandard::collideWithPlatforms() {
    if (standingOn) bodyCentre += standingOn->carry();
    standingOn = pushOutOfPlatforms();
}

void PlayerStandard::collideWithTiles(const Vec3& travelled, float dt) {
    const int lowerMask = state == PlayerState::climb ? TileType::solid : groundMask;
    const int upperMask = state == PlayerState::onGround ? groundMask : TileType::solid;
    if (!pushOutOfTiles(travelled, dt, lowerMask, upperMask)) die(false);
}

void PlayerStandard::keepInView() {
    GameCamera* camera = world_.camera;
    if (!camera) return;
    const float margin = heroConstants.edgeMargin;
    if (position().x < camera->areaMin.x + margin && !camera->exitAllowed(GameCamera::left, position()))
        holdInView(camera->areaMin.x + margin, true);
    if (position().x > camera->areaMax.x - margin && !camera->exitAllowed(GameCamera::right, position()))
        holdInView(camera->areaMax.x - margin, false);
    // Nothing holds him above or below, but the exit zones there have to be told.
    if (position().y > camera->areaMax.y + heroConstants.exitAbove)
        camera->exitAllowed(GameCamera::up, position());
    if (position().y < camera->areaMin.y - heroConstants.exitBelow)
        camera->exitAllowed(GameCamera::down, position());
    if (position().y < camera->areaMin.y - heroConstants.deathBelow) die(true);
}

void PlayerStandard::holdInView(float x, bool leftEdge) {
    moveBody({x - position().x, 0, 0});
    if (leftEdge ? velocity.x < 0 : velocity.x > 0) velocity.x = 0;
}

void PlayerStandard::finishStep() {
    poseGun();
    if (world_.camera && world_.camera->target == this) world_.camera->targetOffset = lookAhead.offset;
    lastPosition = unit->position;
    if (!inGravityField && up.y < 1) setGravityFrame(normalUp, normalRight);
    inGravityField = false;
}

PlayerClimbState& PlayerStandard::climbState() {
    return static_cast<PlayerClimbState&>(*states_[PlayerState::climb]);
}

PlayerCartState& PlayerStandard::cartState() {
    return static_cast<PlayerCartState&>(*states_[PlayerState::cart]);
}

bool PlayerStandard::grabLadder() {
    const float y = input.direction().y;
    if (Zelkor::absolute(y) <= heroConstants.stickClimb || climbCooldown > 0 || up.y < 0.5f) return false;
    const auto ladder = ladderToGrab(world_.grid, world_.actors, feet(), y);
    if (!ladder) return false;
    climbState().ladder = *ladder;
    changeState(PlayerState::climb);
    return true;
}

bool PlayerStandard::boardCart() {
    Minecart* found = PlayerCartState::cartToRide(*this);
    if (!found) return false;
    cartState().cart = found;
    changeState(PlayerState::cart);
    return true;
}

void PlayerStandard::showGun(bool shown) {
    if (gun_->unit()) gun_->unit()->visible = shown;
}

void PlayerStandard::standAt(const Vec3& place) {
    Vec3 toCentre;
    const Quat roll = Zelkor::quatFromAxisAngle(rollAngle, {0, 0, 1});
    bodyCentre = place + Zelkor::quatRotate(toCentre, roll, {0, heroConstants.feetBelowCentre, 0});
}

void PlayerStandard::updateCameraOffset(float moveX, float dt) {
    if (lookedAhead_) return;
    lookedAhead_ = true;
    lookAhead.update(moveX, up, cart ? LookAhead::cartReach : LookAhead::reach, dt);
}

void PlayerStandard::changeState(int next) {
    const int previous = state;
    states_[static_cast<std::size_t>(previous)]->leave(playerTime());
    states_[static_cast<std::size_t>(next)]->enter(playerTime(), previous);
    state = next;
}

void PlayerStandard::startJump() {
    velocity.y = heroConstants.jumpSpeed;
    playClip(*unit, HeroClips::jumpOff);
}

void PlayerStandard::face(float x, float dt) {
    facing = x < 0 ? -1 : 1;
    aimAngle = static_cast<float>(facing) * Zelkor::pi / 2;
    updateCameraOffset(x, dt);
}

void PlayerStandard::stopAtWall() {
    const bool againstCarrier = velocity.x * dot(carryVelocity, right) < 0;
    if (movesIntoWall() && !againstCarrier) velocity.x = 0;
}

void PlayerStandard::stopAtCeiling() {
    if (groundSide < 0 && velocity.y > 0) velocity.y = 0;
}

bool PlayerStandard::hasHeadRoom() const {
    return !world_.grid || !world_.grid->tileAt(feet() + up * heroConstants.headRoom, TileType::solid);
}

void PlayerStandard::standUpIfRoom() {
    if (crouching && hasHeadRoom()) crouching = false;
}

void PlayerStandard::teleport(const Vec3& destination) {
    // As from the ground, whatever he was doing: he stands where he appears.
    states_[static_cast<std::size_t>(state)]->leave(playerTime());
    states_[PlayerState::onGround]->enter(playerTime(), PlayerState::onGround);
    state = PlayerState::onGround;
    facing = 1;
    aimAngle = yaw = Zelkor::pi / 2;
    velocity = {};
    const Vec3 offset = destination - unit->position;
    moveBody(offset);
    lastPosition += offset;
    settle();
}

// Set down on ground he stands in it at once, as deep as always, instead of falling there first.
void PlayerStandard::settle() {
    const Vec3 footing = up * heroConstants.footing;
    groundSide = world_.grid && world_.grid->tileAt(feet() - footing, groundMask) ? 1 : 0;
    if (groundSide <= 0 || world_.grid->tileAt(feet(), groundMask)) return;
    moveBody(-1 * footing);
    lastPosition -= footing;
}

PlayerStandard::Box PlayerStandard::hurtBox() const {
    const Vec3 base = feet();
    const Vec3 side = right * heroConstants.hurtHalfWidth;
    const Vec3 top = base + up * (crouching ? heroConstants.crouchHurtHeight : heroConstants.hurtHeight);
    const Vec3 a = base - side, b = top + side;
    return {{std::min(a.x, b.x), std::min(a.y, b.y), 0}, {std::max(a.x, b.x), std::max(a.y, b.y), 0}};
}

int PlayerStandard::onHit(const Attack& attack) {
    if (dead || flash > 0) return 0;
    if (!overlaps(attack, hurtBox())) return 0;

    const float knock = knockOf(attack);
    if (cart) cart->throwUp();
    playClip(*unit, knock == static_cast<float>(facing) ? HeroClips::hurtBack : HeroClips::hurtFront);
    if (!cart) velocity = {heroConstants.knockSpeed * knock, heroConstants.knockUpSpeed, 0};
    takeBlow();
    if (!cart) changeState(PlayerState::hurt);
    health -= 1;
    if (health <= 0) die(false);
    return 1;
}

void PlayerStandard::die(bool /*fallingOut*/) {
    if (dead) return;
    dead = true;
    if (!cart) {
        velocity = {-heroConstants.knockSpeed * static_cast<float>(facing), heroConstants.knockUpSpeed, 0};
        playClip(*unit, HeroClips::hurtFront);
        changeState(PlayerState::hurt);
        playSoundAt("playerhurt", position());
    }
    setClipSpeed(*unit, HeroClips::hurtFront.name, heroConstants.deathPoseSpeed);
    setClipSpeed(*unit, HeroClips::hurtBack.name, heroConstants.deathPoseSpeed);
    health = 0;
    openDeathMenu();
}
