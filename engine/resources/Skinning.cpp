#include "resources/Skinning.h"

#include <algorithm>
#include <cstring>
#include <vector>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace Zelkor {

namespace {

// Four floats in one register, on every processor GCC and Clang know.
using Float4 = float __attribute__((vector_size(16)));

// The columns of a skin matrix, so that a point is moved by four products and three sums.
struct alignas(32) Columns {
    Float4 x, y, z, translation;
};

Columns columnsOf(const Mat4& matrix) {
    const float* m = matrix.m;
    const auto column = [m](int c) { return Float4{m[c], m[4 + c], m[8 + c], 0}; };
    return {column(0), column(1), column(2), column(3)};
}

struct Output {
    Vec3* positions;
    Vec3* normals;
};

inline void store(Vec3& to, Float4 value) {
    std::memcpy(&to.x, &value, 2 * sizeof(float));
    to.z = value[2];
}

// The order of these sums is part of the result: the wide version below adds in the same order.
inline Float4 transform(const Columns& m, const float* v) {
    return (m.x * v[0] + m.z * v[2]) + (m.y * v[1] + m.translation * v[3]);
}

inline void place(Output out, int32_t vertex, const Columns& blend, const SkinPlan::Rest& rest) {
    store(out.positions[vertex], transform(blend, rest.position));
    store(out.normals[vertex], transform(blend, rest.normal));
}

void skinPairs(const SkinPlan& plan, const Columns* joints, Output out) {
    for (const SkinPlan::Pair& pair : plan.pairs) {
        const Columns &a = joints[pair.joint[0]], &b = joints[pair.joint[1]];
        const float u = pair.weight[0], v = pair.weight[1];
        const Columns blend{a.x * u + b.x * v, a.y * u + b.y * v, a.z * u + b.z * v,
                            a.translation * u + b.translation * v};
        place(out, pair.vertex, blend, pair.rest);
    }
}

void skinRuns(const SkinPlan& plan, const Columns* joints, Output out) {
    for (const SkinPlan::Run& run : plan.runs) {
        Columns blend{};
        for (int32_t i = run.first; i < run.first + run.count; ++i) {
            const Columns& joint = joints[plan.terms[i].joint];
            const float weight = plan.terms[i].weight;
            blend.x += joint.x * weight;
            blend.y += joint.y * weight;
            blend.z += joint.z * weight;
            blend.translation += joint.translation * weight;
        }
        place(out, run.vertex, blend, run.rest);
    }
}

#if defined(__x86_64__)

// Two columns in one register: the same products and sums as skinPairs, in half as many instructions.
__attribute__((target("avx2"))) void skinPairsWide(const SkinPlan& plan, const Columns* joints, Output out) {
    const __m256i xy = _mm256_setr_epi32(0, 0, 0, 0, 1, 1, 1, 1);
    const __m256i zw = _mm256_setr_epi32(2, 2, 2, 2, 3, 3, 3, 3);
    for (const SkinPlan::Pair& pair : plan.pairs) {
        const float* a = reinterpret_cast<const float*>(&joints[pair.joint[0]]);
        const float* b = reinterpret_cast<const float*>(&joints[pair.joint[1]]);
        const __m256 u = _mm256_broadcast_ss(&pair.weight[0]), v = _mm256_broadcast_ss(&pair.weight[1]);
        const __m256 blendXY =
            _mm256_add_ps(_mm256_mul_ps(_mm256_load_ps(a), u), _mm256_mul_ps(_mm256_load_ps(b), v));
        const __m256 blendZW =
            _mm256_add_ps(_mm256_mul_ps(_mm256_load_ps(a + 8), u), _mm256_mul_ps(_mm256_load_ps(b + 8), v));

        const __m256 p = _mm256_broadcast_ps(reinterpret_cast<const __m128*>(pair.rest.position));
        const __m256 n = _mm256_broadcast_ps(reinterpret_cast<const __m128*>(pair.rest.normal));
        const __m256 position = _mm256_add_ps(_mm256_mul_ps(blendXY, _mm256_permutevar_ps(p, xy)),
                                              _mm256_mul_ps(blendZW, _mm256_permutevar_ps(p, zw)));
        const __m256 normal = _mm256_add_ps(_mm256_mul_ps(blendXY, _mm256_permutevar_ps(n, xy)),
                                            _mm256_mul_ps(blendZW, _mm256_permutevar_ps(n, zw)));
        store(out.positions[pair.vertex],
              _mm_add_ps(_mm256_castps256_ps128(position), _mm256_extractf128_ps(position, 1)));
        store(out.normals[pair.vertex],
              _mm_add_ps(_mm256_castps256_ps128(normal), _mm256_extractf128_ps(normal, 1)));
    }
}

const bool wide = __builtin_cpu_supports("avx2");

#else

constexpr bool wide = false;
void skinPairsWide(const SkinPlan&, const Columns*, const Output&) {}

#endif

SkinPlan::Rest restOf(const VertexData& vertices, int32_t vertex) {
    const Vec3& p = vertices.positions[vertex];
    const Vec3 n = vertices.normals.empty() ? Vec3{} : vertices.normals[vertex];
    return {{p.x, p.y, p.z, 1}, {n.x, n.y, n.z, 0}};
}

void addToPlan(SkinPlan& plan, int32_t vertex, const SkinPlan::Rest& rest,
               const std::vector<SkinPlan::Term>& terms) {
    if (terms.empty()) return;
    if (terms.size() > 2) {
        const auto first = static_cast<int32_t>(plan.terms.size());
        plan.runs.push_back({rest, vertex, first, static_cast<int32_t>(terms.size())});
        plan.terms.insert(plan.terms.end(), terms.begin(), terms.end());
        return;
    }
    const SkinPlan::Term second = terms.size() == 2 ? terms[1] : SkinPlan::Term{terms[0].joint, 0};
    const auto joint = [](const SkinPlan::Term& term) { return static_cast<uint16_t>(term.joint); };
    plan.pairs.push_back({rest, {terms[0].weight, second.weight}, {joint(terms[0]), joint(second)}, vertex});
}

} // namespace

SkinPlan makeSkinPlan(const VertexData& vertices, std::span<const int32_t> indices, int jointCount) {
    std::vector<bool> drawn(vertices.positions.size());
    for (const int32_t index : indices)
        drawn[index] = true;

    SkinPlan plan;
    std::vector<SkinPlan::Term> terms;
    const auto& influences = vertices.influences;
    for (std::size_t i = 0; i < influences.size();) {
        const int32_t vertex = influences[i].vertex;
        terms.clear();
        for (; i < influences.size() && influences[i].vertex == vertex; ++i) {
            const auto& [unused, joint, weight] = influences[i];
            if (joint < 0 || joint >= std::min(jointCount, 0x10000) || weight <= 0) continue;
            if (weight >= 1) terms.clear();
            terms.push_back({joint, std::min(weight, 1.0f)});
        }
        if (drawn[vertex]) addToPlan(plan, vertex, restOf(vertices, vertex), terms);
    }
    return plan;
}

void makeSkinPlans(Mesh& mesh, int jointCount) {
    if (mesh.skinPlansMade) return;
    for (Submesh& submesh : mesh.submeshes)
        submesh.skinPlan = makeSkinPlan(mesh.vertices, submesh.indices, jointCount);
    mesh.skinPlansMade = true;
}

void skin(const SkinPlan& plan, std::span<const Mat4> skinMatrices, std::span<Vec3> outPositions,
          std::span<Vec3> outNormals) {
    std::vector<Columns> joints(skinMatrices.size());
    std::transform(skinMatrices.begin(), skinMatrices.end(), joints.begin(), columnsOf);
    const Output out{outPositions.data(), outNormals.data()};
    if (wide)
        skinPairsWide(plan, joints.data(), out);
    else
        skinPairs(plan, joints.data(), out);
    skinRuns(plan, joints.data(), out);
}

} // namespace Zelkor
