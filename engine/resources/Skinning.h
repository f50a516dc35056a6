// Skinning on the CPU: moves the vertices of a submesh by the joints they follow.
#pragma once

#include "math/Math.h"
#include "resources/Mesh.h"

#include <span>

namespace Zelkor {

// Sorts the influences of every vertex that the submesh draws into a plan. A weight of 1 or more makes a
// vertex follow that joint alone, whatever came before it; a weight of 0 or less, or a joint that is not
// there, has no effect. A vertex without an effective influence is not in the plan: it stays at rest.
SkinPlan makeSkinPlan(const VertexData& vertices, std::span<const int32_t> indices, int jointCount);

// Makes the plan of each submesh; does nothing the second time.
void makeSkinPlans(Mesh& mesh, int jointCount);

// For each vertex of the plan, the sum B of its weighted skin matrices moves the position (with translation)
// and turns the normal (without, and not normalised again). Weights that sum to 1 reproduce.
// skinMatrices holds at least the joints the plan was made for; outPositions and outNormals are as long as
// the vertex arrays. Vertices outside the plan are left as they are.
void skin(const SkinPlan& plan, std::span<const Mat4> skinMatrices, std::span<Vec3> outPositions,
          std::span<Vec3> outNormals);

} // namespace Zelkor
