#include "animation/SkeletonInstance.h"

#include "core/ProfileSections.h"
#include "core/TimerManager.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace Zelkor {

namespace {

constexpr int layerCount = 9; // 1..9

bool inMix(const Animation& animation) {
    return animation.layer >= 1 && animation.layer <= layerCount;
}

// Factors of the layers for one joint, the layer's number being the index: what a layer takes, by the sum of
// its weights, the layers below it lose.
std::array<float, layerCount + 1> layerFactors(const std::vector<Animation*>& animations, std::size_t joint) {
    std::array<float, layerCount + 1> weights{}, factors;
    for (const Animation* animation : animations)
        if (!animation->additive && !animation->jointMask[joint] && inMix(*animation))
            weights[animation->layer] += animation->weight;
    factors.fill(1);
    // Overlapping fades may sum to more than 1, which silences as 1 does and must not turn poses inside out.
    for (int layer = layerCount - 1; layer >= 0; --layer)
        factors[layer] = factors[layer + 1] * std::max(0.0f, 1 - std::max(0.0f, weights[layer + 1]));
    return factors;
}

void copyDefaults(Animation& animation) {
    animation.nextName = animation.defaultNextName;
    animation.nextBlendTime = animation.defaultNextBlendTime;
    animation.nextOffset = animation.defaultNextOffset;
    animation.nextStartTime = animation.defaultNextStartTime;
}

// Within the time its follow-up needs, in the direction of play.
bool followUpDue(const Animation& animation) {
    if (animation.nextName.empty()) return false;
    const float lead = (animation.nextBlendTime + animation.nextOffset) * std::abs(animation.speed);
    if (animation.speed > 0) return animation.time >= animation.duration - lead;
    return animation.speed < 0 && animation.time <= lead;
}

} // namespace

SkeletonInstance::SkeletonInstance(const SkeletonData& skeleton)
    : data(&skeleton), joints(skeleton.bindPose.size()), timer(TimerManager::instance().findTimer("main")),
      skinMatrices(skeleton.bindPose.size()) {
    for (int i = 0; i < jointCount(); ++i) {
        JointState& joint = joints[i];
        joint.bindPosition = joint.localPosition = skeleton.bindPose[i].position;
        joint.bindRotation = joint.localRotation = skeleton.bindPose[i].rotation;
        joint.parent = skeleton.parents[i];
        placeJoint(i);
        mat4InverseTransform(joint.inverseBind, joint.worldScale, joint.worldPosition, joint.worldRotation);
        mat4Multiply(skinMatrices[i], joint.world, joint.inverseBind);
    }
    for (const AnimationClip& clip : skeleton.clips) {
        auto& made = clipAnimations.emplace_back(std::make_unique<Animation>(clip));
        // A file may give a clip fewer tracks than there are joints.
        made->jointMask.resize(joints.size());
    }
}

int SkeletonInstance::findJoint(std::string_view path) const {
    const auto& names = data->jointNames;
    const auto found = std::find(names.begin(), names.end(), path);
    return found == names.end() ? -1 : static_cast<int>(found - names.begin());
}

Animation* SkeletonInstance::animation(std::string_view clip) {
    for (auto& candidate : clipAnimations)
        if (candidate->clip->name == clip) return candidate.get();
    return nullptr;
}

Animation* SkeletonInstance::add(std::unique_ptr<Animation> animation) {
    animation->jointMask.resize(std::max(animation->jointMask.size(), joints.size()));
    Animation* added = clipAnimations.emplace_back(std::move(animation)).get();
    start(*added);
    return added;
}

void SkeletonInstance::start(Animation& animation) {
    std::erase(animations, &animation);
    animations.push_back(&animation);
}

// Fades everything else on the layer out. The animation itself when it is in the list and plays on, else
// null.
Animation* SkeletonInstance::restartInList(Animation& played, float fadeSeconds) {
    Animation* found = nullptr;
    for (Animation* other : animations) {
        if (other->additive || other->layer != played.layer) continue;
        if (fadeSeconds <= 0) {
            other->fadeSpeed = -1;
            other->weight = 0;
            other->replaced = true;
        } else if (other == &played) {
            found = other;
        } else {
            other->fadeSpeed = -other->weight / fadeSeconds;
            other->replaced = true;
            if (!other->nextName.empty()) other->loop = false;
        }
    }
    if (!found) return nullptr;
    found->fadeSpeed = 1 / fadeSeconds;
    found->speed = std::abs(found->speed);
    if (!found->nextName.empty() || (!found->loop && found->replaced)) found->setTime(0);
    return found;
}

Animation* SkeletonInstance::play(std::string_view clip, float fadeSeconds) {
    Animation* played = animation(clip);
    if (!played) return nullptr;
    if (!restartInList(*played, fadeSeconds)) {
        start(*played);
        played->speed = std::abs(played->speed);
        played->setTime(0);
        played->weight = fadeSeconds > 0 ? 0.0f : 1.0f;
        played->fadeSpeed = fadeSeconds > 0 ? 1 / fadeSeconds : 0;
    }
    played->loop = true;
    played->replaced = false;
    copyDefaults(*played);
    return played;
}

Animation* SkeletonInstance::playThen(std::string_view clip, std::string_view next, float fadeSeconds,
                                      float blendSeconds) {
    Animation* played = play(clip, fadeSeconds);
    if (!played) return nullptr;
    // A pending follow-up keeps the clip from wrapping, whatever loop says.
    played->nextName = next;
    played->nextBlendTime = blendSeconds;
    played->nextOffset = played->nextStartTime = 0;
    return played;
}

void SkeletonInstance::startFollowUp(Animation& ended) {
    if (ended.replaced) {
        ended.loop = false;
    } else {
        // The playing time left to it: the two cross-fade until it ends.
        const float left = ended.speed > 0 ? (ended.duration - ended.nextOffset - ended.time) / ended.speed
                                           : ended.time / std::abs(ended.speed);
        const float startTime = ended.nextStartTime;
        if (Animation* next = play(ended.nextName, left)) next->setTime(startTime);
    }
    ended.nextName.clear();
    ended.nextBlendTime = ended.nextOffset = ended.nextStartTime = 0;
}

void SkeletonInstance::updateAnimations() {
    const ProfileSection section(ProfileId::updateAnimations);
    std::vector<Animation*> due;
    for (Animation* animation : animations) {
        animation->update(timer->delta);
        if (followUpDue(*animation)) due.push_back(animation);
    }
    std::erase_if(animations, [](const Animation* animation) { return animation->fadedOut; });
    for (Animation* ended : due)
        startFollowUp(*ended);
}

void SkeletonInstance::poseJoint(int index) {
    const auto factors = layerFactors(animations, static_cast<std::size_t>(index));
    const auto factorOf = [&](const Animation& animation) {
        return inMix(animation) ? factors[animation.layer] : 1.0f;
    };
    JointAccumulator sum;
    for (Animation* animation : animations)
        if (!animation->additive) animation->sample(index, sum, factorOf(*animation));
    // An under-weighted pose falls back towards the bind pose.
    if (sum.weight > 0 && sum.weight < 1) quatSlerp(sum.rotation, {}, sum.rotation, sum.weight, false);
    for (Animation* animation : animations)
        if (animation->additive) animation->sample(index, sum, factorOf(*animation));

    // The scale is summed up but moves nothing.
    JointState& joint = joints[index];
    quatMultiply(joint.localRotation, joint.bindRotation, sum.rotation);
    joint.localPosition = joint.bindPosition + sum.position;
}

void SkeletonInstance::placeJoint(int index) {
    JointState& joint = joints[index];
    if (joint.parent < 0) {
        joint.worldRotation = joint.localRotation;
        joint.worldPosition = joint.localPosition;
    } else {
        const JointState& parent = joints[joint.parent];
        quatMultiply(joint.worldRotation, parent.worldRotation, joint.localRotation);
        joint.worldPosition = mat4TransformPoint(parent.world, joint.localPosition);
    }
    joint.worldScale = joint.localScale;
    mat4FromTransform(joint.world, joint.worldRotation, joint.localScale, joint.worldPosition);
}

void SkeletonInstance::overrideJoint(int index) {
    JointState& joint = joints[index];
    for (const JointOverride& change : overrides) {
        if (change.joint != index) continue;
        if (change.overrideRotation) {
            joint.localRotation = change.rotation;
            if (joint.parent >= 0) {
                Quat toParent;
                quatInverse(toParent, joints[joint.parent].worldRotation);
                quatMultiply(joint.localRotation, toParent, change.rotation);
            }
        }
        if (change.offsetPosition) joint.localPosition = joint.bindPosition + change.offset;
    }
}

void SkeletonInstance::updateSkeleton() {
    const ProfileSection section(ProfileId::updateSkeleton);
    // Parents come before their children, so one pass places them all.
    for (int i = 0; i < jointCount(); ++i) {
        poseJoint(i);
        overrideJoint(i);
        placeJoint(i);
        mat4Multiply(skinMatrices[i], joints[i].world, joints[i].inverseBind);
    }
}

} // namespace Zelkor
