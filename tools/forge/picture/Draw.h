// A quick look at a mesh without the engine: flat light, dark lines around every hull.
#pragma once

#include "picture/Canvas.h"
#include "write/MeshFile.h"

#include <string>

namespace forge {

struct View {
    float yaw = 0;   // degrees the model is turned about y; 90 shows a +z facing figure looking right
    float pitch = 0; // degrees the model's top leans to the viewer
    bool silhouette = false;
    bool hatch = true; // strokes by the texture coordinates, as the game draws them
};

// Positions and normals of a mesh in some pose; the mesh's own when at rest.
struct Posed {
    std::vector<Zelkor::Vec3> positions, normals;
};
Posed restPose(const MeshRecord& mesh);

// The clip's pose at `time`, joint by joint as the game computes it. Throws std::runtime_error for an unknown
// clip.
Posed posedAt(const MeshRecord& mesh, const SkeletonRecord& skeleton, const std::string& clip, float time);
float clipLength(const ClipRecord& clip);

// `centre` of the model lands in the middle; one unit is `scale` pixels. Collision parts are left out.
Canvas drawMesh(const MeshRecord& mesh, const Posed& posed, const View& view, const Zelkor::Vec3& centre,
                float scale, int width, int height);

} // namespace forge
