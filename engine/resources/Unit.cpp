#include "resources/Unit.h"

#include "animation/SkeletonInstance.h"
#include "core/EngineManagers.h"
#include "render/MaterialManager.h"
#include "resources/Skinning.h"

#include <algorithm>
#include <utility>

namespace Zelkor {

RenderItem::RenderItem(RenderItem&& from) noexcept
    : submesh(from.submesh), joint(from.joint), skinnedPositions(std::move(from.skinnedPositions)),
      skinnedNormals(std::move(from.skinnedNormals)), material_(from.material_),
      owned_(std::exchange(from.owned_, false)) {}

RenderItem::~RenderItem() {
    if (owned_ && engineManagers() && engineManagers()->materialManager)
        engineManagers()->materialManager->removeCopy(material_);
}

Material& RenderItem::ownMaterial() {
    if (!owned_) {
        material_ = engineManagers()->materialManager->copyMaterial(*material_);
        owned_ = true;
    }
    return *material_;
}

const Vec4& RenderItem::colour() const {
    return material_->ambient;
}

void RenderItem::setColour(const Vec4& colour) {
    if (colour != material_->ambient) ownMaterial().ambient = colour;
}

Unit::Unit(Mesh& ofMesh, int unitId) : id(unitId), mesh(&ofMesh) {
    if (mesh->skeleton) {
        skeleton = std::make_unique<SkeletonInstance>(*mesh->skeleton);
        makeSkinPlans(*mesh, skeleton->jointCount());
    }
    boundingCentre = (mesh->boxMin + mesh->boxMax) * 0.5f;
    boundingRadius = distance(mesh->boxMax, boundingCentre);
    updateWorldBox();

    items.reserve(mesh->submeshes.size());
    for (const Submesh& submesh : mesh->submeshes)
        if (!submesh.isCollision()) addItem(submesh);
}

Unit::~Unit() = default;

void Unit::addItem(const Submesh& submesh) {
    Material* material = engineManagers()->materialManager->findMaterial(submesh.materialName);
    inMainList |= material->specialAlphaTest;
    inSpecialList |= material->specialAlpha;
    castsShadows |= material->castShadows;
    RenderItem& item = items.emplace_back(submesh, material);
    if (skeleton && !mesh->vertices.influences.empty()) {
        // At rest until the first update, and for good where no joint moves a vertex.
        item.skinnedPositions = mesh->vertices.positions;
        item.skinnedNormals = mesh->vertices.normals;
        item.skinnedNormals.resize(item.skinnedPositions.size());
    }
}

void Unit::frameUpdate(int frameNumber) {
    if (!skeleton || updatedFrame_ == frameNumber) return;
    updatedFrame_ = frameNumber;
    skeleton->updateAnimations();
    skeleton->updateSkeleton();
    for (RenderItem& item : items)
        if (!item.skinnedPositions.empty())
            skin(item.submesh->skinPlan, skeleton->skinMatrices, item.skinnedPositions, item.skinnedNormals);
}

void Unit::updateWorldBox() {
    const Vec3 &low = mesh->boxMin, &high = mesh->boxMax;
    const bool turned = orientation != Quat{};
    Mat4 transform;
    if (turned) mat4FromTransform(transform, orientation, scale, position);
    for (int corner = 0; corner < 8; ++corner) {
        const Vec3 local{corner & 1 ? high.x : low.x, corner & 2 ? high.y : low.y,
                         corner & 4 ? high.z : low.z};
        const Vec3 world = turned ? mat4TransformPoint(transform, local) : position + scaled(scale, local);
        if (corner == 0) worldBoxMin = worldBoxMax = world;
        worldBoxMin = {std::min(worldBoxMin.x, world.x), std::min(worldBoxMin.y, world.y),
                       std::min(worldBoxMin.z, world.z)};
        worldBoxMax = {std::max(worldBoxMax.x, world.x), std::max(worldBoxMax.y, world.y),
                       std::max(worldBoxMax.z, world.z)};
    }
}

void Unit::detach(Unit* child) {
    std::erase(children, child);
}

} // namespace Zelkor
