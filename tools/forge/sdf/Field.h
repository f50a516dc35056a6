// Shapes put together in order: each one is added, cut away or kept, softly by its blend.
#pragma once

#include "sdf/Shape.h"

#include <memory>
#include <vector>

namespace forge {

// A bone as weights see it: joint to joint, in the rest pose.
struct BoneSegment {
    Zelkor::Vec3 from, to;
};
float distanceToBone(const BoneSegment& bone, const Zelkor::Vec3& p);

// The distance of a point that one shape or primitive is `distance` away from to each of that shape's bones:
// added to what `nearest` (indexed by bone) knows. Several bones on one shape share it by their segments.
void bringBones(std::vector<float>& nearest, const std::vector<int>& bones,
                const std::vector<BoneSegment>& segments, const Zelkor::Vec3& p, float distance);

class Field {
  public:
    enum class Operation { Add, Cut, Keep };
    struct Step {
        Operation operation = Operation::Add;
        float blend = 0; // how far, in units, the seam is rounded
        float grow = 0;  // thickens the shape
        ShapePointer shape;
        std::unique_ptr<const Field> group; // instead of a shape
        WarpChain warps;
        std::vector<int> bones;
    };

    void add(Step step);
    bool empty() const { return steps.empty(); }

    float distance(const Zelkor::Vec3& p) const;
    // By central differences over `reach`; unit length.
    Zelkor::Vec3 normal(const Zelkor::Vec3& p, float reach) const;
    Box bounds() const { return box; }
    void boneDistances(const Zelkor::Vec3& p, const std::vector<BoneSegment>& segments,
                       std::vector<float>& nearest) const;

  private:
    struct Placed {
        Step step;
        Box box; // where the step can change the field
        float scale = 1;
    };
    static float stepDistance(const Placed& placed, const Zelkor::Vec3& p);

    std::vector<Placed> steps;
    Box box;
};

} // namespace forge
