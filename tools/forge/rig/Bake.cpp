#include "rig/Bake.h"

#include "mesh/Angles.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace forge {

using Zelkor::Quat;
using Zelkor::Vec3;

namespace {

constexpr float samplesPerSecond = 30;
// How far a track may stray from the samples: far below what a pencil line shows.
constexpr float turnTolerance = 0.004f; // radians
constexpr float moveTolerance = 0.006f; // units

std::vector<float> sampleTimes(const Clip& clip) {
    const int steps = std::max(2, static_cast<int>(std::ceil(clip.length * samplesPerSecond)));
    std::vector<float> times;
    for (int i = 0; i <= steps; ++i)
        times.push_back(clip.length * static_cast<float>(i) / static_cast<float>(steps));
    // The keys themselves, exactly; and just before a jump.
    for (const ClipKey& key : clip.keys) {
        times.push_back(key.time);
        if (key.easing == Easing::Hold && key.time > 2e-3f) times.push_back(key.time - 1e-3f);
    }
    std::sort(times.begin(), times.end());
    std::vector<float> distinct;
    for (const float t : times)
        if (t >= 0 && t <= clip.length && (distinct.empty() || t - distinct.back() > 5e-4f))
            distinct.push_back(t);
    distinct.back() = clip.length;
    return distinct;
}

float strayed(const KeyRecord& a, const KeyRecord& b, const KeyRecord& between) {
    const float u = (between.time - a.time) / (b.time - a.time);
    Quat q;
    Zelkor::quatSlerp(q, a.rotation, b.rotation, u, true);
    const Quat& r = between.rotation;
    const float d = std::min(1.0f, std::fabs(q.w * r.w + q.x * r.x + q.y * r.y + q.z * r.z));
    const Vec3 p = a.position + (b.position - a.position) * u;
    return std::max(2 * std::acos(d) / turnTolerance, Zelkor::distance(p, between.position) / moveTolerance);
}

// The fewest of the samples that follow all of them: splits where a straight way strays most.
std::vector<KeyRecord> thinned(const std::vector<KeyRecord>& samples) {
    std::vector<bool> keep(samples.size(), false);
    keep.front() = keep.back() = keep[samples.size() / 2] = true;
    const std::function<void(std::size_t, std::size_t)> split = [&](std::size_t a, std::size_t b) {
        float worst = 1;
        std::size_t at = 0;
        for (std::size_t i = a + 1; i < b; ++i) {
            const float error = strayed(samples[a], samples[b], samples[i]);
            if (error > worst) {
                worst = error;
                at = i;
            }
        }
        if (at == 0) return;
        keep[at] = true;
        split(a, at);
        split(at, b);
    };
    split(0, samples.size() / 2);
    split(samples.size() / 2, samples.size() - 1);
    std::vector<KeyRecord> keys;
    for (std::size_t i = 0; i < samples.size(); ++i)
        if (keep[i]) keys.push_back(samples[i]);
    return keys;
}

} // namespace

ClipRecord bakeClip(const Rig& rig, const Clip& clip, float yaw) {
    const Quat turn = Zelkor::quatFromAxisAngle(radians(yaw), {0, 1, 0});
    const std::vector<float> times = sampleTimes(clip);
    std::vector<Pose> poses;
    for (const float t : times)
        poses.push_back(sampleClip(rig, clip, t));
    ClipRecord record;
    record.name = clip.name;
    for (std::size_t j = 0; j < rig.joints.size(); ++j) {
        const Joint& joint = rig.joints[j];
        if (!poses[0].touched[j]) {
            KeyRecord last;
            last.time = clip.length;
            record.tracks.push_back({KeyRecord{}, last});
            continue;
        }
        // Keys turn within the joint's own axes and move within its parent's.
        const Quat parentAxes =
            joint.parent < 0 ? inverse(turn) : rig.joints[static_cast<std::size_t>(joint.parent)].axes;
        std::vector<KeyRecord> samples;
        for (std::size_t i = 0; i < times.size(); ++i) {
            KeyRecord key;
            key.time = times[i];
            key.rotation = inverse(joint.axes) * (poses[i].rotations[j] * joint.axes);
            key.position = rotate(inverse(parentAxes), poses[i].offsets[j]);
            if (i > 0) { // the same rotation has two signs: stay near the key before
                const Quat& b = samples.back().rotation;
                Quat& q = key.rotation;
                if (q.w * b.w + q.x * b.x + q.y * b.y + q.z * b.z < 0) q = {-q.w, -q.x, -q.y, -q.z};
            }
            samples.push_back(key);
        }
        if (clip.loop) {
            samples.back() = samples.front();
            samples.back().time = times.back();
        }
        record.tracks.push_back(thinned(samples));
    }
    return record;
}

SkeletonRecord bakeRig(const Rig& rig, float yaw) {
    const Quat turn = Zelkor::quatFromAxisAngle(radians(yaw), {0, 1, 0});
    SkeletonRecord skeleton;
    for (const Joint& joint : rig.joints) {
        SkeletonRecord::Joint record;
        record.path = joint.path;
        record.parent = joint.parent;
        if (joint.parent < 0) {
            record.position = rotate(turn, joint.position);
            record.rotation = turn * joint.axes;
        } else {
            const Joint& parent = rig.joints[static_cast<std::size_t>(joint.parent)];
            record.position = rotate(inverse(parent.axes), joint.position - parent.position);
            record.rotation = inverse(parent.axes) * joint.axes;
        }
        skeleton.joints.push_back(std::move(record));
    }
    return skeleton;
}

} // namespace forge
