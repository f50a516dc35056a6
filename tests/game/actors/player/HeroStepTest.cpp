// What surrounds the movement in a step: the view ahead, the frame.
#include "game/actors/player/HeroStage.h"

#include <gtest/gtest.h>

TEST(HeroView, LooksAheadWhereHeGoes) {
    LookAhead view;
    const float dt = 1 / 60.0f;
    const auto look = [&](int steps, float moveX) {
        for (int i = 0; i < steps; ++i)
            view.update(moveX, up, LookAhead::reach, dt);
        return view.offset.x;
    };
    EXPECT_NEAR(look(20, 1), 1.5f * 20 * 21 / 2 / 60, 1e-3f); // the speed grows by 1.5 in each step, to 30
    EXPECT_EQ(look(30, 1), 20);
    EXPECT_EQ(look(119, 0), 20); // patient for two seconds
    view.idleTime = 3 - dt;      // half way eased in
    EXPECT_NEAR(look(1, 0), 20 * (1 - 0.1f * 20 * 0.5f * dt), 1e-4f);
}

TEST(HeroFrame, TurnsVelocityStickAndBodyAndComesBack) {
    HeroStage stage({}, {0, 0, 0});
    stage.hero->velocity = {3, 4, 0};
    stage.device.move = {0.25f, 0.5f, 0};
    stage.hero->setGravityFrame(right, up); // up, right
    EXPECT_EQ(stage.hero->velocity, (Vec3{4, 3, 0}));
    EXPECT_EQ(stage.hero->input.direction().x, 0.5f);
    for (int i = 0; i < 120; ++i) {
        stage.hero->setGravityFrame(right, up);
        stage.step();
    }
    EXPECT_EQ(stage.hero->velocity.y, -130);
    EXPECT_NEAR(stage.hero->position().x, stage.hero->bodyCentre.x - 10, 1e-3f); // the feet point to -x
    stage.step();
    EXPECT_EQ(stage.hero->up, up);
    EXPECT_NEAR(stage.hero->velocity.x, -130, 1);
}
