#include "actors/player/HeroClips.h"

#include "animation/SkeletonInstance.h"
#include "resources/Unit.h"

#include <string_view>

namespace {

constexpr std::string_view shoulderPath = "rig_JT_DRV_neck_Base1|rig_JT_DRV_R_Clavicle|rig_JT_DRV_R_Shoulder";
constexpr int recoilLayer = 2; // apart from the body's clips, which would replace it

bool isShoulderOrBelow(std::string_view path) {
    return path.starts_with(shoulderPath) &&
           (path.size() == shoulderPath.size() || path[shoulderPath.size()] == '|');
}

} // namespace

float playClip(Zelkor::Unit& unit, const HeroClip& clip) {
    if (!unit.skeleton) return 0;
    Zelkor::Animation* playing = clip.next ? unit.skeleton->playThen(clip.name, clip.next, clip.blend)
                                           : unit.skeleton->play(clip.name, clip.blend);
    if (!playing) return 0;
    playing->speed = clip.speed;
    if (clip.once) playing->loop = false;
    return playing->duration / clip.speed;
}

float playClipBackwards(Zelkor::Unit& unit, const HeroClip& clip) {
    Zelkor::Animation* playing = unit.skeleton ? unit.skeleton->play(clip.name, clip.blend) : nullptr;
    if (!playing) return 0;
    playing->speed = -clip.speed;
    playing->loop = false;
    playing->setTime(playing->duration);
    return playing->duration / clip.speed;
}

void setClipSpeed(Zelkor::Unit& unit, const char* name, float speed) {
    if (!unit.skeleton) return;
    if (Zelkor::Animation* animation = unit.skeleton->animation(name)) animation->speed = speed;
}

void prepareArmRecoil(Zelkor::Unit& unit, const char* clip) {
    if (!unit.skeleton || unit.skeleton->findJoint(shoulderPath) < 0) return;
    Zelkor::Animation* recoil = unit.skeleton->animation(clip);
    if (!recoil) return;
    recoil->additive = true;
    recoil->layer = recoilLayer;
    recoil->jointMask.resize(unit.skeleton->joints.size());
    for (std::size_t joint = 0; joint < recoil->jointMask.size(); ++joint)
        recoil->jointMask[joint] = isShoulderOrBelow(unit.skeleton->data->jointNames[joint]) ? 0 : 1;
}

void playArmRecoil(Zelkor::Unit& unit, const char* clip) {
    Zelkor::Animation* recoil = unit.skeleton ? unit.skeleton->animation(clip) : nullptr;
    if (!recoil) return;
    recoil->setTime(0);
    recoil->weight = 1;
    recoil->loop = false;
    unit.skeleton->start(*recoil);
}
