#include "rig/Clip.h"

#include "mesh/Angles.h"

#include <algorithm>
#include <cmath>

namespace forge {

using Zelkor::Quat;
using Zelkor::Vec3;

namespace {

// A stretch between two keys with their outer neighbours, times unrolled past the ends of a loop.
struct Stretch {
    std::size_t before, from, to, after;
    float tBefore, tFrom, tTo, tAfter;
    float progress;
};

template <class Key>
Stretch stretchAt(const std::vector<Key>& keys, float time, bool loop, float length) {
    const int n = static_cast<int>(keys.size());
    int from = -1;
    while (from + 1 < n && keys[static_cast<std::size_t>(from + 1)].time <= time)
        ++from;
    // A loop's last key may repeat its first at the end; the way on from there is the loop's beginning.
    const bool closed = loop && n > 1 && keys.back().time >= length - 1e-5f;
    const int distinct = closed ? n - 1 : n;
    const auto resolve = [&](int i, std::size_t& index, float& at) {
        if (loop) {
            const int turn =
                static_cast<int>(std::floor(static_cast<float>(i) / static_cast<float>(distinct)));
            index = static_cast<std::size_t>(i - turn * distinct);
            at = keys[index].time + static_cast<float>(turn) * length;
        } else {
            index = static_cast<std::size_t>(std::clamp(i, 0, n - 1));
            at = keys[index].time;
        }
    };
    if (loop) from = std::min(from, distinct - 1);
    Stretch s{};
    resolve(from - 1, s.before, s.tBefore);
    resolve(from, s.from, s.tFrom);
    resolve(from + 1, s.to, s.tTo);
    resolve(from + 2, s.after, s.tAfter);
    // A stretch with an easing of its own has no slope to hand on: the curve beside it starts or ends at
    // rest.
    if (keys[s.from].easing != Easing::Smooth) s.tBefore = s.tFrom;
    if (keys[s.after].easing != Easing::Smooth) s.tAfter = s.tTo;
    s.progress = s.tTo > s.tFrom ? std::clamp((time - s.tFrom) / (s.tTo - s.tFrom), 0.0f, 1.0f) : 1.0f;
    return s;
}

// Cubic through from and to, its slopes from the neighbours; ends without a neighbour start and stop at rest.
float hermite(const Stretch& s, float before, float from, float to, float after) {
    const float span = s.tTo - s.tFrom;
    const float m0 = s.tBefore < s.tFrom ? (to - before) / (s.tTo - s.tBefore) * span : 0;
    const float m1 = s.tAfter > s.tTo ? (after - from) / (s.tAfter - s.tFrom) * span : 0;
    const float u = s.progress, u2 = u * u, u3 = u2 * u;
    return (2 * u3 - 3 * u2 + 1) * from + (u3 - 2 * u2 + u) * m0 + (3 * u2 - 2 * u3) * to + (u3 - u2) * m1;
}

Vec3 hermite(const Stretch& s, const Vec3& a, const Vec3& b, const Vec3& c, const Vec3& d) {
    return {hermite(s, a.x, b.x, c.x, d.x), hermite(s, a.y, b.y, c.y, d.y), hermite(s, a.z, b.z, c.z, d.z)};
}

Quat aligned(const Quat& q, const Quat& to) {
    const float d = q.w * to.w + q.x * to.x + q.y * to.y + q.z * to.z;
    return d < 0 ? Quat{-q.w, -q.x, -q.y, -q.z} : q;
}

Quat hermite(const Stretch& s, const Quat& before, const Quat& from, const Quat& to, const Quat& after) {
    const Quat a = aligned(before, from), c = aligned(to, from), d = aligned(after, c);
    Quat q{hermite(s, a.w, from.w, c.w, d.w), hermite(s, a.x, from.x, c.x, d.x),
           hermite(s, a.y, from.y, c.y, d.y), hermite(s, a.z, from.z, c.z, d.z)};
    Zelkor::quatNormalize(q);
    return q;
}

Pose keyedPose(const Rig& rig, const Clip& clip, float time) {
    const Stretch s = stretchAt(clip.keys, time, clip.loop, clip.length);
    const Pose &a = clip.keys[s.before].pose, &b = clip.keys[s.from].pose, &c = clip.keys[s.to].pose,
               &d = clip.keys[s.after].pose;
    const Easing easing = clip.keys[s.to].easing;
    const float u = eased(easing, s.progress);
    Pose pose(rig);
    for (std::size_t j = 0; j < rig.joints.size(); ++j) {
        if (easing == Easing::Smooth) {
            pose.rotations[j] = hermite(s, a.rotations[j], b.rotations[j], c.rotations[j], d.rotations[j]);
            pose.offsets[j] = hermite(s, a.offsets[j], b.offsets[j], c.offsets[j], d.offsets[j]);
        } else {
            // Beyond the goal, slerp simply goes on: an overshoot is wanted there.
            Zelkor::quatSlerp(pose.rotations[j], b.rotations[j], c.rotations[j], u, true);
            pose.offsets[j] = b.offsets[j] + (c.offsets[j] - b.offsets[j]) * u;
        }
    }
    for (const ClipKey& key : clip.keys)
        for (std::size_t j = 0; j < rig.joints.size(); ++j)
            if (key.pose.touched[j]) pose.touched[j] = true;
    return pose;
}

Vec3 overlayDegrees(const Overlay& overlay, const Clip& clip, float time) {
    if (overlay.keys.empty())
        return overlay.sway *
               std::sin(2 * Zelkor::pi * (overlay.cycles * time / clip.length + overlay.phase));
    // Overlays of a loop do not wrap by themselves: a wheel's 360 degrees meet its 0.
    const Stretch s = stretchAt(overlay.keys, time, false, clip.length);
    const Overlay::Key &b = overlay.keys[s.from], &c = overlay.keys[s.to];
    if (c.easing == Easing::Smooth && overlay.keys.size() > 2)
        return hermite(s, overlay.keys[s.before].degrees, b.degrees, c.degrees,
                       overlay.keys[s.after].degrees);
    return b.degrees + (c.degrees - b.degrees) * eased(c.easing, s.progress);
}

// How firmly a reach holds at a time; 0 outside of it.
float hold(const HeldReach& held, float time) {
    if (time < held.begin || time > held.end) return 0;
    if (held.fade <= 0) return 1;
    const float in = (time - held.begin) / held.fade, out = (held.end - time) / held.fade;
    return eased(Easing::InOut, std::min(in, out));
}

} // namespace

Pose sampleClip(const Rig& rig, const Clip& clip, float time) {
    Pose pose = keyedPose(rig, clip, time);
    for (const Overlay& overlay : clip.overlays) {
        const auto j = static_cast<std::size_t>(overlay.joint);
        pose.rotations[j] = pose.rotations[j] * quatFromDegrees(overlayDegrees(overlay, clip, time));
        pose.touched[j] = true;
    }
    for (const HeldReach& held : clip.reaches) {
        for (const float turn : {0.0f, clip.length}) {
            const float at = time + turn;
            if (turn > 0 && !clip.loop) continue;
            const float weight = hold(held, at);
            Reach there = held.reach;
            const float u = held.end > held.begin ? (at - held.begin) / (held.end - held.begin) : 0;
            there.target += held.travel * std::clamp(u, 0.0f, 1.0f);
            reach(rig, pose, there, weight); // with no weight it only marks its joints as moved
        }
    }
    if (!clip.allowed.empty())
        for (std::size_t j = 0; j < rig.joints.size(); ++j)
            if (!clip.allowed[j]) pose.touched[j] = false;
    return pose;
}

} // namespace forge
