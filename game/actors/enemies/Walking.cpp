#include "actors/enemies/Walking.h"

#include "actors/ThingyManager.h"
#include "actors/platforms/Platform.h"
#include "game/Game.h"
#include "resources/Unit.h"
#include "world/TileGrid.h"

#include <algorithm>
#include <vector>

using namespace Zelkor;

namespace {

constexpr float floorProbe = 5; // below the feet: the middle of the cell they stand on
constexpr int headRoom = 2;     // cells
constexpr float platformReach = 100;
constexpr float feetHeight = 4; // of the box that platforms push: small, so that only the top lifts it
constexpr float deepest = 6;    // feet that are deeper in a tile have come from the side

bool standOnPlatform(Thingy& walker, float footDistance) {
    std::vector<Thingy*> near;
    Game::get().thingyManager->collectInRadius(GROUP_PLATFORMS, walker.position(), platformReach, near);
    const Vec3 half{footDistance, feetHeight / 2, 0};
    for (Thingy* actor : near) {
        auto* platform = dynamic_cast<Platform*>(actor);
        if (!platform) continue;
        // A little lower than the feet are, so that a sinking platform keeps its rider.
        Vec3 centre = walker.position() + Vec3{0, half.y - footReach, 0};
        const PlatformContact contact = platform->pushOut(centre, half, walker.velocity);
        if (!contact.pushed || !(contact.normal.y > 0)) continue;
        walker.unit->position = {centre.x + platform->carry().x, centre.y - half.y, walker.position().z};
        return true;
    }
    return false;
}

} // namespace

bool solidAt(const Vec3& point) {
    const TileGrid* grid = Game::get().tileGrid();
    return grid && grid->tileAt(point, TileType::solid);
}

bool groundAt(const Vec3& point) {
    return solidAt(point) || Game::get().thingyManager->solidPlatformAt(point);
}

FloorLimits floorUnder(const Vec3& feet) {
    const TileGrid* grid = Game::get().tileGrid();
    if (!grid) return {feet.x, feet.x};
    return {grid->edgeOfRun(feet.x, feet.y - floorProbe, -1, headRoom),
            grid->edgeOfRun(feet.x, feet.y - floorProbe, 1, headRoom)};
}

void walkTowards(Thingy& walker, int facing, float topSpeed, float acceleration, float dt) {
    walker.velocity.x =
        moveTowards(walker.velocity.x, topSpeed * static_cast<float>(facing), acceleration * dt);
}

bool wallAhead(const Thingy& walker, int facing, float reach, float height) {
    return groundAt(walker.position() + Vec3{reach * static_cast<float>(facing), height, 0});
}

bool turnAtWall(Thingy& walker, int& facing, float reach, float height) {
    if (!wallAhead(walker, facing, reach, height)) return false;
    facing = -facing;
    walker.velocity.x = 0;
    return true;
}

bool edgeAhead(const Thingy& walker, int facing, float reach) {
    return !wallAhead(walker, facing, reach, -floorProbe);
}

bool standOnTiles(Thingy& walker, float footDistance) {
    if (walker.velocity.y > 0) return false;
    const TileGrid* grid = Game::get().tileGrid();
    Vec3& feet = walker.unit->position;
    for (const float side : {-footDistance, footDistance}) {
        const TileRecord* tile = grid ? grid->tileAt(feet + Vec3{side, 0, 0}, TileType::solid) : nullptr;
        if (!tile || tile->surfaceHeight() - feet.y > deepest) continue;
        feet.y = tile->surfaceHeight();
        walker.velocity.y = 0;
        return true;
    }
    if (!standOnPlatform(walker, footDistance)) return false;
    walker.velocity.y = 0;
    return true;
}

void fall(Thingy& walker, float gravity, float fastestFall, float dt) {
    walker.velocity.y = std::max(walker.velocity.y - gravity * dt, -fastestFall);
    walker.unit->position += walker.velocity * dt;
}
