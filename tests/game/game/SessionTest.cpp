#include "game/Session.h"

#include "core/DebugManager.h"
#include "core/Log.h"
#include "core/Random.h"
#include "game/WorldTest.h"
#include "resources/UnitManager.h"

using namespace Zelkor;

namespace {

class SessionTest : public WorldTest {
  protected:
    // One pass of the main loop that lasts so long.
    void frame(int milliseconds) {
        platform.clock += milliseconds;
        game->runFrame();
    }
    const std::string stageEvents = "{ Thingy{ pos 5 5 0 rot 0 0 0 1 mesh none type 184 }"
                                    "  NonReset{ pos 0 0 0 triggers 1 2 }"
                                    "  Option{ pos 0 0 0 option 0 value 0.5 }"
                                    "  StartupTriggers 1 1 }";
};

} // namespace

TEST_F(SessionTest, StartsInOrder) {
    EXPECT_EQ(stageFileName(0), "level000");
    EXPECT_EQ(stageFileName(12), "level012");
    writeData("levels/level012.level", "0 0 1 1 stone 0 0 0\n");
    std::vector<std::string> log;
    Log::instance().captureInto(&log);
    game->currentStage = 12;
    game->startSession();
    Log::instance().captureInto(nullptr);
    std::erase_if(log, [](const std::string& line) { return line.starts_with("loadtexture"); });
    EXPECT_EQ(log,
              (std::vector<std::string>{"init session", "load level", "loadevents", "init session done"}));
    EXPECT_EQ(game->session->stage, 12);
    EXPECT_TRUE(game->tileGrid()->tileAt({0, 0, 0}, 1));
    EXPECT_EQ(game->session->scene.lights.size(), 1u);
    game->startSession(); // replaces the first
    EXPECT_EQ(game->session->scene.units().size(), 1u);
    game->session.reset();
    EXPECT_FALSE(game->tileGrid() || game->camera() || game->eventList());
}

TEST_F(SessionTest, RestartsTheSameStage) {
    startStage("0 0 3 1 stone 0 0 0 stone 10 0 0\n", stageEvents);
    Session& session = *game->session;
    EXPECT_EQ(session.gravityFactor, 0.5f);
    session.gravityFactor = 2;
    game->tileGrid()->removeTileUnit(session.levelUnits.front());
    TestActor& extra = spawn(GROUP_ENEMIES, {0, 0, 0});
    game->camera()->setLock({1, 2, 3}, 0);
    step(30);
    EXPECT_NEAR(session.time, 0.5f, 1e-4f);
    bool askedFirst = false;
    extra.onUpdate = [&] { askedFirst = session.restartRequested = true; };
    step(); // everything is updated, then the stage restarts
    EXPECT_TRUE(askedFirst);
    EXPECT_FALSE(session.restartRequested);
    EXPECT_EQ(session.time, 0);
    EXPECT_EQ(TestActor::alive, 1); // the stage's own actor, anew
    EXPECT_EQ(session.levelUnits.size(), 2u);
    EXPECT_EQ(session.scene.units().size(), 3u);
    EXPECT_TRUE(game->tileGrid()->tileAt({0, 0, 0}, 1));
    EXPECT_EQ(session.gravityFactor, 2); // its event fires once a stage only
    EXPECT_EQ(game->camera()->lockWeight, 0);
    EXPECT_TRUE(game->camera()->snap);
}

TEST_F(SessionTest, AFrameUpdatesInSubstepsAndDrawsOnce) {
    startStage("0 0 1 1\n", stageEvents);
    managers->debugManager->startUp();
    TestActor& actor = spawn(GROUP_ENEMIES, {0, 0, 0});
    PlayerInput& input = managers->controllerManager->firstPlayer();
    managers->controllerManager->setButton('Z', true);
    bool edges[2] = {};
    actor.onUpdate = [&] { edges[actor.updates - 1] = input.pressed(PlayerInput::jumpMask); };
    frame(40);
    EXPECT_EQ(actor.updates, 2);
    EXPECT_TRUE(edges[0] && !edges[1]);
    EXPECT_EQ(renderer().updateCount, 2);
    EXPECT_NEAR(game->session->time, 0.04f, 1e-5f);
    EXPECT_EQ(managers->unitManager->frameNumber, 1);          // drawn once
    EXPECT_FALSE(managers->controllerManager->isPressed('Z')); // the frame is over
}

// Each tick draws two numbers for each of eleven programs.
TEST_F(SessionTest, TheSketchFlickersByWallTime) {
    const auto drawn = [&](int milliseconds) {
        seedRandom(5);
        frame(milliseconds);
        const int next = randomInt();
        seedRandom(5);
        int count = 0;
        while (randomInt() != next)
            ++count;
        return count;
    };
    for (const auto& [milliseconds, count] :
         {std::pair{90, 0}, {1, 22}, {50, 0}, {50, 22}, {89, 0}, {300, 22}})
        EXPECT_EQ(drawn(milliseconds), count);
    game->flicker = false;
    EXPECT_EQ(drawn(100), 0);
}
