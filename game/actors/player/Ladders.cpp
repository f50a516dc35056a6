#include "actors/player/Ladders.h"

#include "actors/ThingyManager.h"
#include "actors/rides/MovingLadder.h"
#include "world/TileGrid.h"

using namespace Zelkor;

namespace {

constexpr float reachAside = 2, topReachAside = 3.5f; // from the feet to the middle of the ladder
constexpr float reachBelow = 1;                       // feet above its lowest cell, to climb down
constexpr float reachAbove = 6;                       // its lowest cell above the feet, to climb up
constexpr float actorReach = 20;                      // above the feet: a moving ladder nearest to there
constexpr float belowTop = 13, belowOpenEnd = 25;     // feet below the cell that follows the ladder

Ladder describe(const TileGrid& grid, const TileRecord& tile) {
    Ladder ladder;
    ladder.x = tile.position.x;
    ladder.base = tile.position.y;
    const float end = tile.position.y + tileSize * tile.size.y;
    const TileRecord* top = grid.tileAt({ladder.x, end, 0}, TileType::ladderTop);
    ladder.hasTop = top != nullptr;
    if (top) ladder.surface = top->surfaceHeight();
    ladder.usableTop = end - (top ? belowTop : belowOpenEnd);
    return ladder;
}

Ladder describe(MovingLadder& actor) {
    Ladder ladder;
    ladder.x = actor.foot().x;
    ladder.base = actor.foot().y;
    ladder.usableTop = ladder.base + actor.height - belowOpenEnd;
    ladder.actor = &actor;
    return ladder;
}

bool canGrab(const Ladder& ladder, const Vec3& feet, float directionY) {
    if (absolute(ladder.x - feet.x) > reachAside || feet.y >= ladder.usableTop) return false;
    return directionY < 0 ? ladder.base < feet.y - reachBelow : ladder.base < feet.y + reachAbove;
}

} // namespace

std::optional<Ladder> Ladder::now(const TileGrid* grid, const ThingyManager* actors) const {
    if (!actor) {
        const TileRecord* tile = grid ? grid->tileAt({x, base, 0}, TileType::ladder) : nullptr;
        if (!tile) return std::nullopt;
        return describe(*grid, *tile);
    }
    if (!actors || !actors->contains(GROUP_RIDES, actor)) return std::nullopt;
    return describe(*actor);
}

std::optional<Ladder> ladderToGrab(const TileGrid* grid, const ThingyManager* actors, const Vec3& feet,
                                   float directionY) {
    if (grid) {
        const Vec3 oneCell{0, tileSize, 0};
        const Vec3 point = feet + Vec3{0, 1, 0};
        const TileRecord* tile = grid->tileAt(point, TileType::ladder | TileType::ladderTop);
        if (tile && tile->type == TileType::ladderTop) tile = grid->tileAt(point - oneCell, TileType::ladder);
        if (tile)
            if (const Ladder ladder = describe(*grid, *tile); canGrab(ladder, feet, directionY)) return ladder;
        // Down from a ladder top he stands on.
        const Vec3 under = feet - Vec3{0, 1, 0};
        const TileRecord* top = grid->tileAt(under, TileType::ladderTop);
        if (directionY < 0 && top && absolute(top->position.x - feet.x) <= topReachAside)
            if (const TileRecord* below = grid->tileAt(under - oneCell, TileType::ladder))
                return describe(*grid, *below);
    }
    if (actors)
        if (MovingLadder* actor = actors->nearestOf<MovingLadder>(GROUP_RIDES, feet + Vec3{0, actorReach, 0}))
            if (const Ladder ladder = describe(*actor); canGrab(ladder, feet, directionY)) return ladder;
    return std::nullopt;
}
