// The binary mesh and skeleton files of data/units, as records, written and read back. docs/formats/mesh.md
// describes the bytes.
#pragma once

#include "math/Math.h"

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace forge {

using Bytes = std::vector<std::uint8_t>;

struct MeshRecord {
    struct Submesh {
        std::string material;
        std::vector<std::array<int, 3>> triangles;
    };
    std::string name;
    std::string skeletonFile; // empty: none
    Zelkor::Vec3 boxMin, boxMax;
    std::vector<Zelkor::Vec3> positions;
    std::vector<Zelkor::Vec3> normals;                // none, or one a vertex
    std::vector<std::array<std::uint8_t, 3>> colours; // none, or one a vertex
    std::vector<std::vector<Zelkor::Vec2>> texCoords; // sets of one a vertex
    std::vector<std::pair<int, int>> influences;      // vertex, joint; grouped by vertex
    std::vector<float> weights;                       // of each influence
    std::vector<Submesh> submeshes;
};

struct KeyRecord {
    float time = 0;
    Zelkor::Vec3 position;
    Zelkor::Quat rotation;
    Zelkor::Vec3 scale{1, 1, 1};
};

struct ClipRecord {
    std::string name;
    std::vector<std::vector<KeyRecord>> tracks; // one a joint
};

struct SkeletonRecord {
    struct Joint {
        std::string path;
        int parent = -1;
        Zelkor::Vec3 position; // in the parent's frame
        Zelkor::Quat rotation;
    };
    std::vector<Joint> joints;
    std::vector<ClipRecord> clips;
};

Bytes encodeMesh(const MeshRecord& mesh);
Bytes encodeSkeleton(const SkeletonRecord& skeleton);

// Throws std::runtime_error on a count that runs past the end, an index out of range or bytes left over.
MeshRecord decodeMesh(const Bytes& bytes);
SkeletonRecord decodeSkeleton(const Bytes& bytes);

} // namespace forge
