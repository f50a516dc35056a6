#include "actors/rides/MovingLadder.h"

#include "actors/ThingyManager.h"
#include "render/MaterialManager.h"
#include "resources/Unit.h"
#include "world/TileGrid.h"

using namespace Zelkor;

namespace {

const SpawnRow row{SpawnType::movingLadder, createActor<MovingLadder>};

} // namespace

MovingLadder::MovingLadder(Unit& ownUnit) : Thingy(ownUnit, GROUP_RIDES) {
    path_.start = ownUnit.position;
    quatAxisX(path_.direction, ownUnit.orientation);
    path_.length = 0;
    ownUnit.orientation = {};
    place();
}

void MovingLadder::setParameter(int index, float value) {
    if (index == 0)
        height = value;
    else
        path_.setParameter(index - 1, value);
    place();
}

void MovingLadder::update(float time, float dt) {
    const Vec3 from = foot();
    path_.advance(dt);
    place();
    lastMove_ = foot() - from;
    updateFlash(time, dt);
}

// The plate of one cell is stretched over the whole height, and draws as many more rungs.
void MovingLadder::place() {
    const float cells = height / tileSize;
    unit->position = foot() + Vec3{0, (height - tileSize) / 2, 0};
    unit->scale.y = cells;
    if (!unit->items.empty())
        MaterialManager::setShaderParam(unit->items.front().ownMaterial(), "scaleY", cells);
}
