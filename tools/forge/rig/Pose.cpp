#include "rig/Pose.h"

#include "mesh/Angles.h"

#include <algorithm>
#include <cmath>

namespace forge {

using Zelkor::Quat;
using Zelkor::Vec3;

namespace {

// The rotation that takes the axes x, y, z to `along`, something square to it, and `normal`, as far as it is
// square to `along`.
Quat frame(const Vec3& along, const Vec3& normal) {
    const Vec3 x = normalized(along);
    const Vec3 z = normalized(normal - x * dot(x, normal));
    const Vec3 y = cross(z, x);
    const Zelkor::Mat3 m{{x.x, y.x, z.x, x.y, y.y, z.y, x.z, y.z, z.z}};
    Quat q;
    return Zelkor::quatFromMat3(q, m);
}

Vec3 across(const Vec3& along, const Vec3& side) {
    Vec3 n = cross(along, side);
    if (Zelkor::normalize(n) < 1e-4f) n = normalized(cross(along, Vec3{0.13f, 0.31f, 0.94f}));
    return n;
}

Quat part(const Quat& from, const Quat& to, float weight) {
    Quat q;
    return Zelkor::quatSlerp(q, from, to, weight, true);
}

} // namespace

Stance stanceOf(const Rig& rig, const Pose& pose) {
    Stance stance;
    for (std::size_t j = 0; j < rig.joints.size(); ++j) {
        const Joint& joint = rig.joints[j];
        if (joint.parent < 0) {
            stance.rotations.push_back(pose.rotations[j]);
            stance.positions.push_back(joint.position + pose.offsets[j]);
            continue;
        }
        const auto p = static_cast<std::size_t>(joint.parent);
        stance.rotations.push_back(stance.rotations[p] * pose.rotations[j]);
        const Vec3 arm = joint.position - rig.joints[p].position + pose.offsets[j];
        stance.positions.push_back(stance.positions[p] + rotate(stance.rotations[p], arm));
    }
    return stance;
}

Pose mirrored(const Rig& rig, const Pose& pose, Axis axis) {
    const Vec3 flip{axis == Axis::X ? -1.0f : 1.0f, axis == Axis::Y ? -1.0f : 1.0f,
                    axis == Axis::Z ? -1.0f : 1.0f};
    Pose result(rig);
    for (std::size_t j = 0; j < rig.joints.size(); ++j) {
        const int partner = rig.find(otherSide(rig.joints[j].name));
        const std::size_t from = partner < 0 ? j : static_cast<std::size_t>(partner);
        const Quat& q = pose.rotations[from];
        // An axis of rotation keeps its part along the mirror's axis and reverses the rest.
        result.rotations[j] = {q.w, -q.x * flip.x, -q.y * flip.y, -q.z * flip.z};
        result.offsets[j] = Zelkor::scaled(pose.offsets[from], flip);
        result.touched[j] = pose.touched[from];
    }
    return result;
}

void reach(const Rig& rig, Pose& pose, const Reach& reach, float weight) {
    const auto end = static_cast<std::size_t>(reach.joint);
    const auto middle = static_cast<std::size_t>(rig.joints[end].parent);
    const auto root = static_cast<std::size_t>(rig.joints[middle].parent);
    const Stance stance = stanceOf(rig, pose);
    const Vec3 origin = stance.positions[root];
    const float upper = Zelkor::distance(origin, stance.positions[middle]);
    const float lower = Zelkor::distance(stance.positions[middle], stance.positions[end]);

    Vec3 along = reach.target - origin;
    const float wanted = Zelkor::normalize(along);
    if (wanted < 1e-5f) along = {0, -1, 0};
    const float slack = 1e-4f * (upper + lower);
    const float far = std::clamp(wanted, std::fabs(upper - lower) + slack, upper + lower - slack);
    const Vec3 hint = Zelkor::length(reach.bend) > 0 ? reach.bend : rig.joints[middle].bend;
    const Vec3 normal = across(along, hint);
    const Vec3 side = cross(normal, along);
    // The law of cosines gives the angle at the root.
    const float c = std::clamp((upper * upper + far * far - lower * lower) / (2 * upper * far), -1.0f, 1.0f);
    const Vec3 knee = origin + along * (upper * c) + side * (upper * std::sqrt(1 - c * c));
    const Vec3 tip = origin + along * far;

    const auto rest = [&](std::size_t j) { return rig.joints[j].position; };
    const Vec3 restUpper = rest(middle) - rest(root) + pose.offsets[middle];
    const Vec3 restLower = rest(end) - rest(middle) + pose.offsets[end];
    const Vec3 restHint = rig.joints[middle].bend;
    const Quat upperWorld =
        frame(knee - origin, normal) * inverse(frame(restUpper, across(normalized(restUpper), restHint)));
    const Quat lowerWorld =
        frame(tip - knee, normal) * inverse(frame(restLower, across(normalized(restLower), restHint)));

    const int above = rig.joints[root].parent;
    const Quat parentWorld = above < 0 ? Quat{} : stance.rotations[static_cast<std::size_t>(above)];
    pose.rotations[root] = part(pose.rotations[root], inverse(parentWorld) * upperWorld, weight);
    pose.rotations[middle] = part(pose.rotations[middle], inverse(upperWorld) * lowerWorld, weight);
    if (reach.turned)
        pose.rotations[end] = part(pose.rotations[end], inverse(lowerWorld) * reach.turn, weight);
    for (const std::size_t j : {root, middle, end})
        pose.touched[j] = true;
}

} // namespace forge
