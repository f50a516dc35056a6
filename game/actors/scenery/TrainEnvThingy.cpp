// What the train passes: it comes from ahead, runs by and comes again. The train itself stands still.
#include "actors/ThingyManager.h"
#include "game/Game.h"
#include "game/GameCamera.h"
#include "resources/Unit.h"

#include <algorithm>
#include <cmath>

using namespace Zelkor;

namespace {

constexpr float trainSpeed = 150; // units per second
constexpr float outOfSight = 20;  // beyond the edge of the view, world units

class TrainEnvThingy : public Thingy {
  public:
    explicit TrainEnvThingy(Unit& ownUnit) : Thingy(ownUnit, GROUP_BACKDROP) {}

    void update(float, float dt) override {
        unit->position.x -= speed_ * dt;
        if (const GameCamera* camera = Game::get().camera()) comeAgain(*camera);
    }
    int onHit(const Attack&) override { return 0; }
    // 0: speed, units per second; 1: the way after which it comes again.
    void setParameter(int index, float value) override {
        if (index == 0) speed_ = value;
        if (index == 1) way_ = value;
    }

  private:
    // Its right end stays within one way of the left edge of what the view shows at its depth. The way is long
    // enough for it to leave and to come in unseen.
    void comeAgain(const GameCamera& camera) {
        const float depth = camera.view.position.z - position().z;
        const float half = depth * std::tan(camera.view.fieldOfView * pi / 180 / 2) * camera.view.aspect;
        const float left = camera.view.position.x - half - outOfSight;
        const float width = (unit->mesh->boxMax.x - unit->mesh->boxMin.x) * unit->scale.x;
        const float way = std::max(way_, 2 * (half + outOfSight) + width);
        const float rightEnd = position().x + unit->mesh->boxMax.x * unit->scale.x;
        unit->position.x -= way * std::floor((rightEnd - left) / way);
    }

    float speed_ = trainSpeed;
    float way_ = 0; // world units; 0: as long as it has to be
};

const SpawnRow row{7, createActor<TrainEnvThingy>};

} // namespace
