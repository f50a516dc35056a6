#include "sdf/Field.h"

#include "mesh/Angles.h"

#include <algorithm>
#include <cmath>

namespace forge {

using Zelkor::Vec3;

namespace {

// The quadratic blend: equal to min outside of k, and k/4 lower where a = b.
float smoothMin(float a, float b, float k) {
    if (k <= 0) return std::min(a, b);
    const float h = std::max(k - std::fabs(a - b), 0.0f) / k;
    return std::min(a, b) - h * h * k * 0.25f;
}

float distanceToBox(const Box& box, const Vec3& p) {
    const Vec3 out{std::max({box.lo.x - p.x, p.x - box.hi.x, 0.0f}),
                   std::max({box.lo.y - p.y, p.y - box.hi.y, 0.0f}),
                   std::max({box.lo.z - p.z, p.z - box.hi.z, 0.0f})};
    return Zelkor::length(out);
}

Box warpedBounds(const Box& box, const WarpChain& warps) {
    constexpr int steps = 4;
    Box result;
    const Vec3 size = box.size();
    for (int i = 0; i <= steps; ++i)
        for (int j = 0; j <= steps; ++j)
            for (int k = 0; k <= steps; ++k)
                result.add(forward(warps, box.lo + Vec3{size.x * static_cast<float>(i) / steps,
                                                        size.y * static_cast<float>(j) / steps,
                                                        size.z * static_cast<float>(k) / steps}));
    // Samples of a curve can miss its farthest point.
    if (curves(warps)) result.grow(0.08f * Zelkor::length(result.size()));
    return result;
}

} // namespace

float distanceToBone(const BoneSegment& bone, const Vec3& p) {
    const Vec3 side = bone.to - bone.from;
    const float t = Zelkor::clamp(dot(p - bone.from, side) / std::max(dot(side, side), 1e-9f), 0, 1);
    return Zelkor::distance(p, bone.from + side * t);
}

void bringBones(std::vector<float>& nearest, const std::vector<int>& bones,
                const std::vector<BoneSegment>& segments, const Vec3& p, float distance) {
    float closest = 1e30f;
    for (const int bone : bones)
        closest = std::min(closest, distanceToBone(segments[static_cast<std::size_t>(bone)], p));
    for (const int bone : bones) {
        const auto index = static_cast<std::size_t>(bone);
        nearest[index] = std::min(nearest[index], distance + distanceToBone(segments[index], p) - closest);
    }
}

void Field::add(Step step) {
    Placed placed;
    const Box own = step.group ? step.group->bounds() : step.shape->bounds();
    if (!own.empty()) placed.box = warpedBounds(own, step.warps);
    placed.box.grow(step.grow);
    placed.scale = shrink(step.warps);
    if (step.operation == Operation::Add) {
        Box reached = placed.box;
        reached.grow(0.25f * step.blend);
        box.add(reached);
    }
    placed.step = std::move(step);
    steps.push_back(std::move(placed));
}

float Field::stepDistance(const Placed& placed, const Vec3& p) {
    const Vec3 q = inverse(placed.step.warps, p);
    const float own = placed.step.group ? placed.step.group->distance(q) : placed.step.shape->distance(q);
    return own * placed.scale - placed.step.grow;
}

float Field::distance(const Vec3& p) const {
    float d = 1e30f;
    for (const Placed& placed : steps) {
        const Step& step = placed.step;
        if (step.operation == Operation::Keep) {
            d = -smoothMin(-d, -stepDistance(placed, p), step.blend);
            continue;
        }
        // Outside of its box, a step farther away than the surface so far changes nothing.
        const bool cut = step.operation == Operation::Cut;
        const float away = placed.box.empty() ? 0 : distanceToBox(placed.box, p) * placed.scale;
        if (away > 0 && d < 1e29f && away > (cut ? -d : d) + step.blend) continue;
        const float own = stepDistance(placed, p);
        d = cut ? -smoothMin(-d, own, step.blend) : d > 1e29f ? own : smoothMin(d, own, step.blend);
    }
    return d;
}

Vec3 Field::normal(const Vec3& p, float reach) const {
    const auto slope = [&](const Vec3& side) { return distance(p + side) - distance(p - side); };
    return normalized({slope({reach, 0, 0}), slope({0, reach, 0}), slope({0, 0, reach})});
}

void Field::boneDistances(const Vec3& p, const std::vector<BoneSegment>& segments,
                          std::vector<float>& nearest) const {
    for (const Placed& placed : steps) {
        if (placed.step.operation != Operation::Add) continue;
        if (placed.step.group) {
            placed.step.group->boneDistances(inverse(placed.step.warps, p), segments, nearest);
        } else {
            bringBones(nearest, placed.step.bones, segments, p, stepDistance(placed, p));
        }
    }
}

} // namespace forge
