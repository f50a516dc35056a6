#include "actors/ThingyManager.h"

#include "actors/platforms/Platform.h"
#include "core/Log.h"
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

class TestPlatform : public Platform {
  public:
    explicit TestPlatform(Unit& ownUnit) : Platform(ownUnit) {}
    Vec3 carry() const override { return {}; }
    PlatformContact pushOut(Vec3&, const Vec3&, const Vec3&) override { return {}; }
    bool containsPoint(float x, float y) const override { return x > position().x && y > 0 && y < 5; }
};

const SpawnRow platformRow{190, createActor<TestPlatform>};

} // namespace

TEST_F(ThingyManagerTest, SpawnsByTypeAndSaysWhenItCannot) {
    std::vector<std::string> log;
    Log::instance().captureInto(&log);
    for (const int type : {0, -5, 201, 199})
        EXPECT_FALSE(manager().spawn(type, "none", {}));
    Log::instance().captureInto(nullptr);
    EXPECT_EQ(log, std::vector<std::string>(4, "No Thingy Spawned"));
    EXPECT_TRUE(game->session->scene.units().empty());
    const Thingy* marker = manager().spawn(200, "target", {});
    ASSERT_TRUE(marker);
    EXPECT_EQ(marker->group, GROUP_RAILS);
    EXPECT_FALSE(marker->unit->visible);
    EXPECT_EQ(marker->timer, &timer("game"));
}

TEST_F(ThingyManagerTest, SlotsAreTakenAgainWhileMoreThanOneIsFree) {
    std::vector<TestActor*> actors;
    for (int i = 0; i < 4; ++i)
        actors.push_back(&spawn(GROUP_ENEMIES, {static_cast<float>(i), 0, 0}));
    const auto order = [&] {
        std::vector<Thingy*> all;
        manager().collectAll(GROUP_ENEMIES, all);
        std::vector<float> x;
        for (const Thingy* actor : all)
            x.push_back(actor->position().x);
        return x;
    };
    actors[1]->removeMe = true;
    manager().update();
    spawn(GROUP_ENEMIES, {10, 0, 0}); // one free slot is left alone
    EXPECT_EQ(order(), (std::vector<float>{0, 2, 3, 10}));
    actors[2]->removeMe = actors[0]->removeMe = true;
    manager().update(); // frees 0, then 2
    spawn(GROUP_ENEMIES, {20, 0, 0});
    EXPECT_EQ(order(), (std::vector<float>{20, 3, 10})); // the slot freed last
    for (const float x : {30, 40})
        spawn(GROUP_ENEMIES, {x, 0, 0});
    EXPECT_EQ(order(), (std::vector<float>{30, 20, 3, 10, 40}));
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
    for (TestActor* actor : {&enemy, &boss})
        actor->flash = 1;
    timer("game").paused = 1;
    step();
    EXPECT_EQ(enemy.updates, 0);
    EXPECT_EQ(enemy.flash, 1);
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

TEST_F(ThingyManagerTest, HitsNeedAnOverlapAndGoOnAsTheTargetsSay) {
    TestActor* targets[4];
    for (TestActor*& target : targets)
        target = &spawn(GROUP_ENEMIES, {100, 0, 0}, "target"); // 95..105, 0..10
    const std::pair<Attack, int> boxes[] = {{attack(90, 2, 95.01f, 3), 1}, {attack(90, 2, 95, 3), 0},
                                            {attack(105, 2, 110, 3), 0},   {attack(96, 10, 97, 12), 0},
                                            {attack(96, -5, 97, 0), 0},    {attack(96, -5, 97, 0.01f), 1},
                                            {attack(0, -90, 900, 90), 1},  {attack(90, 11, 94.5f, 13), 0}};
    for (const auto& [box, result] : boxes)
        EXPECT_EQ(manager().hitGroup(GROUP_ENEMIES, box, false), result)
            << box.boxMin.x << " " << box.boxMin.y;
    targets[1]->hitPadding = {1, 2, 0};
    EXPECT_EQ(manager().hitGroup(GROUP_ENEMIES, boxes[7].first, false), 1);

    struct Case {
        int results[4];
        bool all;
        int result, asked; // targets that were hit
    };
    for (const Case& c : {Case{{0, 2, 1, 1}, false, 2, 1},
                          {{1, 3, 0, 2}, true, 2, 3},
                          {{1, -1, 1, 1}, true, -1, 2},
                          {{0, 0, 0, 0}, true, 0, 0}}) {
        int hits = 0;
        for (int i = 0; i < 4; ++i)
            targets[i]->hitResult = c.results[i], hits -= targets[i]->hits;
        EXPECT_EQ(manager().hitGroup(GROUP_ENEMIES, boxes[6].first, c.all), c.result);
        for (const TestActor* target : targets)
            hits += target->hits;
        EXPECT_EQ(hits, c.asked);
    }
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
    manager().collectInRadius(GROUP_ENEMIES, {0, 0, 0}, 10, found);
    EXPECT_EQ(found.size(), 3u);
    found.clear();
    manager().collectInRadius(GROUP_ENEMIES, {0, 0, 0}, 9.9f, found);
    EXPECT_EQ(found, (std::vector<Thingy*>{&deep}));

    EXPECT_FALSE(manager().solidPlatformAt({60, 2, 0}));
    spawn(GROUP_PLATFORMS, {});
    manager().spawn(190, "none", {50, 0, 0});
    EXPECT_TRUE(manager().solidPlatformAt({60, 2, 0}));
    EXPECT_FALSE(manager().solidPlatformAt({40, 2, 0}));
}

TEST_F(ThingyManagerTest, HitsFlashRedForAThirdOfASecond) {
    TestActor& actor = spawn(GROUP_ENEMIES, {}, "target");
    actor.unit->items[0].setColour({0, 1, 0, 1}); // the outline's colour is none of the figure's
    EXPECT_EQ(Thingy(*actor.unit, GROUP_ENEMIES).baseColour, (Vec4{1, 1, 1, 1}));
    actor.unit->items[1].setColour({0, 0, 1, 1});
    actor.baseColour = Thingy(*actor.unit, GROUP_ENEMIES).baseColour;
    step(); // the first update takes on the base colour
    EXPECT_EQ(actor.unit->items[0].colour(), (Vec4{0, 0, 1, 1}));
    actor.onHit({});
    step();
    const float t = 0.3f * (1 - 3.0f / 60);
    EXPECT_NEAR(actor.unit->items[0].colour().x, 0.5f * t, 1e-5f);
    EXPECT_NEAR(actor.unit->items[1].colour().z, 1 - t, 1e-5f);
    step(18);
    EXPECT_GT(actor.flash, 0);
    step(2);
    EXPECT_EQ(actor.unit->items[0].colour(), (Vec4{0, 0, 1, 1}));
}

TEST_F(ThingyManagerTest, BloodGoesAfterHalfASecond) {
    spawnBlood({1, 2, 0}, -1);
    EXPECT_NEAR(game->session->scene.units().front()->orientation.y, -1, 1e-6f); // faces left
    step(29);
    EXPECT_FALSE(game->session->scene.units().empty());
    step(3);
    EXPECT_TRUE(game->session->scene.units().empty());
}

namespace {

std::map<std::string, int> dropped; // what the pickups of this test were, by unit

class TestPickup : public Thingy {
  public:
    explicit TestPickup(Unit& ownUnit) : Thingy(ownUnit, GROUP_PICKUPS) { ++dropped[ownUnit.name()]; }
};

} // namespace

TEST_F(ThingyManagerTest, LootFollowsTheStageAndTheHero) {
    static const SpawnRow pickupRow{SpawnType::pickup, createActor<TestPickup>};
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
