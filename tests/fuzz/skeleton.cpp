#include "FuzzTarget.h"

#include "animation/SkeletonInstance.h"
#include "core/TimerManager.h"
#include "fake/FakePlatform.h"

#include <cmath>

using namespace Zelkor;

// Reads a skeleton and plays every clip of it.
int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    static platform::FakePlatform fake;
    std::string reason;
    const auto skeleton = readSkeleton({data, size}, &reason);
    fuzzCheck(skeleton.has_value() == reason.empty());
    if (!skeleton || skeleton->jointCount() > 64 || skeleton->clips.size() > 16) return 0;
    SkeletonInstance instance(*skeleton);
    GameTimer timer;
    instance.timer = &timer;
    for (const float delta : {0.0f, 0.25f, 10.0f}) {
        timer.delta = delta;
        for (const AnimationClip& clip : skeleton->clips) {
            if (Animation* played = instance.playThen(clip.name, skeleton->clips.front().name, delta)) {
                if (played->time == 0 && delta > 1) played->speed = -1;
            }
            instance.updateAnimations();
            instance.updateSkeleton();
        }
    }
    for (const Animation* animation : instance.animations)
        fuzzCheck(!std::isnan(animation->weight));
    return 0;
}
