// Ladders and mine carts, with the hero on them.
#include "actors/player/PlayerStandard.h"
#include "actors/rides/Minecart.h"
#include "game/WorldTest.h"

using namespace Zelkor;

namespace {

class RidesTest : public WorldTest {
  protected:
    PlayerStandard& start(const std::string& level, const std::string& feet, const std::string& events) {
        writeData("units/tiles/area1/tiledef.txt", "ladder type 2 scaleY ; top type 4 ; ground scaleX ;");
        startStage("0 0 1 1 " + level, "{ SpawnPlayer{ pos " + feet + " rot 0 0 1 0 mesh none } " + events);
        hero = dynamic_cast<PlayerStandard*>(game->thingyManager->nearest(GROUP_PLAYER, {}));
        hero->input.overridden = true;
        return *hero;
    }
    // One step after the other with the stick and buttons so.
    void hold(const Vec3& stick, int steps, std::uint32_t buttons = 0) {
        hero->input.overrideStick = stick;
        for (int i = 0; i < steps; ++i) {
            hero->input.overridePreviousButtons = i == 0 ? 0 : buttons;
            hero->input.overrideButtons = buttons;
            step();
        }
    }
    PlayerStandard* hero = nullptr;
};

constexpr Vec3 up{0, 1, 0}, down{0, -1, 0}, still{};

// A floor, a ladder of four cells at x 50, and a ledge with a ladder top beside it.
std::string ladderStage() {
    std::string level;
    for (int x = 0; x <= 100; x += 10)
        level += "tiles/area1/ground " + std::to_string(x) + " 0 0 ";
    for (int y = 10; y <= 40; y += 10)
        level += "tiles/area1/ladder 50 " + std::to_string(y) + " 0 ";
    return level + "tiles/area1/top 50 50 0 tiles/area1/ground 60 50 0 ";
}

} // namespace

TEST_F(RidesTest, ClimbsALadderRungByRungAndOverItsTop) {
    start(ladderStage(), "51.5 6 0", "StartupTriggers 1 0 }");
    step(10);
    hold(up, 1);
    EXPECT_EQ(hero->state, PlayerState::climb);
    hold(still, 30);
    EXPECT_NEAR(hero->position().x, 50, 1e-3f);
    hold(up, 1);
    hold(still, 30);
    const float rest = hero->position().y;
    EXPECT_NEAR(rest, 8, 0.02f); // 3 above the ladder's foot
    hold(up, 1);
    hold(still, 30);
    EXPECT_NEAR(hero->position().y, rest + 4.5f, 0.02f);
    for (int i = 0; i < 120; ++i) {
        hold(up, 1);
        EXPECT_NE(hero->state, PlayerState::inAir); // he steps onto the top, he does not drop onto it
    }
    EXPECT_EQ(hero->state, PlayerState::onGround);
    EXPECT_NEAR(hero->position().y, 54.99f, 1e-3f);
    hold(still, 30);
    hold(down, 1);
    EXPECT_EQ(hero->state, PlayerState::climb);
    hold(down, 200);
    EXPECT_EQ(hero->state, PlayerState::onGround);
    EXPECT_NEAR(hero->position().y, 4.99f, 1e-3f);
}

TEST_F(RidesTest, LeavesALadderByJumpAndWaitsBeforeTheNext) {
    start(ladderStage(), "50 6 0", "StartupTriggers 1 0 }");
    step(10);
    hold(up, 25);
    const float from = hero->position().y;
    hold(up, 1, PlayerInputSnapshot::jump);
    EXPECT_EQ(hero->state, PlayerState::inAir);
    EXPECT_EQ(hero->velocity.x, 0);
    hold(up, 17);
    EXPECT_EQ(hero->state, PlayerState::inAir);
    EXPECT_LT(hero->position().y, from);
    hold(up, 2);
    EXPECT_EQ(hero->state, PlayerState::climb);
    hero->onHit({nullptr, {0, 0, 0}, {100, 100, 0}, 1, 0, {1, 0, 0}});
    EXPECT_EQ(hero->state, PlayerState::hurt);
}

TEST_F(RidesTest, AMovingLadderTakesHimAlong) {
    start("", "3 6 0",
          "Thingy{ pos 3 0 0 rot 0 0 1 0 mesh none type 38 param 0 80 param 1 50 param 4 0 } "
          "StartupTriggers 1 0 }");
    hold(up, 2);
    EXPECT_EQ(hero->state, PlayerState::climb);
    hold(still, 120);
    EXPECT_NEAR(hero->position().x, 53, 1);
    hold(up, 300);
    EXPECT_EQ(hero->state, PlayerState::climb); // no top to climb over
    EXPECT_LT(hero->position().y, 80 - 25);
}

TEST_F(RidesTest, ACartRunsFliesOverAGapAndThrowsHimOffAtTheEnd) {
    start("tiles/area1/ground 520 20 0 tiles/area1/ground 520 30 0 ", "0 20 0",
          "Rail{ pos 0 0 0 triggers 1 2 } Rail{ pos 150 0 0 } Rail{ pos 230 -10 0 triggers 1 4 } "
          "Rail{ pos 600 20 0 } Thingy{ pos 0 0 0 rot 0 0 1 0 mesh none type 41 } "
          "StartupTriggers 3 0 1 3 }");
    // Rail 1 leads to event 2, and rail 3 to event 4: two tracks with a gap between.
    auto& cart = dynamic_cast<Minecart&>(*actors(GROUP_RIDES)[0]);
    hold(still, 30);
    ASSERT_EQ(hero->state, PlayerState::cart);
    EXPECT_EQ(hero->cart, &cart);
    EXPECT_NEAR(hero->position().x, cart.position().x, 0.1f);
    EXPECT_NEAR(hero->position().y, cart.top(), 0.1f);
    hero->onHit({nullptr, {-100, -100, 0}, {200, 100, 0}, 1, 0, {-1, 0, 0}});
    EXPECT_EQ(hero->state, PlayerState::cart); // thrown up with the cart
    EXPECT_FALSE(cart.onRails());
    EXPECT_EQ(hero->health, 3);
    hold(still, 60);
    EXPECT_TRUE(cart.onRails());
    while (cart.position().x < 135)
        hold(still, 1);
    hold(still, 20, PlayerInputSnapshot::jump);
    EXPECT_FALSE(cart.onRails());
    EXPECT_GT(cart.position().y, 10);
    hold(still, 80);
    EXPECT_TRUE(cart.onRails());
    EXPECT_GT(cart.position().x, 230);
    EXPECT_GT(cart.tilt, 0.05f); // uphill
    for (int i = 0; i < 300 && !cart.stopped(); ++i)
        hold(still, 1);
    EXPECT_TRUE(cart.stopped());
    EXPECT_EQ(hero->state, PlayerState::inAir);
    EXPECT_GT(hero->velocity.x, 0);
}
