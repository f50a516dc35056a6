// One playing clip, and a weighted blend of up to ten.
#pragma once

#include "math/Math.h"
#include "resources/Mesh.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Zelkor {

// What the samples of one joint add up to. P, R, S and W of the pose being built.
struct JointAccumulator {
    Vec3 position;
    Quat rotation;
    Vec3 scale{1, 1, 1};
    float weight = 0;
};

class Animation {
  public:
    // clip must outlive the animation.
    explicit Animation(const AnimationClip& clip);
    virtual ~Animation() = default;
    Animation(const Animation&) = delete;

    // Places the play head, wrapping when the animation loops and has no follow-up, else holding at the ends.
    virtual void setTime(float seconds);
    // Advances fade, play head and key cursors by dt seconds. Returns the number of tracks.
    virtual int update(float dt);
    // Adds this animation's contribution for one joint; factor is its layer's share, 0..1. Nothing for a
    // masked joint and for a track of fewer than three keys.
    virtual void sample(int joint, JointAccumulator& sum, float factor);

    const AnimationClip* clip;
    float time = 0; // seconds into the clip
    float speed = 1;
    float fadeSpeed = 0; // weight a second
    float weight = 1;
    float duration = 0;
    bool restarted = false; // the play head went against the playing direction since the last update
    bool loop = true;
    std::vector<int32_t> keyCursor; // a track: the key at or before time, as of the last update
    std::vector<uint8_t> jointMask; // a joint: non-zero keeps this animation off it

    // The clip to start when this one ends; empty for none. It is due (nextBlendTime + nextOffset) x |speed|
    // clip seconds before the end and starts at nextStartTime.
    std::string nextName;
    float nextBlendTime = 0, nextOffset = 0, nextStartTime = 0;
    // Copied into the four fields above by every play.
    std::string defaultNextName;
    float defaultNextBlendTime = 0, defaultNextOffset = 0, defaultNextStartTime = 0;

    bool fadedOut = false;
    // Adds its motion since its first key on top of the pose. No play fades it out, but its own play fades
    // out what else is on its layer: it wants a layer to itself.
    bool additive = false;
    int layer = 1;         // 1..9
    bool replaced = false; // a play on its layer fades it out; it starts no follow-up

  protected:
    Animation(const AnimationClip& clip, std::size_t trackCount, float duration);
    void updateFade(float dt);

  private:
    using Track = std::vector<Keyframe>;
    bool masks(std::size_t joint) const { return joint < jointMask.size() && jointMask[joint]; }
    int32_t advancedCursor(const Track& track, int32_t cursor) const;

    bool cursorsBehind_ = false; // the play head was placed after the last update
};

// Blends children by weights that the game sets, each child on its own clock. Its own clip is a dummy of
// 100 seconds.
class AnimationMixState : public Animation {
  public:
    static constexpr int maxChildren = 10;

    explicit AnimationMixState(int jointCount);

    void setTime(float seconds) override;
    int update(float dt) override;
    void sample(int joint, JointAccumulator& sum, float factor) override;

    int childCount = 0;
    std::array<Animation*, maxChildren> children{}; // owned by the skeleton instance
    std::array<float, maxChildren> childWeights{};

  private:
    AnimationClip dummy_;
};

} // namespace Zelkor
