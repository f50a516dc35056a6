// The hero's numbers, each against a value worked out by hand from the rules of one explicit Euler step.
#include "game/actors/player/HeroStage.h"

#include <gtest/gtest.h>

// At 1/60 s: the step of the jump moves by 85/60 before any gravity acts. Held, each of 20 steps then takes 1
// off the speed (the 21st would end past 0.35 s); let go, each step takes 5. Rise = sum of the speeds / 60.
TEST(HeroJump, RisesByTheSumOfItsSteps) {
    const float full = (85 + (20 * 85 - 20 * 21 / 2) + (13 * 65 - 5 * 13 * 14 / 2)) / 60.0f;  // 32.75
    const float tapped = (85 + (17 * 85 - 5 * 17 * 18 / 2)) / 60.0f;                          // 12.75
    const float released = (85 + (6 * 85 - 6 * 7 / 2) + (15 * 79 - 5 * 15 * 16 / 2)) / 60.0f; // after 6 steps
    EXPECT_NEAR(HeroStage(plain, middle).jumpHeight(60), full, 1e-3f);
    EXPECT_NEAR(HeroStage(plain, middle).jumpHeight(0), tapped, 1e-3f);
    EXPECT_NEAR(HeroStage(plain, middle).jumpHeight(6), released, 1e-3f);
    // At half gravity, without holding: 2.5 a step, 33 of them.
    EXPECT_NEAR(HeroStage(plain, middle, 0.5f).jumpHeight(0), (85 + 33 * 85 - 2.5f * 33 * 34 / 2) / 60,
                1e-3f);
}

TEST(HeroJump, PressedInTheStepOfTheLandingJumpsAgain) {
    const Vec3 above{100, 30, 0};
    HeroStage fall(plain, above);
    int landing = 2;
    for (fall.steps(landing); fall.step().state != onGround && landing < 100;)
        ++landing;
    EXPECT_NEAR(fall.hero->position().y, standing, 1e-4f);
    HeroStage again(plain, above);
    again.steps(landing);
    EXPECT_EQ(again.step(jump).velocity.y, 85);
    EXPECT_EQ(again.hero->state, inAir);
    // Held since before the landing it does nothing.
    EXPECT_EQ(HeroStage(plain, above).steps(100, jump).back().state, onGround);
}

TEST(HeroJump, EndsAtACeilingAndPassesLadderTopsFromBelow) {
    HeroStage roofed({"#####", "     ", "     ", "#####"}, {20, surface, 0}); // the roof's lower side at 25
    EXPECT_NEAR(roofed.jumpHeight(60), 25 - 0.01f - 18 - standing, 1e-4f);
    HeroStage ladder({"     ", " === ", "     ", "     ", "#####"}, {20, surface, 0}); // its surface at 35
    ladder.jumpHeight(60);
    EXPECT_NEAR(ladder.hero->position().y, 34.99f, 1e-4f);
    EXPECT_EQ(ladder.hero->state, onGround);
}

TEST(HeroFall, KeepsToTheTerminalSpeedAndTunnelsThroughNothing) {
    std::vector<std::string> shaft(60);
    shaft.insert(shaft.end(), {"#####", "     "});
    for (const float dt : {1 / 30.0f, 1 / 60.0f, 1 / 144.0f})
        for (const float startX : {20.0f, 22.3f, -8.0f}) { // the last one over the floor's left end
            HeroStage stage(shaft, {startX, 600, 0}, 0.5f);
            stage.dt = dt;
            float fastest = 0;
            for (const HeroStep& step : stage.steps(static_cast<int>(6.5f / dt)))
                fastest = std::min(fastest, step.velocity.y);
            EXPECT_EQ(fastest, -130);
            EXPECT_NEAR(stage.hero->position().y, 14.99f, 1e-4f) << dt << " " << startX;
        }
}

TEST(HeroRun, GainsAndLosesSpeedByItsRates) {
    HeroStage stage(plain, middle);
    stage.steps(5);
    EXPECT_EQ(stage.step(0, right).velocity.x, 0); // this step turns idling into running
    EXPECT_NEAR(stage.step(0, right).velocity.x, 200 / 60.0f, 1e-4f);
    EXPECT_NEAR(stage.steps(12, 0, right).back().velocity.x, 13 * 200 / 60.0f, 1e-3f);
    EXPECT_EQ(stage.step(0, right).velocity.x, 45);
    EXPECT_EQ(stage.step().velocity.x, 45); // and this one running into idling
    EXPECT_NEAR(stage.step().velocity.x, 42, 1e-4f);
    EXPECT_EQ(stage.steps(14).back().velocity.x, 0);
    HeroStage air(plain, {100, 200, 0});
    air.step(); // off the ground
    EXPECT_NEAR(air.step(0, right).velocity.x, 2.5f, 1e-4f);
    EXPECT_EQ(air.steps(18, 0, right).back().velocity.x, 45);
    EXPECT_NEAR(air.step().velocity.x, 45 - 50 / 60.0f, 1e-4f);
    air.hero->velocity.x = 60; // faster than a run: back to it at the braking rate
    EXPECT_NEAR(air.step(0, right).velocity.x, 60 - 50 / 60.0f, 1e-4f);
}

TEST(HeroWall, StopsAtItsFaceOnTheGroundAndInTheAir) {
    const std::vector<std::string> pit{"#        #", "#        #", "#        #", "#        #", "##########"};
    for (const bool jumping : {false, true})
        for (const Vec3& side : {left, right}) {
            HeroStage stage(pit, {40, surface, 0});
            stage.steps(5);
            const auto trace = stage.steps(90, jumping ? jump : 0, side);
            for (std::size_t i = 1; i < trace.size(); ++i) {
                EXPECT_EQ(trace[i].position.x, std::clamp(trace[i].position.x, 9.5f, 80.5f));
                EXPECT_TRUE(trace[i - 1].wallSide == 0 || trace[i].velocity.x == 0);
            }
            EXPECT_EQ(trace.back().position.x, side.x < 0 ? 9.5f : 80.5f);
        }
}

TEST(HeroCrouch, StaysDownUnderALowRoofAndStandsUpBeyondIt) {
    HeroStage stage(plain, middle);
    stage.steps(5);
    EXPECT_TRUE(stage.steps(3, 0, down).back().crouching);
    stage.grid.addSolidCell(100, 20); // its lower side at 15: room for 10
    for (const HeroStep& step : stage.steps(90, jump)) {
        EXPECT_TRUE(step.crouching);
        EXPECT_NEAR(step.position.y, standing, 0.02f);
    }
    stage.grid.removeRecord(stage.grid.tileAt({100, 20, 0}, TileType::solid));
    EXPECT_FALSE(stage.steps(2).back().crouching);
}

TEST(HeroCrouch, SlidesToAHaltAndTurnsAtMostOnceInATenthOfASecond) {
    HeroStage stage(plain, middle);
    stage.steps(5);
    EXPECT_EQ(stage.steps(20, 0, right).back().velocity.x, 45);
    stage.step(0, down);
    EXPECT_NEAR(stage.step(0, down).velocity.x, 45 - 400 / 60.0f, 1e-3f);
    stage.dt = 1 / 64.0f; // a tenth of a second is between 6 and 7 steps
    stage.steps(10, 0, down);
    EXPECT_EQ(stage.step(0, {-0.7f, -0.7f, 0}).facing, -1);
    EXPECT_EQ(stage.steps(6, 0, {0.7f, -0.7f, 0}).back().facing, -1);
    EXPECT_EQ(stage.step(0, {0.7f, -0.7f, 0}).facing, 1);
    EXPECT_EQ(stage.hero->velocity.x, 0);
}

TEST(HeroHurt, IsThrownBackLosesOneAndIsSafeForAWhile) {
    HeroStage stage(plain, middle);
    PlayerStandard& hero = *stage.hero;
    const auto hit = [&](float fromX, float directionX = 0, float above = 0) {
        const Vec3 at = hero.position() + Vec3{fromX, above, 0};
        return hero.onHit({nullptr, at - right, at + right + up * 2, 1, 0, {directionX, 0, 0}});
    };
    stage.steps(5);
    EXPECT_EQ(hit(-5, 1), 0); // just touching: he is 4 to either side
    EXPECT_EQ(hit(3), 1);     // a blast at his right
    EXPECT_EQ(hero.velocity, (Vec3{-30, 50, 0}));
    EXPECT_EQ(hero.health, 3);
    EXPECT_EQ(hit(3), 0);
    EXPECT_NEAR(stage.step().velocity.x, -29.5f, 1e-4f);
    EXPECT_EQ(stage.steps(16).back().state, hurt);
    EXPECT_EQ(stage.steps(2).back().state, inAir); // 0.3 s
    stage.steps(79);                               // 98 steps: the flash fades by 0.01 in each
    EXPECT_EQ(hit(0), 0);
    stage.steps(3);
    EXPECT_EQ(hit(3, 1), 1);
    EXPECT_EQ(hero.velocity.x, 30); // the attack's direction decides, not its side
    stage.steps(120, 0, down);
    EXPECT_EQ(hit(0, 0, 10.6f), 0); // crouched, what flies above him misses
    stage.steps(60);
    EXPECT_EQ(hit(0, 0, 10.6f), 1);
    stage.steps(120);
    EXPECT_EQ(hit(0, 1), 1); // the last one
    EXPECT_TRUE(hero.dead);
}
