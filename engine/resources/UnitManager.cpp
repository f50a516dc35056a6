#include "resources/UnitManager.h"

#include "core/EngineManagers.h"
#include "io/DataFiles.h"
#include "render/MaterialManager.h"
#include "render/Renderer.h"

#include <utility>

namespace Zelkor {

namespace {

// What read gives for the file, or an empty record when it is missing or broken.
template <class Record>
std::unique_ptr<Record> readOrEmpty(const std::string& file,
                                    std::optional<Record> (*read)(std::span<const uint8_t>, std::string*)) {
    if (const auto bytes = readDataFile(file))
        if (auto record = read(*bytes, nullptr)) return std::make_unique<Record>(std::move(*record));
    return std::make_unique<Record>();
}

} // namespace

std::unique_ptr<Mesh> UnitManager::loadMesh(const std::string& name) {
    auto mesh = readOrEmpty<Mesh>("units/" + name + ".mesh", readMesh);
    mesh->name = name;
    if (!mesh->skeletonFile.empty()) mesh->skeleton = getSkeleton(mesh->skeletonFile);
    for (Submesh& submesh : mesh->submeshes)
        if (!submesh.isCollision())
            submesh.renderBuffer = engineManagers()->renderer->createMeshBuffer(submesh);
    return mesh;
}

Mesh* UnitManager::getMesh(const std::string& name) {
    auto& mesh = meshes_[name];
    if (!mesh) mesh = loadMesh(name);
    ++mesh->refCount;
    return mesh.get();
}

SkeletonData* UnitManager::getSkeleton(const std::string& fileName) {
    auto& skeleton = skeletons_[fileName];
    if (!skeleton) {
        skeleton = readOrEmpty<SkeletonData>("units/" + fileName, readSkeleton);
        skeleton->name = fileName;
    }
    return skeleton.get();
}

void UnitManager::preloadMaterials(const std::string& meshName) {
    for (const Submesh& submesh : getMesh(meshName)->submeshes)
        if (!submesh.isCollision()) engineManagers()->materialManager->findMaterial(submesh.materialName);
}

std::unique_ptr<Unit> UnitManager::createUnit(const std::string& meshName) {
    return std::make_unique<Unit>(*getMesh(meshName), nextUnitId_++);
}

} // namespace Zelkor
