// The guns. A weapon decides when a shot may leave and what leaves; the bullets do the rest.
#pragma once

#include "math/Math.h"

#include <array>
#include <memory>

class Bullet;
class Player;

namespace WeaponIndex {
enum { mainGun, spreadGun, homingGun, rocketGun, laserGun, bounceGun, count };
}

// Its pickup and the gun in the hand; that of the default gun for an index that no weapon has.
const char* weaponName(int index);

class PlayerWeapon {
  public:
    virtual ~PlayerWeapon() = default;
    PlayerWeapon(const PlayerWeapon&) = delete;

    // The default gun for an index that no weapon has.
    static std::unique_ptr<PlayerWeapon> create(int index, Player& owner);

    // time: of the owner's timer, seconds. facing: +1 or -1. up: the owner's. carry: added to the place of each
    // bullet. False when no shot may leave yet.
    virtual bool fire(float time, const Zelkor::Vec3& muzzle, float facing, const Zelkor::Vec3& up,
                      const Zelkor::Vec3& carry) = 0;
    // The bullet of that shot is gone.
    virtual void shotGone(int /*shotId*/) {}

    int targetGroup;
    const int index;

  protected:
    PlayerWeapon(Player& owner, int ownIndex);

    // Where a shot flies from and how it lies in the world.
    struct Shot {
        Zelkor::Vec3 muzzle;
        Zelkor::Quat orientation;
        Zelkor::Vec3 carry;
    };
    static Zelkor::Quat shotOrientation(float facing, const Zelkor::Vec3& up);
    // speed: units per second along the orientation turned by spread about the view axis, radians.
    Bullet* launch(int spawnType, const Shot& shot, float speed, float spread = 0);
    static void flash(const Shot& shot);

    Player& owner_;
};
