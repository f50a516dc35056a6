#include "actors/ThingyManager.h"

#include "core/Random.h"
#include "game/WorldTest.h"

#include <map>

using namespace Zelkor;

namespace {

class ThingyManagerTest : public WorldTest {
  protected:
    ThingyManagerTest() {
        startStage("0 0 1 1 ", "");
        writeMesh("target", {-5, 0, -5}, {5, 10, 5}, {"edge", "paint"});
    }
    ThingyManager& manager() { return *game->thingyManager; }
    static Attack attack(float left, float bottom, float right, float top) {
        Attack a;
        a.boxMin = {left, bottom, 0};
        a.boxMax = {right, top, 0};
        return a;
    }
};

} // namespace

TEST_F(ThingyManagerTest, SpawnsTheTypesItKnows) {
    for (const int type : {0, -5, 201, 199})
        EXPECT_FALSE(manager().spawn(type, "none", {}));
    EXPECT_TRUE(game->session->scene.units().empty());
    const Thingy* marker = manager().spawn(200, "target", {1, 2, 3}, {0, 1, 0, 0});
    EXPECT_EQ(marker->position(), (Vec3{1, 2, 3}));
    EXPECT_EQ(marker->unit->orientation, (Quat{0, 1, 0, 0}));
}

TEST_F(ThingyManagerTest, SlotsAreTakenAgainWhileMoreThanOneIsFree) {
    for (const float x : {0, 1, 2, 3})
        spawn(GROUP_ENEMIES, {x, 0, 0});
    const std::vector<Thingy*> first = actors(GROUP_ENEMIES);
    const auto order = [&] {
        std::vector<float> x;
        for (const Thingy* actor : actors(GROUP_ENEMIES))
            x.push_back(actor->position().x);
        return x;
    };
    first[1]->removeMe = true;
    manager().update();
    spawn(GROUP_ENEMIES, {10, 0, 0}); // one free slot is left alone
    EXPECT_EQ(order(), (std::vector<float>{0, 2, 3, 10}));
    first[2]->removeMe = first[0]->removeMe = true;
    manager().update(); // frees 0, then 2
    spawn(GROUP_ENEMIES, {20, 0, 0});
    EXPECT_EQ(order(), (std::vector<float>{20, 3, 10})); // the slot freed last
    manager().clear();
    EXPECT_EQ(TestActor::alive, 0);
    EXPECT_TRUE(game->session->scene.units().empty());
}

TEST_F(ThingyManagerTest, UpdatesFromTheLastGroupToTheFirst) {
    std::vector<std::string> order;
    TestActor& enemy = spawn(GROUP_ENEMIES, {});
    TestActor& backdrop = spawn(GROUP_BACKDROP, {});
    TestActor* before = nullptr;
    backdrop.onUpdate = [&] { order.push_back("backdrop"); };
    enemy.onUpdate = [&] {
        order.push_back("enemy");
        if (before) return;
        before = &spawn(GROUP_BACKDROP, {});
        for (int i = 0; i < 100; ++i) // so that the list under way has to grow
            spawn(GROUP_ENEMIES, {}).removeMe = true;
        for (const int group : {GROUP_ENEMIES, GROUP_PLAYER})
            spawn(group, {}).onUpdate = [&order, group] { order.push_back("new " + std::to_string(group)); };
    };
    manager().update();
    EXPECT_EQ(order, (std::vector<std::string>{"backdrop", "enemy", "new 2", "new 0"}));
    EXPECT_EQ(before->updates, 0); // its group was through already
    EXPECT_EQ(TestActor::alive, 5);
}

TEST_F(ThingyManagerTest, PausedTimersStopActorsButNotTheirRemoval) {
    TestActor& enemy = spawn(GROUP_ENEMIES, {}, "target");
    TestActor& boss = spawn(GROUP_ENEMIES, {}, "target");
    boss.bindTimer(timer("boss"));
    timer("game").paused = 1;
    step();
    EXPECT_EQ(enemy.updates, 0);
    EXPECT_EQ(boss.updates, 1);
    enemy.removeWhenOffscreen = boss.removeWhenOffscreen = true;
    step();
    EXPECT_EQ(TestActor::alive, 2); // both in view
    enemy.unit->position = {1e4f, 0, 0};
    step();
    EXPECT_EQ(TestActor::alive, 1);
    boss.removeMe = true;
    timer("boss").paused = 1;
    step();
    EXPECT_EQ(TestActor::alive, 0);
}

TEST_F(ThingyManagerTest, HitsNeedAnOverlap) {
    TestActor& target = spawn(GROUP_ENEMIES, {100, 0, 0}, "target"); // 95..105, 0..10
    const std::pair<Attack, int> cases[] = {
        {attack(90, 2, 95.01f, 3), 1}, {attack(90, 2, 95, 3), 0},         {attack(105, 2, 110, 3), 0},
        {attack(96, 10, 97, 12), 0},   {attack(96, -5, 97, 0), 0},        {attack(96, -5, 97, 0.01f), 1},
        {attack(0, -90, 900, 90), 1},  {attack(104.9f, 9.9f, 105, 10), 1}};
    for (const auto& [box, result] : cases)
        EXPECT_EQ(manager().hitGroup(GROUP_ENEMIES, box, false), result) << box.boxMin.x;
    target.hitPadding = {1, 2, 0};
    EXPECT_EQ(manager().hitGroup(GROUP_ENEMIES, attack(90, 11, 94.5f, 13), false), 1);
}

TEST_F(ThingyManagerTest, HitsGoOnAsTheTargetsSay) {
    TestActor* targets[4];
    for (TestActor*& target : targets)
        target = &spawn(GROUP_ENEMIES, {}, "target");
    // What the manager says, and who was hit.
    const auto hit = [&](std::array<int, 4> results, bool all) {
        for (int i = 0; i < 4; ++i)
            targets[i]->hitResult = results[i], targets[i]->hits = 0;
        std::string hits = std::to_string(manager().hitGroup(GROUP_ENEMIES, attack(-1, 1, 1, 2), all)) + ":";
        for (const TestActor* target : targets)
            hits += std::to_string(target->hits);
        return hits;
    };
    EXPECT_EQ(hit({0, 2, 1, 1}, false), "2:0100");
    EXPECT_EQ(hit({1, 3, 0, 2}, true), "2:1101");
    EXPECT_EQ(hit({1, -1, 1, 1}, true), "-1:1100");
    EXPECT_EQ(hit({0, 0, 0, 0}, true), "0:0000");
}

TEST_F(ThingyManagerTest, FindsActorsByPlace) {
    EXPECT_FALSE(manager().nearest(GROUP_ENEMIES, {}));
    TestActor& left = spawn(GROUP_ENEMIES, {-10, 0, 0});
    TestActor& right = spawn(GROUP_ENEMIES, {10, 0, 0});
    TestActor& deep = spawn(GROUP_ENEMIES, {0, 0, 9});
    EXPECT_EQ(manager().nearest(GROUP_ENEMIES, {0, 0, -5}), &left); // as near as the right one
    EXPECT_EQ(manager().nearest(GROUP_ENEMIES, {1, 0, -5}), &right);
    EXPECT_EQ(manager().nearest(GROUP_ENEMIES, {0, 0, 0}), &deep);
    std::vector<Thingy*> found{&deep};
    manager().collectInBox(GROUP_ENEMIES, {-10, -1, -1}, {11, 1, 1}, found); // the left one lies on its side
    EXPECT_EQ(found, (std::vector<Thingy*>{&deep, &right}));
    found.clear();
    manager().collectInRadius(GROUP_ENEMIES, {0, 0, 0}, 9.9f, found);
    EXPECT_EQ(found, (std::vector<Thingy*>{&deep}));
}

TEST_F(ThingyManagerTest, HitsFlashRedForAThirdOfASecond) {
    TestActor& actor = spawn(GROUP_ENEMIES, {}, "target");
    actor.baseColour = {0, 0, 1, 1};
    step(); // the first update takes on the base colour
    actor.onHit({});
    step();
    const float t = 0.3f * (1 - 3.0f / 60);
    EXPECT_NEAR(actor.unit->items[0].colour().x, 0.5f * t, 1e-5f);
    EXPECT_NEAR(actor.unit->items[1].colour().z, 1 - t, 1e-5f);
    step(18);
    EXPECT_GT(actor.flash, 0);
    step(2);
    EXPECT_EQ(actor.unit->items[0].colour(), actor.baseColour);
}

TEST_F(ThingyManagerTest, LootFollowsTheStageAndTheHero) {
    std::map<std::string, int> dropped; // by unit
    const auto drop = [&](int stage, float health, int times) {
        dropped.clear();
        game->session->stage = stage;
        manager().clear();
        TestActor& hero = spawn(GROUP_PLAYER, {});
        hero.health = health;
        hero.maxHealth = 4;
        seedRandom(11);
        for (int i = 0; i < times; ++i)
            dropLoot({});
        for (const Thingy* pickup : actors(GROUP_PICKUPS))
            ++dropped[pickup->unit->name()];
        return dropped;
    };
    constexpr int n = 20000;
    EXPECT_NEAR(drop(0, 4, n)["pickups/cake1"], n * 0.1 / 3, n * 0.005);
    EXPECT_EQ(dropped.size(), 1u); // never a weapon in the first stage
    EXPECT_NEAR(drop(0, 0, n)["pickups/cake1"], n * 1.1 / 3, n * 0.015);

    const std::pair<int, std::map<std::string, double>> stages[] = {
        {1, {{"spreadgun", 1}}},
        {3, {{"hominggun", 0.25}, {"spreadgun", 0.75}}},
        {9, {{"hominggun", 0.2}, {"rocketgun", 0.35}, {"spreadgun", 0.45}}},
        {12, {{"hominggun", 0.25}, {"lasergun", 0.25}, {"rocketgun", 0.25}, {"spreadgun", 0.25}}},
        {16, {{"hominggun", 0.2}, {"lasergun", 0.2}, {"rocketgun", 0.2}, {"bouncegun", 0.2}}},
    };
    for (const auto& [stage, shares] : stages) {
        drop(stage, 4, n);
        for (const auto& [gun, share] : shares) // of a fifth of what was no cake
            EXPECT_NEAR(dropped[gun] / (n * (1 - 0.1 / 3) * 0.2), share, 0.03) << stage << " " << gun;
    }
}
