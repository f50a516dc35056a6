// A splash of blood that runs down and is gone after half a second.
#include "actors/ThingyManager.h"
#include "render/MaterialManager.h"
#include "resources/Unit.h"

using namespace Zelkor;

namespace {

constexpr float lifetime = 0.5f;    // seconds
constexpr float scrollSpeed = 2.5f; // of its texture, per second
constexpr float scrollEnd = 0.7f;

class BloodSplatter : public Thingy {
  public:
    explicit BloodSplatter(Unit& ownUnit) : Thingy(ownUnit, GROUP_SCENERY) {}

    void update(float time, float dt) override {
        age_ += dt;
        if (!unit->items.empty())
            MaterialManager::setShaderParam(unit->items.front().ownMaterial(), "scroll",
                                            -clamp(age_ * scrollSpeed, 0, scrollEnd));
        if (age_ > lifetime) removeMe = true;
        updateFlash(time, dt);
    }
    int onHit(const Attack&) override { return 0; }

  private:
    float age_ = 0; // seconds
};

const SpawnRow row{SpawnType::bloodSplatter, createActor<BloodSplatter>};

} // namespace
