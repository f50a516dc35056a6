#include "resources/Skinning.h"

#include <gtest/gtest.h>

#include <numeric>

namespace {

using namespace Zelkor;

// Vertices at (1, 0, 0) with a normal along x, each with influences of its own.
class SkinningTest : public ::testing::Test {
  protected:
    SkinningTest() : matrices(3) {
        mat4FromTransform(matrices[0], {}, {1, 1, 1}, {10, 0, 0});
        mat4FromTransform(matrices[1], quatFromAxisAngle(pi / 2, {0, 0, 1}), {1, 1, 1}, {0, 20, 0});
        mat4FromTransform(matrices[2], {}, {3, 3, 3}, {0, 0, 30});
    }

    int addVertex(std::initializer_list<VertexData::Influence> influences) {
        const auto vertex = static_cast<int>(vertices.positions.size());
        vertices.positions.push_back({1, 0, 0});
        vertices.normals.push_back({1, 0, 0});
        for (auto influence : influences) {
            influence.vertex = vertex;
            vertices.influences.push_back(influence);
        }
        return vertex;
    }
    void skinAll() {
        std::vector<int32_t> indices(vertices.positions.size());
        std::iota(indices.begin(), indices.end(), 0);
        positions = vertices.positions;
        normals = vertices.normals;
        skin(makeSkinPlan(vertices, indices, 3), matrices, positions, normals);
    }
    void expectAt(int vertex, const Vec3& position, const Vec3& normal) {
        EXPECT_LT(distance(positions[vertex], position), 1e-5f) << vertex;
        EXPECT_LT(distance(normals[vertex], normal), 1e-5f) << vertex;
    }

    VertexData vertices;
    std::vector<Mat4> matrices;
    std::vector<Vec3> positions, normals;
};

TEST_F(SkinningTest, PartialWeightsAverage) {
    const int two = addVertex({{0, 0, 0.5f}, {0, 1, 0.5f}});
    const int four = addVertex({{0, 0, 0.25f}, {0, 1, 0.25f}, {0, 0, 0.25f}, {0, 1, 0.25f}});
    const int alone = addVertex({{0, 2, 0.5f}}); // the sum starts from zero
    skinAll();
    for (const int vertex : {two, four})
        expectAt(vertex, {5.5f, 10.5f, 0}, {0.5f, 0.5f, 0});
    expectAt(alone, {1.5f, 0, 15}, {1.5f, 0, 0}); // not normalised again
}

TEST_F(SkinningTest, WeightsOutsideTheOpenRangeAndStrayJoints) {
    const int full = addVertex({{0, 0, 0.5f}, {0, 2, 1.5f}});
    const int after = addVertex({{0, 2, 1.0f}, {0, 0, 0.5f}});
    const int none = addVertex({{0, 0, 0.0f}, {0, 1, -1.0f}});
    const int stray = addVertex({{0, 3, 1.0f}, {0, -1, 1.0f}, {0, 0, 1.0f}});
    const int free = addVertex({});
    skinAll();
    expectAt(full, {3, 0, 30}, {3, 0, 0}); // replaces what came before
    expectAt(after, {8.5f, 0, 30}, {3.5f, 0, 0});
    expectAt(stray, {11, 0, 0}, {1, 0, 0});
    for (const int vertex : {none, free})
        expectAt(vertex, {1, 0, 0}, {1, 0, 0});
}

} // namespace
