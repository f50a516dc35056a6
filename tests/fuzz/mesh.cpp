#include "FuzzTarget.h"

#include "resources/Skinning.h"

using namespace Zelkor;

int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    std::string reason;
    auto mesh = readMesh({data, size}, &reason);
    fuzzCheck(mesh.has_value() == reason.empty());
    if (!mesh) return 0;
    const std::vector<Mat4> matrices(3);
    std::vector<Vec3> positions = mesh->vertices.positions, normals(positions.size());
    makeSkinPlans(*mesh, static_cast<int>(matrices.size()));
    for (const Submesh& submesh : mesh->submeshes) {
        skin(submesh.skinPlan, matrices, positions, normals);
        for (const int32_t index : submesh.indices)
            fuzzCheck(static_cast<std::size_t>(index) < positions.size());
    }
    return 0;
}
