// A skeleton at rest. Joints stand in the author's own space with no rotation; `axes` is what the written
// joint's frame is turned by, for attachments that expect one.
#pragma once

#include "math/Math.h"
#include "sdf/Field.h"

#include <string>
#include <vector>

namespace forge {

struct Joint {
    std::string name; // short, within the source
    std::string path; // full, with '|' between ancestors
    int parent = -1;  // always an earlier joint
    Zelkor::Vec3 position;
    Zelkor::Vec3 tail; // where the bone ends, for weights
    Zelkor::Quat axes;
    Zelkor::Vec3 bend{1, 0, 0}; // the way this joint points when the limb through it folds
};

struct Rig {
    std::vector<Joint> joints;

    // -1 when there is none.
    int find(const std::string& name) const;
    std::vector<BoneSegment> segments() const;
};

// arm.r <-> arm.l; in paths also a lone R or L between underscores, R_Arm <-> L_Arm. Anything else stays.
std::string otherSide(const std::string& name);
std::string otherSideOfPath(std::string name);

} // namespace forge
