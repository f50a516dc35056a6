#include "actors/player/Player.h"

#include "actors/ActorSound.h"
#include "actors/ThingyManager.h"
#include "actors/platforms/Platform.h"
#include "actors/player/HeroConstants.h"
#include "actors/player/TileCollision.h"
#include "actors/scenery/Pickup.h"
#include "core/EngineManagers.h"
#include "core/TimerManager.h"
#include "game/Game.h"
#include "game/GameCamera.h"
#include "game/Session.h"
#include "input/ControllerManager.h"
#include "gui/GuiWorkspace.h"
#include "gui/HealthBar.h"
#include "resources/Unit.h"
#include "resources/UnitManager.h"

#include <algorithm>

using Zelkor::Vec3;

namespace {

// Platforms or pickups around him for which he keeps room, so that none of his steps asks for memory.
constexpr std::size_t mostNear = 64;

} // namespace

PlayerSurroundings PlayerSurroundings::ofGame() {
    PlayerSurroundings world;
    world.device = &Zelkor::engineManagers()->controllerManager->firstPlayer();
    if (const Game* game = Game::current()) {
        world.menus = game->menuManager.get();
        world.grid = game->tileGrid();
        world.camera = game->camera();
        world.actors = game->thingyManager.get();
        world.session = game->session.get();
        world.display = &game->playerDisplay->root;
    }
    return world;
}

Player::Player(Zelkor::Unit& ownUnit, const PlayerSurroundings& surroundings)
    : Thingy(ownUnit, GROUP_PLAYER), aimAngle(Zelkor::pi / 2), yaw(aimAngle),
      input(*surroundings.device, surroundings.menus), world_(surroundings) {
    health = maxHealth = heroConstants.maxHealth;
    bodyCentre = ownUnit.position + Vec3{0, heroConstants.feetBelowCentre, 0};
    lastPosition = ownUnit.position;
    const float factor = world_.session ? world_.session->gravityFactor : 1;
    gravity = heroConstants.gravity * factor;
    heldJumpGravity = heroConstants.heldJumpGravity * factor;
    terminalSpeed = heroConstants.terminalSpeed;
    if (timer) timer->scale = 1;
    near_.reserve(mostNear);
    setWeapon(WeaponIndex::mainGun);
    if (world_.display) {
        healthBar = std::make_unique<HealthBar>(*world_.display);
        healthBar->show(true);
    }
}

Player::~Player() {
    if (world_.camera && world_.camera->target == this) world_.camera->target = nullptr;
}

void Player::leadCamera() {
    if (!world_.camera) return;
    world_.camera->target = this;
    world_.camera->targetOffset = lookAhead.offset;
}

// --- The body among what it touches ------------------------------------------------------------------------

Platform* Player::pushOutOfPlatforms() {
    near_.clear();
    if (world_.actors)
        world_.actors->collectInRadius(GROUP_PLATFORMS, bodyCentre, heroConstants.platformReach, near_);
    Platform* under = nullptr;
    for (Thingy* actor : near_)
        if (auto* platform = dynamic_cast<Platform*>(actor))
            if (Platform* carrier = pushOutOf(*platform)) under = carrier;
    return under;
}

// The platform itself when he stands on it.
Platform* Player::pushOutOf(Platform& platform) {
    const HeroBox box = heroBox(bodyCentre, up, crouching);
    Vec3 centre = box.centre;
    const PlatformContact contact = platform.pushOut(centre, box.half, worldVelocity());
    if (!contact.pushed) return nullptr;
    bodyCentre = centre + box.toBodyCentre;
    const bool stands = dot(contact.normal, up) > 0.5f;
    // As on a floor of tiles: what he stands on has to touch him in the next step too.
    if (stands) bodyCentre -= up * heroConstants.footing;
    const bool upright = box.verticalAxis == 1;
    if (wallSide == 0) wallSide = upright ? contact.normal.x : contact.normal.y;
    if (groundSide == 0) groundSide = upright ? contact.normal.y : contact.normal.x;
    return stands ? &platform : nullptr;
}

bool Player::pushOutOfTiles(const Vec3& travelled, float dt, int lowerMask, int upperMask) {
    if (!world_.grid) return true;
    TileBody body;
    body.bodyCentre = bodyCentre;
    body.up = up;
    body.lastPosition = lastPosition;
    body.velocity = dt > 0 ? travelled * (1 / dt) : Vec3{};
    body.dt = dt;
    body.crouching = crouching;
    body.lowerMask = lowerMask;
    body.upperMask = upperMask;
    body.wallSide = wallSide;
    body.groundSide = groundSide;
    const TileContact contact = collideWithTiles(*world_.grid, body);
    bodyCentre = contact.bodyCentre;
    wallSide = contact.wallSide;
    groundSide = contact.groundSide;
    return !contact.killed;
}

// --- Blows ------------------------------------------------------------------------------------------------

bool Player::overlaps(const Attack& attack, const Box& box) {
    return attack.boxMax.x > box.min.x && attack.boxMin.x < box.max.x && attack.boxMax.y > box.min.y &&
           attack.boxMin.y < box.max.y;
}

float Player::knockOf(const Attack& attack) const {
    const float attackCentre = (attack.boxMin.x + attack.boxMax.x) / 2;
    const float from = attack.direction.x != 0 ? attack.direction.x : position().x - attackCentre;
    return from > 0 ? 1.0f : -1.0f;
}

void Player::takeBlow() {
    flash = 1;
    if (world_.camera) {
        world_.camera->shakeAmplitude = heroConstants.shakeAmplitude;
        world_.camera->shakeDecay = heroConstants.shakeDecay;
    }
    playSoundAt("playerhurt", position());
    setWeapon(WeaponIndex::mainGun);
}

// --- Guns -------------------------------------------------------------------------------------------------

void Player::setWeapon(int index) {
    if (weapon && weapon->index == index) return;
    if (weapon && weapon->index > WeaponIndex::mainGun && gun_ && gun_->unit() && world_.actors) {
        const Zelkor::Unit& lost = *gun_->unit();
        world_.actors->spawn(SpawnType::weaponDrop, weaponName(weapon->index), lost.position, lost.orientation);
    }
    gun_.reset();
    weapon = PlayerWeapon::create(index, *this);
    gun_ = std::make_unique<HeldGun>(*unit, weaponName(weapon->index));
}

Vec3 Player::muzzlePoint(bool /*left*/) const {
    if (gun_ && gun_->unit()) return gun_->muzzle();
    return feet() + up * heroConstants.muzzleHeight +
           right * (static_cast<float>(facing) * heroConstants.muzzleReach);
}

bool Player::fire(bool left) {
    if (!weapon || !world_.actors) return false;
    return weapon->fire(playerTime(), muzzlePoint(left), static_cast<float>(facing), up, {});
}

// The gun has to be where the hand will be drawn, so the hero takes the pose of the coming frame here rather than
// on his way to the screen.
void Player::poseWithGun() {
    if (const Zelkor::EngineManagers* managers = Zelkor::engineManagers())
        unit->frameUpdate(managers->unitManager->frameNumber + 1);
    gun_->follow();
}

// --- Pickups ----------------------------------------------------------------------------------------------

void Player::collectPickups(const Vec3& boxMin, const Vec3& boxMax) {
    if (dead || !world_.actors) return;
    near_.clear();
    world_.actors->collectInRadius(GROUP_PICKUPS, position(), heroConstants.pickupReach, near_);
    for (Thingy* actor : near_) {
        auto* pickup = dynamic_cast<Pickup*>(actor);
        const Vec3 p = actor->position();
        const float half = heroConstants.pickupHalf;
        const bool touches = p.x + half > boxMin.x && p.x - half < boxMax.x && p.y + half > boxMin.y &&
                             p.y - half < boxMax.y;
        if (!pickup || pickup->removeMe || !touches) continue;
        takePickup(pickup->kind);
        pickup->collect();
    }
}

void Player::takePickup(int kind) {
    playSoundAt("pickup", position());
    if (kind == Pickup::cake)
        health = std::min(health + 1, maxHealth);
    else if (kind == Pickup::wholeCake)
        health = maxHealth;
    else
        setWeapon(kind - Pickup::firstGun + 1);
}

void Player::updateFlash(float /*time*/, float dt) {
    if (flash == 0) return;
    if (!dead) flash = Zelkor::clamp(flash - heroConstants.flashFade * dt, 0, 1);
    // The blink is at its reddest at 0, where it has to have ended.
    tint(flash > 0 ? Zelkor::clamp(Zelkor::cosine(heroConstants.flashBlink * flash), 0, 1) : 0);
}

void Player::setGravityFrame(const Vec3& newUp, const Vec3& newRight) {
    inGravityField = true;
    const Vec3 inWorld = worldVelocity();
    up = newUp;
    right = newRight;
    velocity = {dot(inWorld, right), dot(inWorld, up), 0};
    input.mapping[0] = {1, 0, 0};
    input.mapping[1] = {0, 1, 0};
    targetRoll = 0;
    if (up.y < -0.5f) {
        targetRoll = Zelkor::pi;
        input.mapping[1] = {0, -1, 0};
    } else if (Zelkor::absolute(up.x) > 0.5f) {
        targetRoll = up.x > 0 ? -Zelkor::pi / 2 : Zelkor::pi / 2;
        input.mapping[0] = {0, 1, 0};
        input.mapping[1] = {1, 0, 0};
    }
}

Vec3 Player::feet() const {
    return bodyCentre - up * heroConstants.feetBelowCentre;
}

Vec3 Player::worldVelocity() const {
    return right * velocity.x + up * velocity.y;
}

float Player::playerTime() const {
    return timer ? static_cast<float>(timer->total) : 0;
}
