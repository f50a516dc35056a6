#include "actors/enemies/Enemy.h"

#include "actors/ActorSound.h"
#include "actors/ThingyManager.h"
#include "animation/SkeletonInstance.h"
#include "core/EngineManagers.h"
#include "fx/ParticleManager.h"
#include "game/Game.h"
#include "game/GameCamera.h"
#include "resources/Unit.h"

#include <algorithm>
#include <cmath>
#include <vector>

using namespace Zelkor;

namespace {

constexpr const char* gunJoint = "gunJoint";
constexpr Vec3 muzzleInGun{-4, 5, 0}; // from the gun's joint, in its frame; its x axis runs along the barrel
constexpr Vec3 muzzleWithoutGun{8, 12, 0}; // from the feet of who faces right
constexpr int additiveLayer = 2;

int jointOf(const Unit& unit, const std::string& name) {
    return unit.skeleton ? unit.skeleton->findJoint(name) : -1;
}

// As it is posed at this moment, not as it was drawn last.
const JointState& posedJoint(const Unit& unit, int joint) {
    unit.skeleton->updateSkeleton();
    return unit.skeleton->joints[static_cast<std::size_t>(joint)];
}

Vec3 turned(const Quat& rotation, const Vec3& v) {
    Vec3 out;
    return quatRotate(out, rotation, v);
}

} // namespace

bool Box::overlaps(const Attack& attack) const {
    return attack.boxMax.x > min.x && attack.boxMin.x < max.x && attack.boxMax.y > min.y &&
           attack.boxMin.y < max.y;
}

Box boxAround(const Vec3& point, const Vec3& below, const Vec3& above) {
    return {point + below, point + above};
}

Enemy::Enemy(Unit& ownUnit, float fullHealth) : Thingy(ownUnit, GROUP_ENEMIES) {
    health = maxHealth = fullHealth;
    Vec3 forward;
    quatAxisX(forward, ownUnit.orientation);
    facing = forward.x < 0 ? -1 : 1;
}

int Enemy::onHit(const Attack& attack) {
    if (!vulnerable() || !hitBox().overlaps(attack)) return 0;
    health -= attack.damage;
    flash = 1;
    playSoundAt("hit", position());
    if (health <= 0) die(attack);
    return 1;
}

void Enemy::leave() {
    if (removeMe) return;
    removeMe = true;
    notifyDeath(*this);
}

void Enemy::turn(float dt, float rate) {
    const Quat target = facingRotation(static_cast<float>(facing));
    quatSlerp(unit->orientation, unit->orientation, target, clamp(rate * dt, 0, 1), true);
}

bool Enemy::touch(int whom, const Box& box, float damage) {
    Attack attack;
    attack.attacker = this;
    attack.boxMin = box.min;
    attack.boxMax = box.max;
    attack.damage = damage;
    attack.direction = velocity;
    return Game::get().thingyManager->hitGroup(whom, attack, false) != 0;
}

Thingy* Enemy::nearestHero() const {
    return Game::get().thingyManager->nearest(GROUP_PLAYER, position());
}

bool Enemy::heroIn(const Box& box) const {
    std::vector<Thingy*> found;
    Game::get().thingyManager->collectInBox(GROUP_PLAYER, box.min, box.max, found);
    return !found.empty();
}

float Enemy::screenDistance() const {
    const GameCamera* camera = Game::get().camera();
    return camera ? camera->screenDistance(position()) : 0;
}

Vec2 Enemy::screenPlace() const {
    const GameCamera* camera = Game::get().camera();
    if (!camera) return {0.5f, 0.5f};
    const Vec3 place = camera->view.project(position());
    return {place.x, place.y};
}

Animation* Enemy::play(const std::string& clip, float fade, float speed) {
    Animation* played = unit->skeleton ? unit->skeleton->play(clip, fade) : nullptr;
    if (played) played->speed = speed;
    return played;
}

Animation* Enemy::playOnce(const std::string& clip, float fade, float speed) {
    Animation* played = play(clip, fade, speed);
    if (played) played->loop = false;
    return played;
}

void Enemy::chain(const std::string& clip, const std::string& next, float blend) {
    Animation* first = unit->skeleton ? unit->skeleton->animation(clip) : nullptr;
    if (!first) return;
    first->defaultNextName = next;
    first->defaultNextBlendTime = blend;
}

void Enemy::makeAdditive(const std::string& clip) {
    Animation* animation = unit->skeleton ? unit->skeleton->animation(clip) : nullptr;
    if (!animation) return;
    animation->additive = true;
    animation->layer = additiveLayer;
}

void Enemy::playOnly(const std::string& clip, const std::vector<std::string>& names, int layer) {
    Animation* played = unit->skeleton ? unit->skeleton->animation(clip) : nullptr;
    if (!played) return;
    const auto& paths = unit->skeleton->data->jointNames;
    for (std::size_t joint = 0; joint < paths.size(); ++joint)
        played->jointMask[joint] = std::none_of(names.begin(), names.end(), [&](const std::string& name) {
            return paths[joint].find(name) != std::string::npos;
        });
    played->layer = layer;
    unit->skeleton->play(clip);
}

void Enemy::shiftJoint(const std::string& name, const Vec3& offset) {
    const int joint = jointOf(*unit, name);
    if (joint < 0) return;
    auto& overrides = unit->skeleton->overrides;
    auto shift = std::find_if(overrides.begin(), overrides.end(),
                              [&](const JointOverride& known) { return known.joint == joint; });
    if (shift == overrides.end()) shift = overrides.emplace(shift);
    shift->joint = joint;
    shift->offsetPosition = true;
    shift->offset = offset;
}

Vec3 Enemy::jointPoint(const std::string& name, const Vec3& inJoint, const Vec3& fallback) const {
    const int joint = jointOf(*unit, name);
    if (joint < 0) return position() + turned(facingRotation(static_cast<float>(facing)), fallback);
    const JointState& state = posedJoint(*unit, joint);
    const Vec3 inUnit = state.worldPosition + turned(state.worldRotation, inJoint);
    return position() + turned(unit->orientation, scaled(inUnit, unit->scale));
}

Vec3 Enemy::muzzle() const {
    return jointPoint(gunJoint, muzzleInGun, muzzleWithoutGun);
}

Vec3 Enemy::gunDirection() const {
    const float side = static_cast<float>(facing);
    const int joint = jointOf(*unit, gunJoint);
    if (joint < 0) return {side, 0, 0};
    const Vec3 barrel = turned(unit->orientation, turned(posedJoint(*unit, joint).worldRotation, {1, 0, 0}));
    // Who is still turning shoots to the side he turns to all the same.
    const float flat = std::hypot(barrel.x, barrel.z);
    Vec3 direction{flat * side, barrel.y, 0};
    normalize(direction);
    return direction;
}

void Enemy::fireShot() {
    shoot(gunDirection());
}

void Enemy::fireShotAt(const Vec3& target) {
    Vec3 direction = target - muzzle();
    direction.z = 0;
    shoot(normalize(direction) > 0 ? direction : gunDirection());
}

void Enemy::shoot(const Vec3& direction) {
    const Vec3 from = muzzle();
    // The elevation first, then the side: nothing flies upside down.
    const float side = direction.x < 0 ? -1.0f : 1.0f;
    Quat orientation;
    quatMultiply(orientation, facingRotation(side),
                 quatFromAxisAngle(std::atan2(direction.y, side * direction.x), {0, 0, 1}));
    playSoundAt("shot1", from);
    engineManagers()->particleManager->createEffect("turret_flash", from, orientation);
    Game::get().thingyManager->spawn(SpawnType::bullet, "bullet", from, orientation);
}

void startEffect(const char* name, const Vec3& position) {
    engineManagers()->particleManager->createEffect(name, position);
}
