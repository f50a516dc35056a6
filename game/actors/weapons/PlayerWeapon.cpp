#include "actors/weapons/PlayerWeapon.h"

#include "actors/ThingyManager.h"
#include "actors/player/Player.h"
#include "actors/weapons/Bullet.h"
#include "core/EngineManagers.h"
#include "core/Random.h"
#include "fx/ParticleManager.h"
#include "game/Game.h"
#include "resources/Unit.h"

#include <vector>

using namespace Zelkor;

namespace {

constexpr const char* weaponNames[WeaponIndex::count] = {"maingun",   "spreadgun", "hominggun",
                                                         "rocketgun", "lasergun",  "bouncegun"};

constexpr float longAgo = -10; // of a slot that has not been used
constexpr float freeAtOnce = -1;

// Launch speeds, units per second, and the seconds until a slot may shoot again.
constexpr float defaultSpeed = 110, defaultInterval = 0.9f;
constexpr float spreadSpeed = 130, spreadInterval = 0.7f, spreadAngle = 0.08f * pi;
constexpr float homingSpeed = 70, homingInterval = 0.7f, homingScatter = 0.2f * pi;
constexpr float rocketSpeed = 40, rocketInterval = 0.5f;
constexpr float laserSpeed = 150, laserInterval = 0.2f;
constexpr float bounceSpeed = 60;

// Guns that need a free slot for each shot.
class SlotWeapon : public PlayerWeapon {
  public:
    bool fire(float time, const Vec3& muzzle, float facing, const Vec3& up, const Vec3& carry) override {
        for (std::size_t slot = 0; slot < lastShots_.size(); ++slot) {
            if (!(lastShots_[slot] + interval_ < time)) continue;
            lastShots_[slot] = time;
            const Shot shot{muzzle, shotOrientation(facing, up), carry};
            shoot(shot, slot);
            flash(shot);
            return true;
        }
        return false;
    }

  protected:
    SlotWeapon(Player& owner, int ownIndex, std::size_t slots, float interval)
        : PlayerWeapon(owner, ownIndex), lastShots_(slots, longAgo), interval_(interval) {}
    virtual void shoot(const Shot& shot, std::size_t slot) = 0;

    std::vector<float> lastShots_; // seconds

  private:
    float interval_;
};

// Guns that know their bullets: a slot is free again as soon as its bullet is gone.
class NumberedWeapon : public SlotWeapon {
  public:
    void shotGone(int shotId) override {
        for (std::size_t slot = 0; slot < shotIds_.size(); ++slot)
            if (shotIds_[slot] == shotId) lastShots_[slot] = freeAtOnce;
    }

  protected:
    NumberedWeapon(Player& owner, int ownIndex, float interval)
        : SlotWeapon(owner, ownIndex, slots, interval) {}
    void number(Bullet* bullet, std::size_t slot) {
        shotIds_[slot] += static_cast<int>(slots);
        if (bullet) bullet->shotId = shotIds_[slot];
    }

  private:
    static constexpr std::size_t slots = 3;
    std::array<int, slots> shotIds_{0, 1, 2};
};

class DefaultWeapon : public NumberedWeapon {
  public:
    explicit DefaultWeapon(Player& owner) : NumberedWeapon(owner, WeaponIndex::mainGun, defaultInterval) {}

  protected:
    void shoot(const Shot& shot, std::size_t slot) override {
        number(launch(SpawnType::playerBullet, shot, defaultSpeed), slot);
    }
};

class SpreadGunWeapon : public SlotWeapon {
  public:
    explicit SpreadGunWeapon(Player& owner) : SlotWeapon(owner, WeaponIndex::spreadGun, 2, spreadInterval) {}

  protected:
    void shoot(const Shot& shot, std::size_t) override {
        for (const float angle : {-spreadAngle, 0.0f, spreadAngle})
            launch(SpawnType::bullet, shot, spreadSpeed, angle);
    }
};

class HomingWeapon : public NumberedWeapon {
  public:
    explicit HomingWeapon(Player& owner) : NumberedWeapon(owner, WeaponIndex::homingGun, homingInterval) {}

  protected:
    void shoot(const Shot& shot, std::size_t slot) override {
        const float angle = (2 * randomUniform() - 1) * homingScatter;
        number(launch(SpawnType::homingBullet, shot, homingSpeed, angle), slot);
    }
};

class RocketWeapon : public SlotWeapon {
  public:
    explicit RocketWeapon(Player& owner) : SlotWeapon(owner, WeaponIndex::rocketGun, 1, rocketInterval) {}

  protected:
    void shoot(const Shot& shot, std::size_t) override {
        launch(SpawnType::rocketBullet, shot, rocketSpeed);
    }
};

class LaserWeapon : public SlotWeapon {
  public:
    explicit LaserWeapon(Player& owner) : SlotWeapon(owner, WeaponIndex::laserGun, 3, laserInterval) {}

  protected:
    void shoot(const Shot& shot, std::size_t) override { launch(SpawnType::laserBullet, shot, laserSpeed); }
};

class BounceWeapon : public PlayerWeapon {
  public:
    explicit BounceWeapon(Player& owner) : PlayerWeapon(owner, WeaponIndex::bounceGun) {}

    bool fire(float, const Vec3& muzzle, float facing, const Vec3& up, const Vec3& carry) override {
        const Shot shot{muzzle, shotOrientation(facing, up), carry};
        launch(SpawnType::bounceBullet, shot, bounceSpeed);
        flash(shot);
        return true;
    }
};

} // namespace

const char* weaponName(int index) {
    return weaponNames[index > 0 && index < WeaponIndex::count ? index : 0];
}

PlayerWeapon::PlayerWeapon(Player& owner, int ownIndex)
    : targetGroup(GROUP_ENEMIES), index(ownIndex), owner_(owner) {}

std::unique_ptr<PlayerWeapon> PlayerWeapon::create(int index, Player& owner) {
    switch (index) {
    case WeaponIndex::spreadGun: return std::make_unique<SpreadGunWeapon>(owner);
    case WeaponIndex::homingGun: return std::make_unique<HomingWeapon>(owner);
    case WeaponIndex::rocketGun: return std::make_unique<RocketWeapon>(owner);
    case WeaponIndex::laserGun: return std::make_unique<LaserWeapon>(owner);
    case WeaponIndex::bounceGun: return std::make_unique<BounceWeapon>(owner);
    default: return std::make_unique<DefaultWeapon>(owner);
    }
}

Quat PlayerWeapon::shotOrientation(float facing, const Vec3& up) {
    if (up.y < -0.5f || up.x > 0.5f) facing = -facing;
    float roll = 0;
    if (up.y < -0.5f) roll = pi;
    if (up.x > 0.5f) roll = -pi / 2;
    if (up.x < -0.5f) roll = pi / 2;
    Quat orientation;
    return quatMultiply(orientation, quatFromAxisAngle(roll, {0, 0, 1}),
                        quatFromAxisAngle(facing * pi / 2 - pi / 2, {0, 1, 0}));
}

Bullet* PlayerWeapon::launch(int spawnType, const Shot& shot, float speed, float spread) {
    Quat orientation;
    quatMultiply(orientation, shot.orientation, quatFromAxisAngle(spread, {0, 0, 1}));
    auto* bullet = dynamic_cast<Bullet*>(
        Game::get().thingyManager->spawn(spawnType, "bullet", shot.muzzle, orientation));
    if (!bullet) return nullptr;
    bullet->targetGroup = targetGroup;
    bullet->setSpeed(speed);
    bullet->unit->position += shot.carry;
    return bullet;
}

void PlayerWeapon::flash(const Shot& shot) {
    engineManagers()->particleManager->createEffect("main_gun_flash", shot.muzzle, shot.orientation);
}
