// Clips from their text to the keys that are written, played back the way the game plays them.
#include "mesh/Angles.h"
#include "rig/Bake.h"
#include "tools/Workshop.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace forge {
namespace {

using Zelkor::Quat;
using Zelkor::Vec3;

const std::string figure = R"(
facing x
rig {
    joint hips 0,7,0 axes=0,90,0 {
        joint chest 0,9,0 { joint hat 0,12,0 }
        mirror z { joint leg.r 0,7,1 called=R_Leg axes=30,0,0 { joint knee.r .2,4,1 called=R_Knee { joint foot.r 0,1,1 called=R_Foot } } }
    }
}
part body paint bone=chest { sphere 0,9,0 r=2 }
pose ahead { reach foot.r 2,1.5,1 turn=0
             reach foot.l -2,1.5,-1 turn=0
             hips 0,10,0 move=0,-.5,0 }
pose up from=ahead { hips 0,0,0 move=0,.2,0 }
)";

class Clips : public Workshop {
  protected:
    Model made(const std::string& clips) { return model(figure + clips); }
    static int joint(const Model& model, const std::string& name) { return model.rig.find(name); }
};

// World places of the joints as the game computes them: bind, then keys, then parents; a track shorter than
// three keys leaves its joint at rest.
std::vector<Vec3> played(const SkeletonRecord& skeleton, const ClipRecord& clip, float time) {
    std::vector<Quat> turns;
    std::vector<Vec3> places;
    for (std::size_t j = 0; j < skeleton.joints.size(); ++j) {
        const auto& track = clip.tracks[j];
        Quat turn;
        Vec3 move;
        if (track.size() >= 3) {
            std::size_t k = 0;
            while (k + 2 < track.size() && track[k + 1].time < time)
                ++k;
            const float u = (time - track[k].time) / (track[k + 1].time - track[k].time);
            Zelkor::quatSlerp(turn, track[k].rotation, track[k + 1].rotation, u, true);
            move = track[k].position + (track[k + 1].position - track[k].position) * u;
        }
        const SkeletonRecord::Joint& joint = skeleton.joints[j];
        const Quat local = joint.rotation * turn;
        const Vec3 at = joint.position + move;
        const auto p = static_cast<std::size_t>(joint.parent);
        turns.push_back(joint.parent < 0 ? local : turns[p] * local);
        places.push_back(joint.parent < 0 ? at : places[p] + rotate(turns[p], at));
    }
    return places;
}

TEST_F(Clips, writtenKeysPlayBackAsThePoseThatWasMeant) {
    const Model m = made("clip walk .9 half { key 0 ahead\n key .2 up\n sway chest 5,0,8 cycles=2 }");
    const SkeletonRecord skeleton = finishSkeleton(m);
    for (int i = 0; i <= 60; ++i) {
        const float time = 0.9f * static_cast<float>(i) / 60;
        const Stance meant = stanceOf(m.rig, sampleClip(m.rig, m.clips[0], time));
        const std::vector<Vec3> got = played(skeleton, skeleton.clips[0], time);
        for (std::size_t j = 0; j < got.size(); ++j) {
            const Vec3 p = meant.positions[j]; // facing x: the author's x is the game's z
            EXPECT_TRUE(near(got[j], {-p.z, p.y, p.x}, 0.06f)) << m.rig.joints[j].name << " at " << time;
        }
    }
}

TEST_F(Clips, animatedTracksHaveThreeKeysAndFreeJointsFewer) {
    const Model m = made("clip nod .4 { key 0 { chest 0 }\n key .4 { chest 10 } }\n"
                         "clip still 1 loop { key 0 ahead }\n"
                         "clip arms 1 base=ahead { only chest,hat\n key 0\n key 1 { chest 20 } }\n"
                         "clip legs 1 base=ahead { below leg.r\n key 0 }");
    const SkeletonRecord skeleton = finishSkeleton(m);
    const std::vector<std::vector<std::string>> moving{
        {"chest"},
        {"hips", "leg.r", "knee.r", "foot.r", "leg.l", "knee.l", "foot.l"},
        {"chest"},
        {"leg.r", "knee.r", "foot.r"},
    };
    for (std::size_t c = 0; c < moving.size(); ++c) {
        ASSERT_EQ(skeleton.clips[c].tracks.size(), m.rig.joints.size());
        for (std::size_t j = 0; j < m.rig.joints.size(); ++j) {
            const auto& names = moving[c];
            const bool expected = std::find(names.begin(), names.end(), m.rig.joints[j].name) != names.end();
            const auto& track = skeleton.clips[c].tracks[j];
            EXPECT_EQ(track.size() >= 3, expected) << skeleton.clips[c].name << " " << m.rig.joints[j].name;
            EXPECT_FLOAT_EQ(track.back().time, m.clips[c].length);
            for (std::size_t k = 1; k < track.size(); ++k)
                EXPECT_GT(track[k].time, track[k - 1].time);
        }
    }
}

TEST_F(Clips, loopsEndAsTheyBeginAndHalvesMirror) {
    const Model m = made(
        "clip walk .8 half { key 0 ahead\n key .15 up\n reach foot.r 1,1,1 from=.05 until=.3 fade=.05 }");
    const SkeletonRecord skeleton = finishSkeleton(m);
    for (const auto& track : skeleton.clips[0].tracks) {
        EXPECT_TRUE(track.front().rotation == track.back().rotation);
        EXPECT_TRUE(track.front().position == track.back().position);
    }
    for (const float time : {0.0f, 0.07f, 0.2f, 0.31f}) {
        const Pose now = sampleClip(m.rig, m.clips[0], time),
                   later = sampleClip(m.rig, m.clips[0], time + 0.4f);
        const Stance a = stanceOf(m.rig, mirrored(m.rig, now, Axis::Z)), b = stanceOf(m.rig, later);
        for (std::size_t j = 0; j < a.positions.size(); ++j)
            EXPECT_TRUE(near(a.positions[j], b.positions[j], 2e-3f)) << time;
    }
}

TEST_F(Clips, smoothMotionHasNoCornersAcrossTheLoopsSeam) {
    const Model m = made("clip run .6 half { key 0 ahead\n key .13 up }");
    const auto foot = static_cast<std::size_t>(joint(m, "hips"));
    const auto at = [&](float t) {
        return stanceOf(m.rig, sampleClip(m.rig, m.clips[0], t < 0 ? t + 0.6f : t)).positions[foot];
    };
    constexpr float e = 0.0005f;
    for (const float t : {0.0f, 0.13f, 0.3f}) {
        const Vec3 before = (at(t) - at(t - e)) * (1 / e), after = (at(t + e) - at(t)) * (1 / e);
        EXPECT_TRUE(near(before, after, 0.35f)) << t;
    }
}

TEST_F(Clips, reachesHoldTheirPlaceWhateverThePoseDoes) {
    const Model m = made("clip plant 1 loop { key 0 ahead\n key .5 up\n"
                         "reach foot.r 1,1.6,1 from=.1 until=.7 travel=-2,0,0 fade=.1 }");
    const auto foot = static_cast<std::size_t>(joint(m, "foot.r"));
    for (const float t : {0.2f, 0.35f, 0.5f, 0.6f}) {
        const Vec3 p = stanceOf(m.rig, sampleClip(m.rig, m.clips[0], t)).positions[foot];
        EXPECT_TRUE(near(p, {1 - 2 * (t - 0.1f) / 0.6f, 1.6f, 1}, 2e-3f)) << t;
    }
}

TEST_F(Clips, overlaysTurnOnTopAndMayGoRound) {
    const Model m =
        made("clip spin 1 loop { key 0 ahead\n also hat { key 0 0,0,0\n key 1 0,360,0 ease=linear } }\n"
             "clip lift 1 { key 0 ahead\n also hat { key 0 0\n key .5 30 ease=hold\n key 1 30 } }");
    const auto hat = static_cast<std::size_t>(joint(m, "hat"));
    const auto turned = [&](std::size_t clip, float t) {
        return rotate(sampleClip(m.rig, m.clips[clip], t).rotations[hat], {1, 0, 0});
    };
    EXPECT_TRUE(near(turned(0, 0.25f), {0, 0, -1}, 1e-3f));
    EXPECT_TRUE(near(turned(0, 0.5f), {-1, 0, 0}, 1e-3f));
    EXPECT_TRUE(near(turned(1, 0.45f), {1, 0, 0}, 1e-3f));
    EXPECT_TRUE(near(turned(1, 0.55f), {std::cos(radians(30)), 0.5f, 0}, 1e-3f));
    // The whole turn survives the thinning of keys: the written track goes by the far side, too.
    const SkeletonRecord skeleton = finishSkeleton(m);
    const auto& track = skeleton.clips[0].tracks[hat];
    float backmost = 1;
    for (const KeyRecord& key : track)
        backmost = std::min(backmost, rotate(key.rotation, {1, 0, 0}).x);
    EXPECT_GE(track.size(), 4u);
    EXPECT_LT(backmost, -0.9f);
}

TEST_F(Clips, thinningKeepsOnlyWhatAStraightWayCannotTell) {
    const Model m = made("clip slow 4 { key 0 { chest 0 }\n key 4 ease=linear { chest 60 } }\n"
                         "clip lively 4 { key 0 { chest 0 }\n sway chest 40 cycles=6 }");
    const SkeletonRecord skeleton = finishSkeleton(m);
    const auto chest = static_cast<std::size_t>(joint(m, "chest"));
    EXPECT_EQ(skeleton.clips[0].tracks[chest].size(), 3u) << "an even turn needs no more than the three";
    EXPECT_GT(skeleton.clips[1].tracks[chest].size(), 30u);
}

TEST_F(Clips, faultsAreToldAtTheirPlace) {
    const auto at = [&](const std::string& text) { return refusal(figure + text); };
    const int line = 1 + static_cast<int>(std::count(figure.begin(), figure.end(), '\n'));
    const std::string here = std::to_string(line) + ":";
    EXPECT_EQ(at("pose p { elbow 3 }"),
              here + "10: 'elbow' means nothing here; known: reach, and the rig's joints");
    EXPECT_EQ(at("pose p { reach chest 1,2,3 }"),
              here + "16: a joint that reaches has a parent and a grandparent to fold");
    EXPECT_EQ(at("clip c 1 { key 2 ahead }"), here + "16: this key lies outside of the clip");
    EXPECT_EQ(at("clip c 1 half { key .6 ahead }"), here + "21: keys of a half clip lie in its first half");
    EXPECT_EQ(at("clip c 1 { key .5 ahead }"), here + "1: clip c has no key at 0");
    EXPECT_EQ(at("clip c 1 loop { key 0 ahead\n key 1 up }"),
              here + "1: the loop c ends in another pose than it begins (hips)");
    EXPECT_EQ(at("clip c 1 loop { key 0 ahead\n sway hat 9 cycles=1.5 }"),
              std::to_string(line + 1) + ":20: a loop sways a whole number of cycles");
}

TEST(Easings, beginAtNothingAndEndAtTheGoal) {
    std::istringstream names(easingNames);
    int count = 0;
    for (std::string name; names >> name; ++count) {
        Easing easing = Easing::Linear;
        ASSERT_TRUE(easingNamed(name, easing));
        EXPECT_NEAR(eased(easing, 0), 0, 1e-6f) << name;
        EXPECT_NEAR(eased(easing, 1), 1, 1e-6f) << name;
        float before = 0, largest = 0;
        for (int i = 1; i <= 200; ++i) {
            const float v = eased(easing, static_cast<float>(i) / 200);
            if (easing != Easing::Hold) {
                EXPECT_LT(std::fabs(v - before), 0.06f) << name << " jumps at " << i;
            }
            before = v;
            largest = std::max(largest, v);
        }
        EXPECT_EQ(largest > 1.05f, easing == Easing::Overshoot) << name;
    }
    EXPECT_EQ(count, 10);
}

} // namespace
} // namespace forge
