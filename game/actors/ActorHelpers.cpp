// What many actors do alike: face a side, bleed, leave loot, report their death.
#include "actors/ThingyManager.h"
#include "core/Random.h"
#include "game/Game.h"
#include "game/Session.h"
#include "world/EventList.h"

#include <array>

using namespace Zelkor;

namespace {

constexpr float weaponChance = 0.2f;

struct WeaponShare {
    float above; // of a draw in 0..1
    const char* weapon;
};

// What drops from a stage on, the first that the draw is above; the spread gun when it is above none.
struct LootRow {
    int firstStage;
    std::array<WeaponShare, 4> shares;
};

constexpr float never = 1;
constexpr LootRow lootTable[] = {
    {16, {{{0.8f, "hominggun"}, {0.6f, "lasergun"}, {0.4f, "rocketgun"}, {0.2f, "bouncegun"}}}},
    {12, {{{0.75f, "hominggun"}, {0.5f, "lasergun"}, {0.25f, "rocketgun"}, {never, ""}}}},
    {9, {{{0.8f, "hominggun"}, {0.45f, "rocketgun"}, {never, ""}, {never, ""}}}},
    {3, {{{0.75f, "hominggun"}, {never, ""}, {never, ""}, {never, ""}}}},
};

const char* weaponFor(int stage, float draw) {
    for (const LootRow& row : lootTable) {
        if (stage < row.firstStage) continue;
        for (const WeaponShare& share : row.shares)
            if (draw > share.above) return share.weapon;
        break;
    }
    return "spreadgun";
}

} // namespace

Quat facingRotation(float facing) {
    const float halfAngle = (facing * 0.5f - 0.5f) * pi / 2;
    return {cosine(halfAngle), 0, sine(halfAngle), 0};
}

void spawnBlood(const Vec3& position, float facing) {
    static constexpr const char* units[] = {"blood1", "blood2", "blood3"};
    const char* unit = units[randomInt() % 3];
    Game::get().thingyManager->spawn(SpawnType::bloodSplatter, unit, position, facingRotation(facing));
}

void dropLoot(const Vec3& position) {
    ThingyManager& manager = *Game::get().thingyManager;
    const Thingy* hero = manager.nearest(GROUP_PLAYER, position);
    if (!hero) return;
    const float healthRatio = hero->maxHealth <= 0 ? 1 : hero->health / hero->maxHealth;
    const float cakeChance = (1.1f - healthRatio) / 3;
    if (randomFraction() < cakeChance) {
        manager.spawn(SpawnType::pickup, "pickups/cake1", position);
        return;
    }
    const int stage = Game::get().session->stage;
    if (stage <= 0 || !(randomUniform() < weaponChance)) return;
    manager.spawn(SpawnType::pickup, weaponFor(stage, randomUniform()), position);
}

void notifyDeath(const Thingy& actor) {
    if (EventList* events = Game::get().eventList()) events->notifyFinished(actor.linkedEvent);
}
