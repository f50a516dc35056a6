// From a model's description to the records that are written.
#pragma once

#include "model/Model.h"
#include "write/MeshFile.h"

namespace forge {

// Throws SourceError at the part that has no shape, no bone in a rigged model, or an unknown one.
MeshRecord finishMesh(const Model& model);
SkeletonRecord finishSkeleton(const Model& model);

// The weights of one vertex from its distance to each bone: full within the nearest, fading out over `soft`,
// the `most` strongest kept, summing to 1.
std::vector<std::pair<int, float>> blendBones(const std::vector<float>& distances, float soft, int most);

} // namespace forge
