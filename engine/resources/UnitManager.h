// Loads each mesh and each skeleton once and keeps them by name for the whole run.
#pragma once

#include "resources/Mesh.h"
#include "resources/Unit.h"

#include <memory>
#include <string>
#include <unordered_map>

namespace Zelkor {

class UnitManager {
  public:
    // The loaded mesh of that name with its refCount incremented, or a newly loaded one with refCount 1. A
    // file that is missing or broken gives an empty mesh.
    Mesh* getMesh(const std::string& name);
    // name with its extension, as a mesh file gives it. Missing or broken: no joints, no clips.
    SkeletonData* getSkeleton(const std::string& fileName);
    // Loads the materials of every submesh, and their textures, before they are first drawn.
    void preloadMaterials(const std::string& meshName);
    std::unique_ptr<Unit> createUnit(const std::string& meshName);

    // Counts the frames, so that a unit is updated at most once in each.
    int frameNumber = 0;

  private:
    std::unique_ptr<Mesh> loadMesh(const std::string& name);

    std::unordered_map<std::string, std::unique_ptr<Mesh>> meshes_;
    std::unordered_map<std::string, std::unique_ptr<SkeletonData>> skeletons_;
    int nextUnitId_ = 0;
};

} // namespace Zelkor
