#include "animation/Animation.h"

#include <algorithm>
#include <cmath>

namespace Zelkor {

namespace {

constexpr std::size_t fewestKeys = 3; // of a track that moves its joint
constexpr float mixDuration = 100;    // seconds

Vec3 lerp(const Vec3& a, const Vec3& b, float t) {
    return a + (b - a) * t;
}

} // namespace

Animation::Animation(const AnimationClip& ofClip)
    : Animation(ofClip, ofClip.tracks.size(), ofClip.duration()) {}

Animation::Animation(const AnimationClip& ofClip, std::size_t trackCount, float seconds)
    : clip(&ofClip), duration(seconds), keyCursor(trackCount), jointMask(trackCount) {}

void Animation::setTime(float seconds) {
    cursorsBehind_ = true;
    if (duration <= 0) {
        time = seconds;
        return;
    }
    const bool wraps = loop && nextName.empty();
    if (seconds > duration) {
        // One remainder in place of one step a lap: a long pause costs nothing. An exact end stays an end.
        seconds = wraps ? std::fmod(seconds, duration) : duration;
        if (wraps && seconds == 0) seconds = duration;
    }
    if (seconds < 0) {
        seconds = wraps ? std::fmod(seconds, duration) : 0;
        if (seconds < 0) seconds += duration;
    }
    if ((speed > 0 && seconds < time) || (speed < 0 && seconds > time)) restarted = true;
    time = seconds;
}

void Animation::updateFade(float dt) {
    fadedOut = false;
    weight += fadeSpeed * dt;
    if (weight > 1 && fadeSpeed > 0) {
        fadeSpeed = 0;
        weight = 1;
    }
    if (weight <= 0 && fadeSpeed <= 0) {
        fadeSpeed = 0;
        weight = 0;
        fadedOut = true;
    }
}

int32_t Animation::advancedCursor(const Track& track, int32_t cursor) const {
    const auto last = static_cast<int32_t>(track.size()) - 2; // where the last segment begins
    if (speed > 0) {
        if (restarted) cursor = 0;
        while (cursor < last && track[cursor + 1].time < time)
            ++cursor;
    } else if (speed < 0) {
        if (restarted) cursor = last;
        while (cursor > 1 && track[cursor].time >= time)
            --cursor;
    }
    return cursor;
}

int Animation::update(float dt) {
    updateFade(dt);
    setTime(time + dt * speed);
    for (std::size_t i = 0; i < clip->tracks.size(); ++i)
        if (!masks(i) && clip->tracks[i].size() >= fewestKeys)
            keyCursor[i] = advancedCursor(clip->tracks[i], keyCursor[i]);
    restarted = false;
    cursorsBehind_ = false;
    return static_cast<int>(clip->tracks.size());
}

void Animation::sample(int joint, JointAccumulator& sum, float factor) {
    const auto index = static_cast<std::size_t>(joint);
    if (index >= clip->tracks.size() || masks(index)) return;
    const Track& track = clip->tracks[index];
    if (track.size() < fewestKeys) return;

    // A clip just started may be posed before its first update, with cursors of the last time it played.
    const int32_t key = cursorsBehind_ ? advancedCursor(track, keyCursor[index]) : keyCursor[index];
    const Keyframe &a = track[key], &b = track[key + 1];
    const float span = b.time - a.time;
    const float u = span > 0 ? (time - a.time) / span : 0;
    const float w = weight * factor;

    Vec3 position = lerp(a.position, b.position, u);
    if (additive) position -= track[0].position;
    sum.position += w * position;
    sum.scale = (1 - w) * sum.scale + w * lerp(a.scale, b.scale, u);

    Quat rotation;
    quatSlerp(rotation, a.rotation, b.rotation, u, true);
    if (additive) {
        Quat first;
        quatMultiply(rotation, quatInverse(first, track[0].rotation), rotation);
    }
    if (sum.weight == 0) {
        sum.rotation = rotation;
    } else if (w > 0) {
        if (additive) {
            Quat share;
            quatMultiply(sum.rotation, sum.rotation, quatSlerp(share, {}, rotation, w, false));
        } else {
            quatSlerp(sum.rotation, sum.rotation, rotation, w / (sum.weight + w), false);
        }
    }
    sum.weight += w;
}

AnimationMixState::AnimationMixState(int jointCount)
    : Animation(dummy_, static_cast<std::size_t>(jointCount), mixDuration) {
    dummy_.tracks.resize(static_cast<std::size_t>(jointCount));
}

void AnimationMixState::setTime(float seconds) {
    Animation::setTime(seconds);
    for (int i = 0; i < childCount; ++i) {
        if (!nextName.empty()) children[i]->loop = false;
        children[i]->setTime(seconds);
    }
}

int AnimationMixState::update(float dt) {
    updateFade(dt);
    // Only the mix's own play head: its children advance by themselves, each at its own speed.
    Animation::setTime(time + dt * speed);
    restarted = false;
    for (int i = 0; i < childCount; ++i)
        children[i]->update(dt);
    return static_cast<int>(dummy_.tracks.size());
}

void AnimationMixState::sample(int joint, JointAccumulator& sum, float factor) {
    for (int i = 0; i < childCount; ++i) {
        children[i]->weight = weight * childWeights[i];
        if (children[i]->weight * factor > 0) children[i]->sample(joint, sum, factor);
    }
}

} // namespace Zelkor
