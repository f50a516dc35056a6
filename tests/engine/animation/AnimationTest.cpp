#include "animation/SkeletonInstance.h"

#include "core/TimerManager.h"

#include "fake/FakePlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

using namespace Zelkor;

const Vec3 z{0, 0, 1};

// A clip that carries every joint from 0 to (10, 0, 0) and turns it by angle about z at an even rate.
AnimationClip movingClip(const char* name, float duration, float angle, int keys = 5) {
    std::vector<Keyframe> track;
    for (int k = 0; k < keys; ++k) {
        const float u = static_cast<float>(k) / static_cast<float>(keys - 1);
        track.push_back({u * duration, {10 * u, 0, 0}, quatFromAxisAngle(angle * u, z), {1, 1, 1}});
    }
    return {name, {track, track}};
}

// A clip that holds every joint turned by angle, one unit up.
AnimationClip poseClip(const char* name, float angle) {
    const Keyframe key{0, {0, 1, 0}, quatFromAxisAngle(angle, z), {1, 1, 1}};
    std::vector<Keyframe> track(3, key);
    track[1].time = 1;
    track[2].time = 2;
    return {name, {track, track}};
}

class AnimationTest : public ::testing::Test {
  protected:
    AnimationTest() {
        TimerManager::reset();
        data.bindPose = {{{0, 0, 0}, {}}, {{0, 2, 0}, {}}};
        data.parents = {-1, 0};
        data.jointNames = {"root", "root|head"};
        data.clips = {movingClip("walk", 2, 1), movingClip("run", 2, 2), poseClip("left", 1),
                      poseClip("right", -1), poseClip("high", 2)};
        skeleton = std::make_unique<SkeletonInstance>(data);
        skeleton->timer = &timer;
    }
    ~AnimationTest() override { TimerManager::reset(); }

    void step(float dt) {
        timer.delta = dt;
        skeleton->updateAnimations();
        skeleton->updateSkeleton();
    }
    // The root's turn about z.
    float angle() const {
        const Quat& q = skeleton->joints[0].localRotation;
        return 2 * std::atan2(q.z, q.w);
    }
    float x() const { return skeleton->joints[0].localPosition.x; }
    bool playing(const char* clip) {
        return std::count(skeleton->animations.begin(), skeleton->animations.end(),
                          skeleton->animation(clip)) == 1;
    }

    platform::FakePlatform fake;
    SkeletonData data;
    GameTimer timer;
    std::unique_ptr<SkeletonInstance> skeleton;
};

TEST_F(AnimationTest, LoopsWrapAndRestartTheirCursors) {
    Animation* walk = skeleton->play("walk");
    step(1.9f);
    EXPECT_EQ(walk->keyCursor[0], 3);
    walk->setTime(walk->time + 0.2f);
    EXPECT_NEAR(walk->time, 0.1f, 1e-6f);
    EXPECT_EQ(walk->update(0), 2); // tracks
    EXPECT_EQ(walk->keyCursor[0], 0);
    skeleton->updateSkeleton();
    EXPECT_NEAR(x(), 0.5f, 1e-5f);

    walk->nextName = "run";
    walk->setTime(5);
    EXPECT_EQ(walk->time, 2); // a follow-up holds it at the end
    walk->nextName.clear();
    walk->loop = false;
    walk->setTime(-1);
    EXPECT_EQ(walk->time, 0);
    walk->loop = true;
    walk->setTime(-0.5f);
    EXPECT_EQ(walk->time, 1.5f);
    walk->setTime(6);
    EXPECT_EQ(walk->time, 2); // an exact end is not yet the start
}

TEST_F(AnimationTest, BackwardPlayWalksTheCursorsDown) {
    Animation* walk = skeleton->play("walk");
    walk->speed = -1;
    step(0.1f);
    EXPECT_EQ(walk->keyCursor[0], 3);
    step(0.8f);
    EXPECT_EQ(walk->keyCursor[0], 2);
    EXPECT_NEAR(x(), 5.5f, 1e-4f);
    // A play sets it forwards again, from the start, and is posed there at once.
    skeleton->play("walk");
    skeleton->updateSkeleton();
    EXPECT_EQ(x(), 0);
}

TEST_F(AnimationTest, FadingOutEndsInTheSameUpdate) {
    Animation* walk = skeleton->play("walk");
    walk->fadeSpeed = -2;
    step(0.25f);
    EXPECT_NEAR(x(), 0.625f, 1e-5f); // half way from the bind pose
    EXPECT_TRUE(playing("walk"));
    step(0.25f);
    EXPECT_FALSE(playing("walk"));
    EXPECT_EQ(x(), 0); // the bind pose
}

TEST_F(AnimationTest, PlayCrossFadesItsOwnLayerOnly) {
    Animation* left = skeleton->play("left");
    Animation* high = skeleton->animation("high");
    high->layer = 2;
    skeleton->play("high")->weight = 0.001f; // plays on
    skeleton->play("right", 0.5f);
    step(0.25f);
    EXPECT_NEAR(angle(), 0, 0.01f); // half left, half right
    // Playing what fades out turns it round without a restart.
    EXPECT_EQ(skeleton->play("left", 0.25f), left);
    EXPECT_EQ(left->time, 0.25f);
    step(0.25f);
    EXPECT_NEAR(angle(), 1, 0.01f);
    EXPECT_FALSE(playing("right"));
    // Without a fade the old one leaves at the next update.
    skeleton->play("right");
    step(0.01f);
    EXPECT_FALSE(playing("left"));
    EXPECT_NEAR(angle(), -1, 0.01f);
    skeleton->play("right");
    EXPECT_TRUE(playing("right") && playing("high")); // once
}

TEST_F(AnimationTest, HigherLayersSilenceLowerOnes) {
    skeleton->play("left");
    Animation* high = skeleton->animation("high");
    high->layer = 2;
    skeleton->play("high");
    step(0);
    EXPECT_NEAR(angle(), 2, 1e-5f);
    // At half weight it leaves half to the layer below.
    high->weight = 0.5f;
    step(0);
    EXPECT_NEAR(angle(), 1.5f, 1e-5f);
    // A masked joint is left to the layers below.
    high->weight = 1;
    high->jointMask[0] = 1;
    step(0);
    EXPECT_NEAR(angle(), 1, 1e-5f);
    EXPECT_NEAR(skeleton->joints[1].localPosition.y, 3, 1e-5f);
}

TEST_F(AnimationTest, AdditiveMotionIsRelativeToItsFirstKey) {
    skeleton->play("left");
    Animation* high = skeleton->animation("high");
    high->additive = true;
    high->layer = 2;
    skeleton->play("high"); // keys equal to its first: no change
    step(0.5f);
    EXPECT_NEAR(angle(), 1, 1e-5f);
    Animation* walk = skeleton->animation("walk");
    walk->additive = true;
    walk->layer = 2;
    skeleton->play("walk")->weight = 0.5f;
    step(1);
    EXPECT_NEAR(angle(), 1 + 0.25f, 1e-4f); // half of half its turn
    EXPECT_NEAR(x(), 2.5f, 1e-4f);
    EXPECT_TRUE(playing("high")); // no play replaces an additive clip
}

TEST_F(AnimationTest, FollowUpsCrossFadeUntilTheEnd) {
    skeleton->playThen("walk", "left", 0, 0.5f);
    Animation* left = skeleton->animation("left");
    step(1.25f);
    EXPECT_FALSE(playing("left"));
    step(0.5f); // due at 1.5, noticed at 1.75
    ASSERT_TRUE(playing("left"));
    EXPECT_FLOAT_EQ(left->fadeSpeed, 4);
    step(0.125f);
    EXPECT_FLOAT_EQ(left->weight, 0.5f);
    step(0.25f);
    EXPECT_FALSE(playing("walk"));
}

TEST_F(AnimationTest, FollowUpsKeepTheirTimesAtOtherSpeeds) {
    Animation* walk = skeleton->animation("walk");
    walk->defaultNextName = "left";
    walk->defaultNextBlendTime = 0.25f;
    walk->defaultNextOffset = 0.25f;
    walk->defaultNextStartTime = 0.75f;
    skeleton->play("walk");
    walk->speed = 2;
    step(0.45f); // 0.9 of 2 clip-seconds; due 1 before the end
    EXPECT_FALSE(playing("left"));
    step(0.1f);
    ASSERT_TRUE(playing("left"));
    EXPECT_EQ(skeleton->animation("left")->time, 0.75f);
    EXPECT_NEAR(skeleton->animation("left")->fadeSpeed, 1 / 0.325f, 1e-3f); // to 0.25 before the end
}

TEST_F(AnimationTest, JointsFollowTheirParentsAndOverrides) {
    skeleton->play("left");
    step(0);
    const JointState& head = skeleton->joints[1];
    // One up and turned by 1, the head 3 above the root along its turned y.
    EXPECT_LT(distance(head.worldPosition, {-3 * std::sin(1.0f), 1 + 3 * std::cos(1.0f), 0}), 1e-5f);
    // In the bind pose the skin matrices are identities.
    skeleton->animations.clear();
    step(0);
    for (const Mat4& matrix : skeleton->skinMatrices)
        EXPECT_LT(distance(mat4TransformPoint(matrix, {1, 2, 3}), {1, 2, 3}), 1e-5f);

    skeleton->overrides = {{1, true, true, quatFromAxisAngle(0.5f, z), {0, 1, 0}},
                           {0, true, false, quatFromAxisAngle(pi / 2, z), {}},
                           {7, true, true, {}, {}}};
    step(0);
    EXPECT_LT(distance(head.worldPosition, {-3, 0, 0}), 1e-5f);
    EXPECT_NEAR(head.worldRotation.z, std::sin(0.25f), 1e-5f); // exactly the world rotation asked for
}

} // namespace
