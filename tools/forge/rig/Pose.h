// Where every joint of a rig is turned and moved to, against rest, and how to get hands and feet to places.
#pragma once

#include "mesh/Warp.h"
#include "rig/Rig.h"

namespace forge {

struct Pose {
    // One a joint. A joint's rotation is about the author's axes as its parent carries them; its offset adds
    // to its rest place in that same frame.
    std::vector<Zelkor::Quat> rotations;
    std::vector<Zelkor::Vec3> offsets;
    std::vector<bool> touched; // joints the pose speaks of

    Pose() = default;
    explicit Pose(const Rig& rig)
        : rotations(rig.joints.size()), offsets(rig.joints.size()), touched(rig.joints.size(), false) {}
};

// World rotations and positions of all joints.
struct Stance {
    std::vector<Zelkor::Quat> rotations;
    std::vector<Zelkor::Vec3> positions;
};
Stance stanceOf(const Rig& rig, const Pose& pose);

// The pose seen in a mirror square to `axis`: left and right exchanged by their names.
Pose mirrored(const Rig& rig, const Pose& pose, Axis axis);

struct Reach {
    int joint = 0;       // the end; its parent and grandparent fold
    Zelkor::Vec3 target; // where its origin goes, in the author's space
    Zelkor::Vec3 bend;   // where the middle joint points; zero: as its joint says
    bool turned = false; // also set the end's rotation
    Zelkor::Quat turn;   // against rest, in the author's space
};

// Folds the two bones above the joint so that it reaches the target, or stretches them towards one too far.
// `weight` 0..1 goes only part of the way. The joint must have a parent and a grandparent.
void reach(const Rig& rig, Pose& pose, const Reach& reach, float weight = 1);

} // namespace forge
