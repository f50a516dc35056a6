// Meshes and skeletons as they are read from "data/units/": plain records, shared by every unit of a name.
#pragma once

#include "math/Math.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace Zelkor {

struct Keyframe {
    float time = 0; // seconds
    Vec3 position;  // relative to the bind pose, as are rotation and scale
    Quat rotation;
    Vec3 scale{1, 1, 1};
};

struct AnimationClip {
    std::string name;
    // One track a joint, in joint order; keys in increasing time. A track of fewer than three keys does not
    // move its joint.
    std::vector<std::vector<Keyframe>> tracks;
    // The time of the last key of any track.
    float duration() const;
};

struct SkeletonData {
    struct BindPose {
        Vec3 position;
        Quat rotation;
    };

    std::string name;
    std::vector<BindPose> bindPose;      // relative to the parent joint
    std::vector<int32_t> parents;        // -1 for a root; parents come before their children
    std::vector<std::string> jointNames; // whole paths, "root|neck|head"
    std::vector<AnimationClip> clips;

    int jointCount() const { return static_cast<int>(bindPose.size()); }
};

// The vertex arrays of one mesh file, shared by its submeshes. Optional arrays are empty when absent, else as
// long as positions; all influences of one vertex stand together.
struct VertexData {
    std::vector<Vec3> positions;
    std::vector<Vec3> normals;
    std::vector<std::array<uint8_t, 3>> colours;
    std::vector<Vec2> texCoords; // every set, one after the other; set 0 is drawn
    int texCoordSetCount = 0;

    struct Influence {
        int32_t vertex = 0;
        int32_t joint = 0;
        float weight = 0;
    };
    std::vector<Influence> influences;
};

// The vertices that a submesh draws and joints move, laid out for skinning: see Skinning.h.
struct SkinPlan {
    // A vertex at rest, as vectors of four: a point (w 1) and a direction (w 0).
    struct Rest {
        float position[4];
        float normal[4];
    };
    // Follows one or two joints; for one, the second weight is 0.
    struct alignas(16) Pair {
        Rest rest;
        float weight[2];
        uint16_t joint[2];
        int32_t vertex;
    };
    // Follows more: its terms stand together in terms.
    struct Run {
        Rest rest;
        int32_t vertex;
        int32_t first, count;
    };
    struct Term {
        int32_t joint;
        float weight;
    };
    std::vector<Pair> pairs;
    std::vector<Run> runs;
    std::vector<Term> terms;
};

struct Submesh {
    std::string materialName;     // "collision" marks collision geometry, which is never drawn
    std::vector<int32_t> indices; // three a triangle, each below the vertex count
    int renderBuffer = -1;        // -1: drawn from the arrays
    SkinPlan skinPlan;            // filled once the skeleton is known

    int triangleCount() const { return static_cast<int>(indices.size() / 3); }
    bool isCollision() const { return materialName == "collision"; }
};

struct Mesh {
    std::string name;
    SkeletonData* skeleton = nullptr; // owned by the UnitManager; none for a rigid mesh
    std::string skeletonFile;         // as the file names it, with its extension; empty for none
    VertexData vertices;
    std::vector<Submesh> submeshes;
    Vec3 boxMin, boxMax;
    int refCount = 0;
    bool skinPlansMade = false; // see makeSkinPlans
};

// Both readers check every count and length against the bytes that are left and every index against what it
// points into; numbers must be finite, parents stand before their children, rotations are of unit length.
// None when the data is cut short or inconsistent; nothing is returned half read. On failure reason, if
// given, says what is wrong and at which byte.
// Influences are the exception: those of vertices or joints that are not there are left out, a vertex here
// and a joint when the mesh meets its skeleton.
std::optional<Mesh> readMesh(std::span<const uint8_t> bytes, std::string* reason = nullptr);
std::optional<SkeletonData> readSkeleton(std::span<const uint8_t> bytes, std::string* reason = nullptr);

} // namespace Zelkor
