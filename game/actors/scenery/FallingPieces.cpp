// What has come loose and flies out of the picture: pieces of broken tiles, and guns knocked out of a hand.
#include "actors/ThingyManager.h"
#include "resources/Unit.h"

using namespace Zelkor;

namespace {

constexpr float gravity = 300;
constexpr float lifetime = 1.5f; // seconds

class FallingPiece : public Thingy {
  public:
    explicit FallingPiece(Unit& ownUnit) : Thingy(ownUnit, GROUP_SCENERY) {}

    void update(float time, float dt) override {
        age_ += dt;
        velocity.y -= gravity * dt;
        unit->position += velocity * dt;
        if (age_ > lifetime) removeMe = true;
        updateFlash(time, dt);
    }
    int onHit(const Attack&) override { return 0; }

  private:
    float age_ = 0; // seconds
};

using TileFallThingy = FallingPiece;

class WeaponDropThingy : public FallingPiece {
  public:
    explicit WeaponDropThingy(Unit& ownUnit) : FallingPiece(ownUnit) {
        ownUnit.scale = {scale, scale, scale};
        velocity = thrown;
    }

    void update(float time, float dt) override {
        Vec3 axis = spinAxis;
        normalize(axis);
        quatMultiply(unit->orientation, quatFromAxisAngle(spinSpeed * dt, axis), unit->orientation);
        FallingPiece::update(time, dt);
    }

  private:
    static constexpr float scale = 1.3f;
    static constexpr float spinSpeed = 8; // radians per second
    static constexpr Vec3 thrown{40, 60, 20}, spinAxis{0.4f, 0.1f, 0.7f};
};

const SpawnRow pieceRow{SpawnType::tileFall, createActor<TileFallThingy>};
const SpawnRow weaponRow{SpawnType::weaponDrop, createActor<WeaponDropThingy>};

} // namespace
