// A step of the common run of play asks for no memory: what it needs it has kept since the first one.
#include "actors/player/PlayerStandard.h"
#include "actors/weapons/Bullet.h"
#include "game/WorldTest.h"

#include <cstdlib>
#include <new>

namespace {

bool counting = false;
int requests = 0;

} // namespace

// In place of the library's, for the whole test program.
void* operator new(std::size_t size) {
    if (counting) ++requests;
    if (void* memory = std::malloc(size ? size : 1)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

using namespace Zelkor;

TEST_F(WorldTest, StepsAskForNoMemory) {
    std::string level = "0 0 40 1 ";
    for (int column = 0; column < 40; ++column)
        level += "floor " + std::to_string(10 * column) + " 0 0 ";
    startStage(level, "{ SpawnPlayer{ pos 30 6 0 rot 0 0 1 0 mesh none } Field{ min 0 0 max 390 90 type 0 } "
                      "PlayerRect{ min 0 0 max 390 90 } CameraBounds{ min -50 -50 max 450 150 instant 1 } "
                      "RepeatedSpawn{ pos 0 0 0 rot 0 0 1 0 mesh none type 71 size 0 0 spawntype 0 interval 100 } "
                      "StartupTriggers 5 0 1 2 3 4 }");
    auto& hero = dynamic_cast<PlayerStandard&>(*actors(GROUP_PLAYER).at(0));
    hero.input.overridden = true;
    float x = 60;
    for (const int ride : {18, 23, 25, 26, 37, 45, 46, 34, 71, 38, 41})
        game->thingyManager->spawn(ride, "none", {x += 20, 30, 0});
    for (const int bullet : {2, 72, 73, 74, 75, 76})
        game->thingyManager->spawn(bullet, "bullet", {60, 70, 0});
    for (Thingy* actor : actors(GROUP_BULLETS)) {
        auto& bullet = dynamic_cast<Bullet&>(*actor);
        bullet.setSpeed(1); // so slow that most stay in sight
        bullet.targetGroup = GROUP_ENEMIES;
    }
    const auto stepRunning = [&](int steps, float stickX) {
        hero.input.overrideStick = {stickX, 0, 0};
        step(steps);
    };
    stepRunning(30, 1);
    const float from = hero.position().x;
    counting = true;
    stepRunning(45, 1);
    stepRunning(15, -1);
    counting = false;
    EXPECT_EQ(requests, 0);
    EXPECT_GT(hero.position().x, from + 15);
    EXPECT_GE(actors(GROUP_BULLETS).size(), 4u); // some fly on, others have hit or left
    // The count counts.
    counting = true;
    game->thingyManager->spawn(71, "none", {0, 0, 0});
    counting = false;
    EXPECT_GT(requests, 0);
}
