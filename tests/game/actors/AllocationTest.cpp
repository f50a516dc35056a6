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
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    if (counting) ++requests;
    return std::malloc(size ? size : 1);
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
    for (Thingy* bullet : actors(GROUP_BULLETS))
        dynamic_cast<Bullet&>(*bullet).setSpeed(1); // so slow that some stay in sight
    hero.input.overrideStick = {1, 0, 0};
    step(30);
    const float from = hero.position().x;
    const auto requestsOf = [&](auto&& work) {
        requests = 0;
        counting = true;
        work();
        counting = false;
        return requests;
    };
    EXPECT_EQ(requestsOf([&] { step(60); }), 0);
    EXPECT_GT(hero.position().x, from + 30);
    EXPECT_FALSE(actors(GROUP_BULLETS).empty());
    EXPECT_GT(requestsOf([&] { game->thingyManager->spawn(71, "none", {0, 0, 0}); }), 0); // the count counts
}
