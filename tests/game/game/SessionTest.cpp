#include "game/Session.h"

#include "core/DebugManager.h"
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

TEST_F(SessionTest, ReplacesTheOneBefore) {
    writeData("levels/level012.level", "0 0 1 1 stone 0 0 0\n");
    game->currentStage = 12;
    for (int i = 0; i < 2; ++i) {
        game->startSession();
        EXPECT_EQ(game->session->stage, 12);
        EXPECT_TRUE(game->tileGrid()->tileAt({0, 0, 0}, 1));
        EXPECT_EQ(game->session->scene.lights.size(), 1u);
        EXPECT_EQ(game->session->scene.units().size(), 1u);
    }
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
    extra.onUpdate = [&] { session.restartRequested = true; };
    step();
    EXPECT_EQ(session.time, 0);
    EXPECT_EQ(TestActor::alive, 1); // the stage's own actor, anew
    EXPECT_EQ(session.levelUnits.size(), 2u);
    EXPECT_TRUE(game->tileGrid()->tileAt({0, 0, 0}, 1));
    EXPECT_EQ(session.gravityFactor, 2); // its event fires once a stage only
    EXPECT_EQ(game->camera()->lockWeight, 0);
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
    EXPECT_NEAR(game->session->time, 0.04f, 1e-5f);
    EXPECT_EQ(managers->unitManager->frameNumber, 1);          // drawn once
    EXPECT_FALSE(managers->controllerManager->isPressed('Z')); // the frame is over
}

// What a player presses must be in the very picture that is drawn next: one frame more is felt.
TEST_F(SessionTest, AKeyShowsInThePictureOfItsOwnFrame) {
    startStage("0 0 3 1 floor 0 0 0 floor 10 0 0 ",
               "{ SpawnPlayer{ pos 5 6 0 rot 0 0 1 0 mesh none } StartupTriggers 1 0 }");
    managers->debugManager->startUp();
    for (int i = 0; i < 30; ++i)
        frame(17);
    const Thingy& hero = *actors(GROUP_PLAYER).at(0);
    const float ground = hero.position().y;
    ControllerManager& keys = *managers->controllerManager;
    for (const int binding : {bindingJump, bindingFire})
        keys.handleMessage({.kind = platform::MessageKind::key, .down = true, .code = keys.bindings[binding]});
    frame(17);
    EXPECT_GT(hero.position().y, ground + 1);
    EXPECT_EQ(actors(GROUP_BULLETS).size(), 1u);
}
