// What surrounds the movement in a step: the view ahead, the frame, the clips.
#include "animation/SkeletonInstance.h"
#include "game/actors/player/HeroStage.h"

#include <gtest/gtest.h>

TEST(HeroView, LooksAheadWhereHeGoes) {
    LookAhead view;
    const float dt = 1 / 60.0f;
    const auto look = [&](int steps, float moveX) {
        for (int i = 0; i < steps; ++i)
            view.update(moveX, up, dt);
        return view.offset.x;
    };
    EXPECT_NEAR(look(20, 1), 1.5f * 20 * 21 / 2 / 60, 1e-3f); // the speed grows by 1.5 in each step, to 30
    EXPECT_EQ(look(30, 1), 20);
    EXPECT_EQ(look(119, 0), 20); // patient for two seconds
    view.idleTime = 3 - dt;      // half way eased in
    EXPECT_NEAR(look(1, 0), 20 * (1 - 0.1f * 20 * 0.5f * dt), 1e-4f);
    view = {};
    view.update(1, left, 0.3f);
    EXPECT_NEAR(view.offset.x, -12, 1e-4f);
    EXPECT_EQ(view.offset.y, 0);
    // In play the input of the state counts, and only once a step.
    HeroStage stage(plain, middle);
    stage.steps(5);
    stage.steps(11, 0, right);
    EXPECT_NEAR(stage.hero->lookAhead.speed, 15, 1e-3f);
    EXPECT_EQ(stage.camera.targetOffset.x, stage.hero->lookAhead.offset.x);
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

TEST(HeroClips, FollowTheLandingAndTheStick) {
    // The chain to the right elbow, and a joint whose name only begins like the shoulder's.
    const std::string spine = "rig_JT_DRV_neck_Base1";
    const std::string shoulder = spine + "|rig_JT_DRV_R_Clavicle|rig_JT_DRV_R_Shoulder";
    Zelkor::SkeletonData skeleton;
    skeleton.jointNames = {spine, shoulder, shoulder + "|rig_JT_DRV_R_Elbow", shoulder + "2"};
    skeleton.parents = {-1, 0, 1, 0};
    skeleton.bindPose.resize(4);
    for (const char* name : {"idle", "run", "crouch", "crouch_flipped", "land", "fall", "jumpoff", "jump_up",
                             "jump_turn", "arm_recoil"})
        skeleton.clips.push_back({name, std::vector(4, std::vector<Zelkor::Keyframe>(3))});
    // The clip that replaces the others, and its speed.
    const auto playing = [](const HeroStage& stage) {
        const Zelkor::Animation* newest = nullptr;
        for (const Zelkor::Animation* animation : stage.unit->skeleton->animations)
            if (!animation->replaced) newest = animation;
        return newest->clip->name + " " + std::to_string(newest->speed).substr(0, 3);
    };
    const auto landing = [&](const Vec3& stick, const Vec3& before) {
        HeroStage stage(plain, {100, 40, 0}, 1, &skeleton);
        stage.steps(5, 0, before);
        while (stage.step(0, stick).state != onGround) {
        }
        return playing(stage);
    };
    EXPECT_EQ(landing(still, still), "idle 1.3");
    EXPECT_EQ(landing(left, still), "run 1.6");
    EXPECT_EQ(landing(down, right), "crouch 1.6");
    EXPECT_EQ(landing(down, left), "crouch_flipped 1.6");

    HeroStage stage(plain, middle, 1, &skeleton);
    stage.steps(5);
    while (stage.step(jump).velocity.y > 40)
        EXPECT_EQ(playing(stage), "jumpoff 1.0");
    EXPECT_EQ(playing(stage), "jump_turn 0.4");
    EXPECT_EQ(stage.unit->skeleton->animation("arm_recoil")->jointMask, (std::vector<uint8_t>{1, 0, 0, 1}));
    EXPECT_EQ(stage.hero->timer->scale, 1);
}
