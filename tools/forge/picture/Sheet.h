// Whole pictures of a unit: views beside each other, silhouettes at play size, contact sheets of clips.
#pragma once

#include "picture/Draw.h"

#include <string>
#include <vector>

namespace forge {

struct LoadedUnit {
    MeshRecord mesh;
    SkeletonRecord skeleton; // no joints when the mesh names none
};

// A .mesh with its skeleton from the same folder, or a .model made on the spot.
LoadedUnit loadUnit(const std::string& path, const std::vector<std::string>& includeFolders = {});

// Counts, materials, joints, clips and bounds, in lines.
std::string describeUnit(const LoadedUnit& unit);

struct PictureOptions {
    std::string clip;
    float time = 0;
    float yaw = 0, pitch = 0;
    int size = 420;
    bool sheet = false;
    std::vector<std::string> clips;
    int moments = 8;
};

Canvas drawPicture(const LoadedUnit& unit, const PictureOptions& options);

} // namespace forge
