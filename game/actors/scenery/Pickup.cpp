#include "actors/scenery/Pickup.h"

#include "actors/ThingyManager.h"
#include "game/Game.h"
#include "game/GameCamera.h"
#include "resources/Unit.h"
#include "world/TileGrid.h"

#include <iterator>

using namespace Zelkor;

namespace {

const SpawnRow row{SpawnType::pickup, createActor<Pickup>};

// By kind.
constexpr const char* unitNames[] = {"pickups/cake1", "pickups/cake2", "spreadgun", "hominggun",
                                     "rocketgun",     "lasergun",      "bouncegun"};

constexpr float growth = 6; // of the scale, per second
constexpr float smallest = 0.01f;
constexpr float gravity = 300, fastestFall = -150, fastestRise = 200;
constexpr float lifetime = 10, shrinkTime = 1; // seconds; it shrinks during the last of them
constexpr float farOff = 1.5f;                 // screen distance

} // namespace

Pickup::Pickup(Unit& ownUnit) : Thingy(ownUnit, GROUP_PICKUPS) {
    for (int i = 0; i < static_cast<int>(std::size(unitNames)); ++i)
        if (ownUnit.name() == unitNames[i]) kind = i;
    ownUnit.scale = {smallest, smallest, smallest};
}

void Pickup::setParameter(int index, float value) {
    if (index == 0) kind = static_cast<int>(value);
    if (index == 1 && value == 0) dropped_ = false;
}

void Pickup::update(float time, float dt) {
    age_ += dt;
    float scale = clamp(growth * age_, smallest, 1);
    if (dropped_) {
        fall(dt);
        scale *= clamp((lifetime - age_) / shrinkTime, smallest, 1);
        const GameCamera* camera = Game::get().camera();
        if (age_ > lifetime || (camera && camera->screenDistance(position()) > farOff)) removeMe = true;
    }
    unit->scale = {scale, scale, scale};
    updateFlash(time, dt);
}

void Pickup::fall(float dt) {
    velocity.y = clamp(velocity.y - gravity * dt, fastestFall, fastestRise);
    unit->position.y += velocity.y * dt;
    const TileGrid* grid = Game::get().tileGrid();
    const TileRecord* ground = grid ? grid->tileAt(position(), TileType::solid) : nullptr;
    if (!ground || velocity.y > 0) return;
    unit->position.y = ground->surfaceHeight();
    velocity.y = 0;
}

void Pickup::collect() {
    removeMe = true;
    notifyDeath(*this);
}
