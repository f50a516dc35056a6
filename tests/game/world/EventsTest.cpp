#include "game/WorldTest.h"
#include "world/events/AreaEvents.h"
#include "world/events/FlowEvents.h"
#include "world/events/SpawnEvents.h"
#include "world/events/StageEvents.h"

#include "core/Random.h"

#include <cmath>

using namespace Zelkor;

namespace {

// Blocks that stand at 0 and differ in what is tested only.
const std::string counter = "Counter{ pos 0 0 0 numTriggers 1 triggers ";
const std::string bystander = "Option{ pos 0 0 0 option 9 value 0 }\n";
std::string spawning(const std::string& keyword, int type, const std::string& rest = "") {
    return keyword + "{ pos 0 0 0 rot 0 0 0 1 mesh none type " + std::to_string(type) + " " + rest + " }\n";
}

class EventsTest : public WorldTest {
  protected:
    Session& start(const std::string& blocks, const std::string& startup = "") {
        return startStage("0 0 1 1 ", "{\n" + blocks + startup + "\n}");
    }
    EventList& events() { return *game->session->eventList; }
    template <class Class>
    Class& event(int index) {
        return dynamic_cast<Class&>(*events().at(index));
    }
    int hits(int index) { return events().at(index)->hitCount; }
    TestActor* actorOf(int index) { return dynamic_cast<TestActor*>(event<SpawningEvent>(index).actor); }
    int enemies() {
        std::vector<Thingy*> found;
        game->thingyManager->collectAll(GROUP_ENEMIES, found);
        return static_cast<int>(found.size());
    }
    // The camera at (0, 0, 180): a point in the play plane with this y has the screen distance d.
    static float heightAt(float d) { return d * 180 * std::tan(15 * pi / 180); }
};

} // namespace

TEST_F(EventsTest, EveryKeywordIsRead) {
    const char* blocks[] = {
        "SpawnPlayer{ pos 1 2 3 rot 90 0 0 2 mesh corvan",
        "SpawnEnemy{ pos 1 2 3 rot 180 0 1 0 mesh m type 13",
        "SpawnThingy{ pos 1 2 3 rot 0 0 0 0 mesh m type 5",
        "Thingy{ pos 1 2 3 rot 0 0 0 0 mesh m type 6",
        "RepeatedSpawn{ pos 1 2 3 rot 0 1 0 0 mesh m type 7 size 8 9 spawntype 257 interval 1.5",
        "PlayerRect{ min 1 2 max 3 4",
        "Field{ min 1 2 max 3 4 type 2",
        "TeleportPlayer{ pos 1 2 3",
        "OpenMenu{ pos 1 2 3 menu 4",
        "Music{ pos 1 2 3 tune",
        "Option{ pos 1 2 3 option 5 value 0.5",
        "Counter{ pos 1 2 3 numTriggers 6",
        "Delay{ pos 1 2 3 time 0.75",
        "NonReset{ pos 1 2 3",
        "Rail{ pos 1 2 3",
        "CameraBounds{ min 1 2 max 3 4 instant 1",
        "CameraEdge{ min 1 2 max 3 4 dir 3",
    };
    std::string text = "triggers 2 8 9 param 1 2\n";
    for (const char* block : blocks)
        text += std::string(block) + " triggers 2 98 99 param 7 0.5 offset 1 2 3 odd }\n";
    start(text);
    ASSERT_EQ(events().size(), static_cast<int>(std::size(blocks)));
    for (int i = 0; i < events().size(); ++i) {
        const Event& e = *events().at(i);
        EXPECT_TRUE(std::string(blocks[i]).starts_with(std::string(e.keyword()) + "{"));
        EXPECT_EQ(e.index, i);
        EXPECT_EQ(e.triggers, (std::vector<int>{98, 99})) << e.keyword();
        ASSERT_EQ(e.params.size(), 1u) << e.keyword();
        EXPECT_EQ(e.params[0].number, 7);
        EXPECT_EQ(e.params[0].value, 0.5f);
    }
    const auto& player = event<SpawnPlayerEvent>(0);
    EXPECT_EQ(player.position, (Vec3{1, 2, 3}));
    EXPECT_NEAR(player.rotation.z, 2 / std::sqrt(5.0f), 1e-5f); // (cos, 2 sin) of 45 degrees, normalised
    EXPECT_EQ(event<SpawnThingyEvent>(2).rotation, Quat{});
    const auto& repeated = event<RepeatedSpawnEvent>(4);
    EXPECT_TRUE(repeated.size.y == 9 && repeated.side == 1 && repeated.relative && repeated.interval == 1.5f);
    EXPECT_EQ(event<PlayerInBoxEvent>(5).box.max, (Vec3{3, 4, 1000}));
    EXPECT_EQ(event<MusicEvent>(9).track, "tune");
    EXPECT_TRUE(event<CameraBoundsEvent>(15).instant);
    EXPECT_EQ(event<CameraEdgeEvent>(16).direction, 3);
}

TEST_F(EventsTest, BrokenFilesKeepTheirCompleteBlocks) {
    const std::string block = "NonReset{ pos 0 0 0 triggers 1 1 }\n";
    struct Case {
        std::string text;
        int events;
    };
    std::string nested;
    for (int i = 0; i < 50000; ++i)
        nested += "NonReset{ p 0 0 0\n";
    const Case cases[] = {
        {"", 0},
        {"{\n" + block + block, 2},
        {"{ nonsense 5 " + block + " } " + block, 1},
        {"{ " + block + "Delay{ pos 0 0", 2},
        {"{ " + block + "NonReset{ pos 0 0 0 triggers 2000000000 7 8", 2},
        {nested, 50000},
    };
    for (const Case& c : cases) {
        TokenReader reader = tokens(c.text);
        Session session(*game->thingyManager);
        EventList list(session);
        list.read(reader);
        EXPECT_EQ(list.size(), c.events) << c.text.substr(0, 80);
        EXPECT_EQ(list.size() && !list.at(0)->triggers.empty(), c.events && c.events != 50000);
        list.startEvents();
        list.poke(-1);
        list.poke(50000);
    }
}

TEST_F(EventsTest, CountersAndNonResets) {
    start("Counter{ pos 0 0 0 numTriggers 3 triggers 1 1 } " // 0
          "NonReset{ pos 0 0 0 triggers 2 2 9 } "            // 1: once
          "Delay{ pos 0 0 0 time 5 }");                      // 2
    for (int i = 0; i < 7; ++i)
        events().poke(0);
    EXPECT_EQ(hits(0), 1);
    EXPECT_EQ(hits(1), 2); // after the third and the sixth
    EXPECT_EQ(hits(2), 1);
    events().resetEvents();
    EXPECT_EQ(hits(0), 0);
    EXPECT_EQ(hits(2), 0);
    events().poke(1);
    EXPECT_EQ(hits(2), 0);
}

TEST_F(EventsTest, DelaysFireOnceAfterTheirTime) {
    start("Delay{ pos 0 0 0 time 0 triggers 1 1 } "
          "Delay{ pos 0 0 0 time 0.1 triggers 1 2 } "
          "NonReset{ pos 0 0 0 }");
    events().poke(0);
    EXPECT_EQ(hits(1), 0);
    step();
    EXPECT_EQ(hits(1), 1);
    EXPECT_FALSE(events().at(0)->active);
    step(4); // 0.083 s: the second stands behind the first and counted its step already
    EXPECT_EQ(hits(2), 0);
    timer("game").paused = 1;
    step(5);
    EXPECT_EQ(hits(2), 0);
    timer("game").paused = 0;
    step(2);
    EXPECT_EQ(hits(2), 1);
    step(30);
    EXPECT_EQ(hits(2), 1);
}

TEST_F(EventsTest, BoxesFireOncePerEntering) {
    start("PlayerRect{ min 0 0 max 10 10 triggers 1 1 }\n" + bystander, "StartupTriggers 1 0");
    TestActor& hero = spawn(GROUP_PLAYER, {-5, 5, 0});
    for (const auto& [x, count] : {std::pair{-5, 0}, {0, 0}, {1, 1}, {5, 1}, {10, 1}, {5, 2}, {5, 2}}) {
        hero.unit->position.x = static_cast<float>(x);
        step();
        EXPECT_EQ(hits(1), count) << x;
    }
    spawn(GROUP_PLAYER, {6, 6, 0});
    step();
    EXPECT_EQ(hits(1), 3); // a second one entered
    events().resetEvents();
    step();
    EXPECT_EQ(hits(1), 0); // inactive until it is poked again
}

TEST_F(EventsTest, CirclesAndLongChainsEndAndAreReset) {
    start(counter + "1 1 } " + counter + "1 2 } " + bystander);
    events().poke(1);
    events().at(0)->reset(); // has not fired: nothing behind it changes
    EXPECT_TRUE(events().at(2)->fired);
    std::string chain;
    for (int i = 0; i < 50000; ++i)
        chain += counter + "2 " + std::to_string(i + 1) + " " + std::to_string(i + 1) + " } ";
    const std::string circle =
        counter + "1 1 } " + counter + "2 0 2 } " + "Delay{ pos 0 0 0 time 1 triggers 1 0 }";
    for (const std::string& blocks : {circle, chain}) {
        start(blocks);
        events().poke(0);
        for (int i = 0; i < events().size(); ++i)
            events().at(i)->fired = true; // a chain as long as the list
        events().at(0)->reset();
        EXPECT_FALSE(events().at(0)->fired);
        EXPECT_FALSE(events().at(events().size() - 1)->fired);
    }
}

TEST_F(EventsTest, EnemiesAppearJustOffScreenAndGoFarFromIt) {
    start(spawning("SpawnEnemy", firstTestType + GROUP_ENEMIES, "triggers 1 1 param 3 0.5") +
          "NonReset{ pos 0 0 0 }");
    auto& spawner = event<SpawnEnemyEvent>(0);
    game->camera()->followEnabled = false;
    game->camera()->view.position = {0, 0, 180};
    const auto moveTo = [&](float d) { spawner.position.y = heightAt(d) - 10; };
    const auto appears = [&](float d) {
        moveTo(d);
        step();
        return spawner.actor != nullptr;
    };
    moveTo(0.5f);
    step(); // not active yet
    EXPECT_FALSE(spawner.actor);
    events().poke(0);
    EXPECT_TRUE(appears(0.5f)); // seen, but right after the activation
    EXPECT_EQ(actorOf(0)->position(), spawner.position);
    EXPECT_EQ(actorOf(0)->linkedEvent, 0);
    EXPECT_EQ(actorOf(0)->parameters.size(), 1u);
    actorOf(0)->unit->position.y = heightAt(2.5f);
    step();
    EXPECT_TRUE(spawner.actor);
    actorOf(0)->unit->position.y = heightAt(2.7f);
    step();
    EXPECT_FALSE(spawner.actor);
    step();
    EXPECT_EQ(enemies(), 0);
    for (const float d : {0.5f, 1.2f, 1.6f})
        EXPECT_FALSE(appears(d)) << d;
    EXPECT_TRUE(appears(1.4f));

    notifyDeath(*spawner.actor); // dies: 3 s until the next
    EXPECT_EQ(hits(1), 1);
    for (int i = 0; i < 178; ++i)
        EXPECT_FALSE(appears(1.4f));
    step(4);
    EXPECT_TRUE(spawner.actor);
    actorOf(0)->removeMe = true; // gone without a word
    game->thingyManager->update();
    EXPECT_FALSE(spawner.actor);

    Thingy* held = (step(), spawner.actor);
    ASSERT_TRUE(held);
    events().resetEvents();
    EXPECT_TRUE(held->removeWhenOffscreen);
    EXPECT_FALSE(spawner.actor);
}

TEST_F(EventsTest, ActorsAndOptionsOfTheStage) {
    const int type = firstTestType + GROUP_SCENERY;
    start(spawning("Thingy", type) + spawning("SpawnThingy", type, "triggers 1 2") + bystander +
          spawning("SpawnThingy", 199) +
          "Option{ pos 0 0 0 option 0 value 0.25 } TeleportPlayer{ pos 7 8 9 }");
    spawn(GROUP_PLAYER, {1, 1, 1});
    TestActor& secondHero = spawn(GROUP_PLAYER, {2, 2, 2});
    Thingy* first = event<ThingyEvent>(0).actor;
    ASSERT_TRUE(first);
    EXPECT_FALSE(actorOf(1));
    events().poke(1);
    Thingy* second = actorOf(1);
    ASSERT_TRUE(second);
    events().poke(1);
    EXPECT_EQ(actorOf(1), second); // it holds one
    events().notifyFinished(1);
    EXPECT_FALSE(actorOf(1));
    EXPECT_EQ(hits(2), 1);
    events().poke(3); // a type without class
    EXPECT_FALSE(actorOf(3));
    events().startEvents();
    EXPECT_NE(event<ThingyEvent>(0).actor, first);
    EXPECT_TRUE(first->removeWhenOffscreen);
    for (const int index : {2, 4, 5}) // option 9 is none
        events().poke(index);
    EXPECT_EQ(game->session->gravityFactor, 0.25f);
    EXPECT_EQ(secondHero.position(), (Vec3{7, 8, 9}));
}

TEST_F(EventsTest, RepeatedSpawnsComeFromTheirSide) {
    const std::string rest = "size 10 20 spawntype 257 interval 0.5";
    start(spawning("RepeatedSpawn", firstTestType + GROUP_ENEMIES, rest));
    auto& spawner = event<RepeatedSpawnEvent>(0);
    GameCamera& camera = *game->camera();
    camera.followEnabled = false;
    camera.view.position = {100, 50, 180};
    TestActor& hero = spawn(GROUP_PLAYER, {110, 60, 0});
    const auto lastEnemy = [&] {
        std::vector<Thingy*> found;
        game->thingyManager->collectAll(GROUP_ENEMIES, found);
        return found.back();
    };
    seedRandom(7);
    const float drawnY = randomFraction();
    seedRandom(7);
    events().poke(0);
    step();
    ASSERT_EQ(enemies(), 1);
    const float halfHeight = heightAt(1);
    EXPECT_NEAR(lastEnemy()->position().x, 100 + halfHeight * 16 / 9 + 40, 1e-3f);
    EXPECT_NEAR(lastEnemy()->position().y, 60 + drawnY * 20, 1e-3f);
    step(40); // one more half a second later
    EXPECT_EQ(enemies(), 2);
    hero.unit->position.x = 100 + halfHeight * 16 / 9 * 0.7f; // too near to where they come from
    step(60);
    EXPECT_EQ(enemies(), 2);
    spawner.side = RepeatedSpawnEvent::belowScreen;
    step(30);
    ASSERT_EQ(enemies(), 3);
    EXPECT_NEAR(lastEnemy()->position().y, 50 - halfHeight - 40, 1e-3f);
}
