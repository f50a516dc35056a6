// The posed skeleton of one unit and the animations that play on it.
#pragma once

#include "animation/Animation.h"
#include "math/Math.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Zelkor {

struct GameTimer;

struct JointState {
    Vec3 worldPosition;
    Quat worldRotation;
    Vec3 localPosition;
    Quat localRotation;
    Vec3 bindPosition;
    Quat bindRotation;
    Mat4 inverseBind; // inverse of the joint's world matrix in the bind pose
    Mat4 world;
    Vec3 worldScale{1, 1, 1};
    Vec3 localScale{1, 1, 1};
    int parent = -1;
};

struct JointOverride {
    int joint = -1;
    bool overrideRotation = false;
    bool offsetPosition = false;
    Quat rotation; // in the space of the unit
    Vec3 offset;   // from the bind position
};

class SkeletonInstance {
  public:
    // data must outlive the instance. Starts in the bind pose, on the timer "main".
    explicit SkeletonInstance(const SkeletonData& data);

    // The index of the joint whose whole path equals path, or -1.
    int findJoint(std::string_view path) const;

    // Starts or restarts a clip with a cross-fade of fadeSeconds on its layer. Null when there is no such
    // clip. The result loops and has its default follow-up; clear loop for a one-shot.
    Animation* play(std::string_view clip, float fadeSeconds = 0);
    // A one-shot and the pose it ends in, such as "jumpoff" then "jump_up": plays clip, which runs once and
    // starts a cross-fade to next blendSeconds before its end (at once when it is shorter), holding its last
    // key until the fade is over. The times follow the clip's speed, so that speed may be set on the result.
    // A play of any other clip on the layer in between cancels next. Returns clip's animation, null as above.
    Animation* playThen(std::string_view clip, std::string_view next, float fadeSeconds = 0,
                        float blendSeconds = 0.1f);
    // The instance's animation of that clip, playing or not; null when there is no such clip.
    Animation* animation(std::string_view clip);
    // Puts an animation into the playing list, such as a mix the game has built. The instance owns it.
    Animation* add(std::unique_ptr<Animation> animation);
    // Puts one of the instance's animations at the end of the playing list, as it is; one that plays already
    // moves there.
    void start(Animation& animation);

    // Advances every playing animation by the timer's delta and starts the follow-ups that are due.
    void updateAnimations();
    // Rebuilds every joint from the bind pose, the animations and the overrides. Children of an overridden
    // joint follow it.
    void updateSkeleton();

    int jointCount() const { return static_cast<int>(joints.size()); }

    const SkeletonData* data;
    std::vector<JointState> joints;
    std::vector<Animation*> animations; // playing, in play order
    std::vector<std::unique_ptr<Animation>> clipAnimations;
    std::vector<JointOverride> overrides;
    GameTimer* timer;
    std::vector<Mat4> skinMatrices; // a joint: world x inverse bind

  private:
    Animation* restartInList(Animation& played, float fadeSeconds);
    void startFollowUp(Animation& ended);
    void poseJoint(int joint);
    void placeJoint(int joint);
    void overrideJoint(int joint);
};

} // namespace Zelkor
