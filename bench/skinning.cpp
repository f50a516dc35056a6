// Skinning of positions and normals, two influences a vertex, against a plain copy of its working set. The
// ratio is that of the rates: bytes that skinning touches a second over bytes that are copied a second.
#include "resources/Skinning.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <random>

using namespace Zelkor;

namespace {

constexpr int jointCount = 40;

struct Figure {
    VertexData vertices;
    SkinPlan plan;
    std::vector<Mat4> matrices;
    std::vector<Vec3> positions, normals;

    explicit Figure(int vertexCount) : matrices(jointCount), positions(vertexCount), normals(vertexCount) {
        std::mt19937 random(1);
        std::uniform_real_distribution<float> number(-1, 1);
        const auto vector = [&] { return Vec3{number(random), number(random), number(random)}; };
        std::vector<int32_t> indices;
        for (int v = 0; v < vertexCount; ++v) {
            vertices.positions.push_back(vector());
            vertices.normals.push_back(vector());
            // Neighbours in the file follow neighbouring joints, as they do in a modelled figure.
            const int joint = v * (jointCount - 1) / vertexCount;
            const float weight = 0.5f + 0.4f * number(random);
            vertices.influences.push_back({v, joint, weight});
            vertices.influences.push_back({v, joint + 1, 1 - weight});
            indices.push_back(v);
        }
        plan = makeSkinPlan(vertices, indices, jointCount);
        for (Mat4& matrix : matrices)
            mat4FromTransform(matrix, quatFromAxisAngle(number(random), {0, 0, 1}), {1, 1, 1}, vector());
    }

    void skinOnce() {
        skin(plan, matrices, positions, normals);
        benchmark::ClobberMemory();
    }
    // Every byte read or written once: vertices in and out, the plan, the matrices.
    std::size_t bytes() const {
        return positions.size() * 2 * sizeof(Vec3) + plan.pairs.size() * sizeof(SkinPlan::Pair) +
               matrices.size() * sizeof(Mat4);
    }
};

// The same working set, copied elsewhere. Its rate counts every byte once, so at equal rates the copy moves
// each byte twice, in and out, where skinning moves it once.
struct Copy {
    std::vector<char> from, to;

    explicit Copy(std::size_t bytes) : from(bytes, 1), to(bytes) {}

    void copyOnce() {
        std::memcpy(to.data(), from.data(), from.size());
        benchmark::ClobberMemory();
    }
};

double seconds(auto&& work, int repeats) {
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < repeats; ++i)
        work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Both sides by turns, so that a busy machine slows both; the best turn of each counts.
void skinningAgainstCopy(benchmark::State& state) {
    Figure figure(static_cast<int>(state.range(0)));
    Copy copy(figure.bytes());
    const int repeats = static_cast<int>(1 + (8 << 20) / figure.bytes());
    double skinning = 1e9, copying = 1e9;
    for (auto unused : state) {
        (void)unused;
        skinning = std::min(skinning, seconds([&] { figure.skinOnce(); }, repeats));
        copying = std::min(copying, seconds([&] { copy.copyOnce(); }, repeats));
    }
    const double bytes = static_cast<double>(figure.bytes()) * repeats;
    state.counters["skinning GB/s"] = bytes / skinning * 1e-9;
    state.counters["copy GB/s"] = bytes / copying * 1e-9;
    state.counters["ratio"] = copying / skinning;
}

// A crowd figure, the hero, a big machine, and a stage full of figures.
BENCHMARK(skinningAgainstCopy)->Arg(600)->Arg(1500)->Arg(4000)->Arg(200000)->MinTime(1);

} // namespace

BENCHMARK_MAIN();
