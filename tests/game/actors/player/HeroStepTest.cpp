// What surrounds the movement in a step: the camera area, the view ahead, platforms, frames, clips.
#include "actors/platforms/Platform.h"
#include "actors/player/HeroClips.h"
#include "animation/SkeletonInstance.h"
#include "game/actors/player/HeroStage.h"

#include <gtest/gtest.h>

namespace {

const std::vector<std::string> clipNames{"idle", "run",     "crouch",  "crouch_flipped", "land",
                                         "fall", "jumpoff", "jump_up", "jump_turn",      "arm_recoil"};

// A spine, the chain to the right shoulder, the elbow and a joint whose name only begins like the shoulder's.
Zelkor::SkeletonData heroSkeleton() {
    const std::string shoulder = "rig_JT_DRV_neck_Base1|rig_JT_DRV_R_Clavicle|rig_JT_DRV_R_Shoulder";
    Zelkor::SkeletonData skeleton;
    skeleton.jointNames = {"rig_JT_DRV_neck_Base1", shoulder, shoulder + "|rig_JT_DRV_R_Elbow",
                           shoulder + "2"};
    skeleton.parents = {-1, 0, 1, 0};
    skeleton.bindPose.resize(4);
    for (const std::string& name : clipNames) {
        Zelkor::AnimationClip& clip = skeleton.clips.emplace_back();
        clip.name = name;
        clip.tracks.assign(4, std::vector<Zelkor::Keyframe>(3));
        for (std::vector<Zelkor::Keyframe>& track : clip.tracks)
            track[1].time = 0.5f, track[2].time = 1;
    }
    return skeleton;
}

// The clip that replaces the others, and its speed.
std::string playing(const PlayerStandard& hero) {
    const Zelkor::Animation* newest = nullptr;
    for (const Zelkor::Animation* animation : hero.unit->skeleton->animations)
        if (!animation->replaced) newest = animation;
    return newest ? newest->clip->name + " " + std::to_string(newest->speed).substr(0, 3) : "";
}

} // namespace

TEST(HeroView, HoldsHimInsideTheCameraAreaAndKillsHimBelowIt) {
    HeroStage stage(plain, middle);
    stage.camera.areaMin = {80, 0, 0};
    stage.camera.areaMax = {130, 100, 0};
    stage.steps(5);
    stage.steps(60, 0, right);
    EXPECT_EQ(stage.hero->position().x, 125);
    EXPECT_EQ(stage.hero->bodyCentre.x, 125);
    EXPECT_EQ(stage.hero->velocity.x, 0);
    stage.steps(90, 0, left);
    EXPECT_EQ(stage.hero->position().x, 85);

    HeroStage falling({}, {0, 0, 0});
    falling.camera.areaMin = {-50, -10, 0};
    falling.camera.areaMax = {50, 100, 0};
    HeroStep step{};
    for (int i = 0; i < 100 && !falling.hero->dead; ++i) {
        const float before = falling.hero->position().y;
        step = falling.step();
        EXPECT_GE(before, -30);
    }
    EXPECT_TRUE(falling.hero->dead);
    EXPECT_LT(step.position.y, -30);
}

TEST(HeroView, LooksAheadWhereHeGoes) {
    LookAhead view;
    const float dt = 1 / 60.0f;
    for (int i = 0; i < 20; ++i)
        view.update(1, up, dt);
    EXPECT_NEAR(view.speed, 30, 1e-3f); // 1.5 more in each step
    EXPECT_NEAR(view.offset.x, 1.5f * 20 * 21 / 2 / 60, 1e-3f);
    for (int i = 0; i < 30; ++i)
        view.update(1, up, dt);
    EXPECT_EQ(view.offset.x, 20);
    EXPECT_EQ(view.offset.y, 10);
    for (int i = 0; i < 119; ++i)
        view.update(0, up, dt);
    EXPECT_EQ(view.offset.x, 20); // patient for two seconds
    view.idleTime = 3 - dt;       // half way eased in
    view.update(0, up, dt);
    EXPECT_NEAR(view.offset.x, 20 * (1 - 0.1f * 20 * 0.5f * dt), 1e-4f);
    view = {};
    view.update(1, {-1, 0, 0}, 0.3f);
    EXPECT_NEAR(view.offset.x, -12, 1e-4f);
    EXPECT_EQ(view.offset.y, 0);
    // In play the horizontal input of the state counts, and only once a step.
    HeroStage stage(plain, middle);
    stage.steps(5);
    stage.hero->lookAhead.speed = 0;
    stage.steps(11, 0, right);
    EXPECT_NEAR(stage.hero->lookAhead.speed, 15, 1e-3f);
    EXPECT_EQ(stage.camera.targetOffset.x, stage.hero->lookAhead.offset.x);
}

TEST(HeroFrame, TurnsVelocityStickAndBodyAndComesBack) {
    HeroStage stage({}, {0, 0, 0});
    stage.hero->velocity = {3, 4, 0};
    stage.hero->setGravityFrame({1, 0, 0}, {0, 1, 0});
    EXPECT_EQ(stage.hero->velocity, (Vec3{4, 3, 0}));
    stage.device.move = {0.25f, 0.5f, 0};
    EXPECT_EQ(stage.hero->input.direction().x, 0.5f);
    for (int i = 0; i < 120; ++i) {
        stage.hero->setGravityFrame({1, 0, 0}, {0, 1, 0});
        stage.step();
    }
    EXPECT_EQ(stage.hero->velocity.y, -130);
    EXPECT_NEAR(stage.hero->position().x, stage.hero->bodyCentre.x - 10, 1e-3f); // the feet point to -x
    stage.steps(1);
    EXPECT_EQ(stage.hero->up, up);
    EXPECT_NEAR(stage.hero->velocity.x, -130, 1);
}

TEST(HeroTeleport, StandsHimThereFacingRight) {
    HeroStage stage(plain, {100, 60, 0});
    stage.steps(30, 0, left);
    stage.hero->teleport({50, surface, 0});
    EXPECT_EQ(stage.hero->position(), (Vec3{50, surface, 0}));
    EXPECT_EQ(stage.hero->bodyCentre.x, 50);
    EXPECT_EQ(stage.hero->velocity, Vec3{});
    EXPECT_EQ(stage.hero->facing, 1);
    EXPECT_EQ(stage.hero->state, PlayerState::onGround);
}

TEST(HeroClips, FollowTheLandingAndTheStick) {
    Zelkor::SkeletonData skeleton = heroSkeleton();
    const auto landing = [&](const Vec3& stick, const Vec3& before) {
        HeroStage stage(plain, {100, 40, 0}, 1, &skeleton);
        stage.steps(5, 0, before);
        for (int i = 0; i < 100 && stage.hero->state != PlayerState::onGround; ++i)
            stage.step(0, stick);
        return playing(*stage.hero);
    };
    EXPECT_EQ(landing(still, still), "idle 1.3");
    EXPECT_EQ(landing(left, still), "run 1.6");
    EXPECT_EQ(landing(down, right), "crouch 1.6");
    EXPECT_EQ(landing(down, left), "crouch_flipped 1.6");

    HeroStage stage(plain, middle, 1, &skeleton);
    stage.steps(5);
    stage.step(jump);
    EXPECT_EQ(playing(*stage.hero), "jumpoff 1.0");
    EXPECT_EQ(stage.hero->unit->skeleton->animation("jumpoff")->nextName, "jump_up");
    while (stage.hero->velocity.y > 40) {
        EXPECT_EQ(playing(*stage.hero), "jumpoff 1.0");
        stage.step(jump);
    }
    EXPECT_EQ(playing(*stage.hero), "jump_turn 0.4");
    const Zelkor::Animation& recoil = *stage.hero->unit->skeleton->animation("arm_recoil");
    EXPECT_TRUE(recoil.additive);
    EXPECT_EQ(recoil.jointMask, (std::vector<uint8_t>{1, 0, 0, 1}));
    EXPECT_EQ(stage.hero->timer->scale, 1);
}
