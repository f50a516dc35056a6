#include "rig/Pose.h"
#include "mesh/Angles.h"
#include "mesh/Noise.h"
#include "tools/Workshop.h"

#include <cmath>

namespace forge {
namespace {

using Zelkor::Quat;
using Zelkor::Vec3;

// hips, and on each side a leg of three joints that folds forwards.
Rig legs() {
    Rig rig;
    const auto add = [&](const char* name, int parent, const Vec3& at) {
        Joint joint;
        joint.name = joint.path = name;
        joint.parent = parent;
        joint.position = joint.tail = at;
        rig.joints.push_back(joint);
    };
    add("hips", -1, {0, 8, 0});
    for (const float side : {1.0f, -1.0f}) {
        const int first = static_cast<int>(rig.joints.size());
        add(side > 0 ? "leg.r" : "leg.l", 0, {0, 8, side});
        add(side > 0 ? "knee.r" : "knee.l", first, {0.2f, 4.5f, side});
        add(side > 0 ? "foot.r" : "foot.l", first + 1, {0, 1, side});
    }
    return rig;
}

Pose shaken(const Rig& rig, int seed) {
    Pose pose(rig);
    for (std::size_t j = 0; j < rig.joints.size(); ++j) {
        pose.rotations[j] =
            quatFromDegrees(70.0f * vectorNoise({static_cast<float>(j) * 3.1f, 0.5f, 0}, seed));
        pose.offsets[j] = vectorNoise({0, static_cast<float>(j) * 2.3f, 0.4f}, seed);
        pose.touched[j] = j % 2 == 0;
    }
    return pose;
}

TEST(Poses, restStandsWhereTheRigIsAndTurnsCarryChildren) {
    const Rig rig = legs();
    Pose pose(rig);
    const Stance rest = stanceOf(rig, pose);
    for (std::size_t j = 0; j < rig.joints.size(); ++j)
        EXPECT_TRUE(near(rest.positions[j], rig.joints[j].position, 1e-5f));
    pose.rotations[1] = quatFromDegrees({0, 0, 90});
    pose.offsets[0] = {1, 0, 0};
    const Stance swung = stanceOf(rig, pose);
    EXPECT_TRUE(near(swung.positions[3], {1 + 7, 8, 1}, 1e-4f))
        << "the foot swings forwards, level with the hip";
    EXPECT_TRUE(near(swung.positions[6], {1, 1, -1}, 1e-5f));
}

TEST(Poses, reachingHitsItsTargetFromAnyPose) {
    const Rig rig = legs();
    for (int i = 0; i < 80; ++i) {
        Pose pose = i % 2 ? shaken(rig, i) : Pose(rig);
        const Vec3 origin = stanceOf(rig, pose).positions[1];
        Reach ask;
        ask.joint = 3;
        const Vec3 way =
            normalized(vectorNoise({static_cast<float>(i) * 0.9f, 7, 0.2f}, 3) + Vec3{0.1f, -0.3f, 0.05f});
        const float upper = Zelkor::length(rig.joints[2].position - rig.joints[1].position + pose.offsets[2]);
        const float lower = Zelkor::length(rig.joints[3].position - rig.joints[2].position + pose.offsets[3]);
        const float share = 0.1f + 0.85f * hashUnit(i, 1, 1);
        ask.target = origin + way * (std::fabs(upper - lower) + share * 2 * std::min(upper, lower));
        ask.turned = true;
        ask.turn = quatFromDegrees({0, 0, 25});
        reach(rig, pose, ask);
        const Stance stance = stanceOf(rig, pose);
        EXPECT_TRUE(near(stance.positions[3], ask.target, 1e-3f)) << i;
        EXPECT_TRUE(near(rotate(stance.rotations[3], {1, 0, 0}), rotate(ask.turn, {1, 0, 0}), 1e-3f)) << i;
        EXPECT_TRUE(pose.touched[1] && pose.touched[2] && pose.touched[3]);
    }
}

TEST(Poses, kneesFoldForwardsUnlessTold) {
    const Rig rig = legs();
    for (const float forward : {1.0f, -1.0f}) {
        Pose pose(rig);
        Reach ask;
        ask.joint = 3;
        ask.target = {0.5f, 4, 1};
        if (forward < 0) ask.bend = {-1, 0, 0};
        reach(rig, pose, ask);
        const Stance stance = stanceOf(rig, pose);
        EXPECT_GT((stance.positions[2].x - 0.25f) * forward, 1.5f);
        EXPECT_NEAR(stance.positions[2].z, 1, 1e-3f) << "the leg stays in its plane";
    }
}

TEST(Poses, tooFarIsReachedTowardsAndNoWeightChangesNothing) {
    const Rig rig = legs();
    Pose pose(rig);
    Reach ask;
    ask.joint = 3;
    ask.target = {30, 8, 1};
    reach(rig, pose, ask);
    const float limb =
        Zelkor::distance({0, 8, 0}, {0.2f, 4.5f, 0}) + Zelkor::distance({0.2f, 4.5f, 0}, {0, 1, 0});
    EXPECT_TRUE(near(stanceOf(rig, pose).positions[3], {limb, 8, 1}, 0.05f));
    Pose none(rig);
    reach(rig, none, ask, 0);
    EXPECT_TRUE(near(stanceOf(rig, none).positions[3], {0, 1, 1}, 1e-3f));
}

TEST(Poses, mirrorsExchangeSidesAndUndoThemselves) {
    const Rig rig = legs();
    const Pose pose = shaken(rig, 4);
    const Pose other = mirrored(rig, pose, Axis::Z);
    const Stance here = stanceOf(rig, pose), there = stanceOf(rig, other);
    for (std::size_t j = 0; j < rig.joints.size(); ++j) {
        const auto k = static_cast<std::size_t>(rig.find(otherSide(rig.joints[j].name)));
        EXPECT_TRUE(near(there.positions[k], scaled(here.positions[j], {1, 1, -1}), 1e-4f));
        EXPECT_EQ(other.touched[k], pose.touched[j]);
        // A point fixed to the joint mirrors too.
        const Vec3 held{0.3f, -0.7f, 0.4f};
        EXPECT_TRUE(near(rotate(there.rotations[k], scaled(held, {1, 1, -1})),
                         scaled(rotate(here.rotations[j], held), {1, 1, -1}), 1e-4f));
    }
    const Pose back = mirrored(rig, other, Axis::Z);
    for (std::size_t j = 0; j < rig.joints.size(); ++j)
        EXPECT_TRUE(back.rotations[j] == pose.rotations[j]);
}

TEST(Names, sidesAreExchangedWhereTheyStandAlone) {
    EXPECT_EQ(otherSide("arm.r"), "arm.l");
    EXPECT_EQ(otherSide("chest"), "chest");
    EXPECT_EQ(otherSideOfPath("rig_JT_R_Clavicle|rig_JT_R_Shoulder"), "rig_JT_L_Clavicle|rig_JT_L_Shoulder");
    EXPECT_EQ(otherSideOfPath("R_Arm"), "L_Arm");
    EXPECT_EQ(otherSideOfPath("Root_Rail"), "Root_Rail");
}

} // namespace
} // namespace forge
