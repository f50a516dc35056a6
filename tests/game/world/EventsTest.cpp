#include "game/WorldTest.h"
#include "world/events/AreaEvents.h"
#include "world/events/FlowEvents.h"
#include "world/events/SpawnEvents.h"

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
    std::size_t enemies() { return actors(GROUP_ENEMIES).size(); }
    // The camera at (0, 0, 180): a point in the play plane with this y has the screen distance d.
    static float heightAt(float d) { return d * 180 * std::tan(15 * pi / 180); }
};

} // namespace

TEST_F(EventsTest, BrokenFilesKeepTheirCompleteBlocks) {
    const std::string block = "NonReset{ pos 0 0 0 triggers 1 1 }\n";
    std::string nested;
    for (int i = 0; i < 50000; ++i)
        nested += "NonReset{ p 0 0 0\n";
    const std::pair<std::string, int> cases[] = {
        {"", 0},
        {"{\n" + block + block, 2},
        {"{ nonsense 5 " + block + " } " + block, 1},
        {"{ " + block + "Delay{ pos 0 0", 2},
        {"{ " + block + "NonReset{ pos 0 0 0 triggers 2000000000 7 8", 2},
        {nested, 50000},
    };
    for (const auto& [text, count] : cases) {
        TokenReader reader = tokens(text);
        Session session(*game->thingyManager);
        EventList list(session);
        list.read(reader);
        EXPECT_EQ(list.size(), count) << text.substr(0, 80);
        EXPECT_EQ(list.size() && !list.at(0)->triggers.empty(), count && count != 50000);
        list.startEvents();
        list.poke(-1);
        list.poke(50000);
    }
}

TEST_F(EventsTest, CountersAndNonResets) {
    start("Counter{ pos 0 0 0 numTriggers 3 triggers 1 1 } " // 0
          "NonReset{ pos 0 0 0 triggers 2 2 9 } "            // 1: once
          "Delay{ pos 0 0 0 odd time 5 }");                  // 2
    for (int i = 0; i < 7; ++i)
        events().poke(0);
    EXPECT_EQ(hits(0), 1);
    EXPECT_EQ(hits(1), 2); // after the third and the sixth
    EXPECT_EQ(hits(2), 1);
    events().resetEvents();
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
    step(4); // 0.083 s: the second stands behind the first and counted its step already
    EXPECT_EQ(hits(2), 0);
    timer("game").paused = 1;
    step(5);
    EXPECT_EQ(hits(2), 0);
    timer("game").paused = 0;
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
    events().resetEvents();
    step();
    EXPECT_EQ(hits(1), 0); // inactive until it is poked again
}

TEST_F(EventsTest, ResetsRunDownTheChainsThatWereSetOff) {
    start(counter + "1 1 } " + counter + "1 2 } " + bystander);
    events().poke(1);
    events().at(0)->reset(); // has not fired: nothing behind it changes
    EXPECT_TRUE(events().at(2)->fired);
    events().poke(0);
    events().at(0)->reset();
    EXPECT_FALSE(events().at(0)->fired || events().at(1)->fired || events().at(2)->fired);
}

TEST_F(EventsTest, CirclesAndLongChainsEnd) {
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
    const auto appears = [&](float d) {
        spawner.position.y = heightAt(d) - 10;
        step();
        return spawner.actor != nullptr;
    };
    EXPECT_FALSE(appears(0.5f)); // not active yet
    events().poke(0);
    EXPECT_TRUE(appears(0.5f)); // seen, but right after the activation
    EXPECT_EQ(actorOf(0)->position(), spawner.position);
    EXPECT_EQ(actorOf(0)->parameters.size(), 1u);
    actorOf(0)->unit->position.y = heightAt(2.5f);
    step();
    EXPECT_TRUE(spawner.actor);
    actorOf(0)->unit->position.y = heightAt(2.7f);
    step();
    EXPECT_FALSE(spawner.actor);
    for (const float d : {0.5f, 1.2f, 1.6f})
        EXPECT_FALSE(appears(d)) << d;
    EXPECT_TRUE(appears(1.4f));

    notifyDeath(*spawner.actor); // dies: 3 s until the next
    EXPECT_EQ(hits(1), 1);
    for (int i = 0; i < 178; ++i)
        EXPECT_FALSE(appears(1.4f));
    step(4);
    EXPECT_TRUE(spawner.actor);
    Thingy* held = spawner.actor;
    events().resetEvents();
    EXPECT_TRUE(held->removeWhenOffscreen && !spawner.actor);
}

TEST_F(EventsTest, ActorsOfTheStageAndTeleports) {
    const int type = firstTestType + GROUP_SCENERY;
    start(spawning("Thingy", type) + spawning("SpawnThingy", type, "triggers 1 2") + bystander +
          "TeleportPlayer{ pos 7 8 9 }");
    spawn(GROUP_PLAYER, {1, 1, 1});
    TestActor& secondHero = spawn(GROUP_PLAYER, {2, 2, 2});
    Thingy* first = event<ThingyEvent>(0).actor;
    EXPECT_FALSE(actorOf(1));
    events().poke(1);
    Thingy* second = actorOf(1);
    ASSERT_TRUE(first && second);
    events().poke(1);
    EXPECT_EQ(actorOf(1), second); // it holds one
    events().notifyFinished(1);
    EXPECT_EQ(hits(2), 1);
    events().startEvents();
    EXPECT_NE(event<ThingyEvent>(0).actor, first);
    EXPECT_TRUE(first->removeWhenOffscreen);
    events().poke(3);
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
    const auto lastPlace = [&] { return actors(GROUP_ENEMIES).back()->position(); };
    seedRandom(7);
    const float drawnY = randomFraction();
    seedRandom(7);
    events().poke(0);
    step();
    ASSERT_EQ(enemies(), 1u);
    const float halfHeight = heightAt(1);
    EXPECT_NEAR(lastPlace().x, 100 + halfHeight * 16 / 9 + 40, 1e-3f);
    EXPECT_NEAR(lastPlace().y, 60 + drawnY * 20, 1e-3f);
    step(40); // one more half a second later
    EXPECT_EQ(enemies(), 2u);
    hero.unit->position.x = 100 + halfHeight * 16 / 9 * 0.7f; // too near to where they come from
    step(60);
    EXPECT_EQ(enemies(), 2u);
    spawner.side = RepeatedSpawnEvent::belowScreen;
    step(30);
    ASSERT_EQ(enemies(), 3u);
    EXPECT_NEAR(lastPlace().y, 50 - halfHeight - 40, 1e-3f);
}
