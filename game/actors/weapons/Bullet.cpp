#include "actors/weapons/Bullet.h"

#include "actors/ThingyManager.h"
#include "actors/player/Player.h"
#include "actors/weapons/PlayerWeapon.h"
#include "core/EngineManagers.h"
#include "fx/ParticleManager.h"
#include "game/Game.h"
#include "game/GameCamera.h"
#include "resources/Unit.h"
#include "world/TileGrid.h"

#include <optional>

using namespace Zelkor;

namespace {

constexpr float firstSpeed = 85;
constexpr Vec3 bulletHalf{1, 0.8f, 1};
constexpr float bulletDamage = 1;
constexpr float offScreen = 1.1f;
constexpr Vec4 bulletTint{1, 0.5f, 0.5f, 1};
constexpr float streakLeft = 0.01f, streakRight = 0.47f; // of the image
constexpr float glowSize = 3;                            // along the flight
constexpr const char* hitEffect = "bullet_hit";

// The bullets of the hero's own guns tell the gun when they are gone.
class ReportedBullet : public Bullet {
  public:
    using Bullet::Bullet;
    ~ReportedBullet() override {
        const Game* game = Game::current();
        if (!game || !game->thingyManager) return;
        auto* hero = dynamic_cast<Player*>(game->thingyManager->nearest(GROUP_PLAYER, position()));
        if (hero && hero->weapon) hero->weapon->shotGone(shotId);
    }
};

class PlayerStandardBullet : public ReportedBullet {
  public:
    explicit PlayerStandardBullet(Unit& ownUnit) : ReportedBullet(ownUnit) {}
};

class HomingBullet : public ReportedBullet {
  public:
    explicit HomingBullet(Unit& ownUnit) : ReportedBullet(ownUnit, "sprites/homingbullet") {}

    void update(float, float dt) override {
        age_ += dt;
        const auto wanted = age_ < seekTime ? wantedRise() : std::nullopt;
        if (wanted)
            velocity.y = velocity.y * (1 - seekRate * dt) + *wanted * seekRate * dt;
        else
            velocity.y *= 1 - levelRate * dt;
        velocity.x = velocity.x * (1 - dt) + topSpeed * dt * (velocity.x < 0 ? -1.0f : 1.0f);
        fly(dt);
        placeSprites();
    }

  private:
    static constexpr float seekTime = 0.4f; // seconds
    static constexpr float lookAhead = 40, seekRadius = 100;
    static constexpr float steering = 5, fastestRise = 100;
    static constexpr float seekRate = 4, levelRate = 7; // per second
    static constexpr float topSpeed = 90;

    // The vertical speed towards the target, none without one.
    std::optional<float> wantedRise() const {
        Vec3 way = velocity;
        normalize(way);
        const Vec3 ahead = position() + way * lookAhead;
        const Thingy* target = Game::get().thingyManager->nearest(targetGroup, ahead);
        if (!target || distance(target->position(), ahead) > seekRadius) return std::nullopt;
        const float rise = target->position().y + target->aimOffset.y - position().y;
        return clamp(steering * rise, -fastestRise, fastestRise);
    }

    float age_ = 0; // seconds
};

class RocketBullet : public Bullet {
  public:
    explicit RocketBullet(Unit& ownUnit) : Bullet(ownUnit) {
        flame_ = engineManagers()->particleManager->createEffect("rocket", position(), ownUnit.orientation);
    }
    ~RocketBullet() override {
        if (const EngineManagers* managers = engineManagers()) managers->particleManager->release(flame_);
    }

    void update(float, float dt) override {
        velocity += forward() * acceleration * dt;
        unit->position += velocity * dt;
        if (flame_) flame_->setTransform(position(), unit->orientation);
        if (hits({{2, 1.8f, 1}, 1}) || inWall())
            explode();
        else
            leaveScreen();
        placeSprites(6, 1.6f);
    }

  private:
    static constexpr float acceleration = 80;
    static constexpr float blastRadius = 5, blastDepth = 10, blastDamage = 4;
    static constexpr float bridgeForce = 1;
    static constexpr float shake = 0.6f, shakeDecay = 2;

    void explode() {
        removeMe = true;
        if (TileGrid* grid = Game::get().tileGrid()) grid->breakBridges(position(), blastRadius, bridgeForce);
        Attack blast;
        blast.attacker = this;
        blast.boxMin = position() - Vec3{blastRadius, blastRadius, blastDepth};
        blast.boxMax = position() + Vec3{blastRadius, blastRadius, blastDepth};
        blast.damage = blastDamage;
        Game::get().thingyManager->hitGroup(targetGroup, blast, true);
        engineManagers()->particleManager->createEffect("bomb1_explosion", position());
        if (GameCamera* camera = Game::get().camera()) {
            camera->shakeAmplitude = shake;
            camera->shakeDecay = shakeDecay;
        }
    }

    EffectInstance* flame_ = nullptr;
};

class LaserBullet : public Bullet {
  public:
    explicit LaserBullet(Unit& ownUnit) : Bullet(ownUnit) {}

    void update(float, float dt) override {
        unit->position += velocity * dt;
        cooldown_ -= dt;
        if (cooldown_ <= 0 && hits({bulletHalf, 2})) cooldown_ = pause;
        leaveScreen();
        placeSprites(8, 0.6f);
    }

  private:
    static constexpr float pause = 0.2f; // seconds between two hits
    float cooldown_ = 0;
};

// A train of four, of which only the first hurts.
class BounceBullet : public Bullet {
  public:
    explicit BounceBullet(Unit& ownUnit)
        : Bullet(ownUnit), launchPoint_(ownUnit.position), launchOrientation_(ownUnit.orientation) {}

    void update(float, float dt) override {
        if (age_ > followAfter && !followed_ && generation_ < lastGeneration) follow();
        bounce(dt);
        age_ += dt;
        if (age_ > lifetime) removeMe = true;
        cooldown_ -= dt;
        if (generation_ == 0 && cooldown_ <= 0 && hits({bulletHalf, 3})) cooldown_ = pause;
        spin_ += spinSpeed * dt;
        placeBall();
    }

  private:
    static constexpr float followAfter = 0.04f, lifetime = 2, pause = 0.2f; // seconds
    static constexpr int lastGeneration = 3;
    static constexpr float gravity = 300, feel = 4; // feel: to a tile, world units
    static constexpr float kept = -0.9f;            // of the speed in a bounce
    static constexpr float size = 4, fade = 0.2f;   // fade: per generation
    static constexpr float spinSpeed = 9;           // radians per second

    void follow() {
        followed_ = true;
        auto* next = dynamic_cast<BounceBullet*>(Game::get().thingyManager->spawn(
            SpawnType::bounceBullet, "bullet", launchPoint_, launchOrientation_));
        if (!next) return;
        next->generation_ = generation_ + 1;
        next->targetGroup = targetGroup;
        next->setSpeed(launchSpeed_);
    }

    void bounce(float dt) {
        if (launchSpeed_ == 0) launchSpeed_ = length(velocity);
        velocity.y -= gravity * dt;
        const TileGrid* grid = Game::get().tileGrid();
        const auto solid = [&](const Vec3& offset) {
            return grid && grid->tileAt(position() + offset, TileType::solid);
        };
        if (velocity.y < 0 && solid({0, -feel, 0})) velocity.y *= kept;
        if (solid({velocity.x < 0 ? -feel : feel, 0, 0})) velocity.x *= kept;
        unit->position += velocity * dt;
    }

    void placeBall() {
        const float generation = static_cast<float>(generation_);
        const float scale = clamp(clamp(lifetime - age_, 0, 1) - fade * generation, 0, 1);
        glow_->middle = position();
        glow_->halfRight = Vec3{cosine(spin_), sine(spin_), 0} * (size * scale / 2);
        glow_->halfUp = Vec3{-sine(spin_), cosine(spin_), 0} * (size * scale / 2);
        glow_->colour = {0.7f, 0.4f, 1, 1 - fade * generation};
        streak_->colour.w = 0;
    }

    Vec3 launchPoint_;
    Quat launchOrientation_;
    float launchSpeed_ = 0;
    float age_ = 0, cooldown_ = 0, spin_ = 0;
    int generation_ = 0;
    bool followed_ = false;
};

const SpawnRow rows[] = {{SpawnType::bullet, [](Unit& unit) -> std::unique_ptr<Thingy> {
                              return std::make_unique<Bullet>(unit);
                          }},
                         {SpawnType::homingBullet, createActor<HomingBullet>},
                         {SpawnType::rocketBullet, createActor<RocketBullet>},
                         {SpawnType::laserBullet, createActor<LaserBullet>},
                         {SpawnType::bounceBullet, createActor<BounceBullet>},
                         {SpawnType::playerBullet, createActor<PlayerStandardBullet>}};

} // namespace

Bullet::Bullet(Unit& ownUnit, const char* spriteList) : Thingy(ownUnit, GROUP_BULLETS), targetGroup(GROUP_PLAYER) {
    ownUnit.visible = false;
    SpriteLists& sprites = engineManagers()->particleManager->sprites();
    glow_ = sprites.add(spriteList);
    streak_ = sprites.add(spriteList);
    glow_->left = streakRight;
    streak_->left = streakLeft;
    streak_->right = streakRight;
    glow_->colour = streak_->colour = bulletTint;
    setSpeed(firstSpeed);
    placeSprites();
}

Vec3 Bullet::forward() const {
    Vec3 axis;
    return quatAxisX(axis, unit->orientation);
}

void Bullet::setSpeed(float speed) {
    velocity = forward() * speed;
}

void Bullet::update(float, float dt) {
    fly(dt);
    placeSprites();
}

void Bullet::fly(float dt) {
    unit->position += velocity * dt;
    if (hits({bulletHalf, bulletDamage}) || inWall())
        burst();
    else
        leaveScreen();
}

bool Bullet::hits(const Reach& reach, bool all) {
    Attack attack;
    attack.attacker = this;
    attack.boxMin = position() - reach.half;
    attack.boxMax = position() + reach.half;
    attack.damage = reach.damage;
    attack.direction = velocity;
    return Game::get().thingyManager->hitGroup(targetGroup, attack, all) != 0;
}

bool Bullet::inWall() const {
    const TileGrid* grid = Game::get().tileGrid();
    return (grid && grid->tileAt(position(), TileType::solid)) ||
           Game::get().thingyManager->solidPlatformAt(position());
}

void Bullet::burst() {
    removeMe = true;
    engineManagers()->particleManager->createEffect(hitEffect, position(), unit->orientation);
}

void Bullet::leaveScreen() {
    const GameCamera* camera = Game::get().camera();
    if (!camera || camera->screenDistance(position()) <= offScreen) return;
    const Vec3 from = camera->view.project(position()), to = camera->view.project(position() + velocity * 0.01f);
    const auto outward = [](float place, float next) { return (2 * place - 1) * (next - place) > 0; };
    if (outward(from.x, to.x) || outward(from.y, to.y)) removeMe = true;
}

void Bullet::placeSprites(float streakLength, float width) {
    Vec3 along = velocity;
    if (normalize(along) == 0) along = forward();
    const Vec3 across{-along.y * width, along.x * width, 0};
    glow_->middle = position();
    glow_->halfRight = along * (glowSize / 2);
    glow_->halfUp = across;
    streak_->middle = position() - along * (streakLength / 2);
    streak_->halfRight = along * (streakLength / 2);
    streak_->halfUp = across;
}
