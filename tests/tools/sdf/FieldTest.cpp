// Distance shapes, how they join, and their surfaces.
#include "mesh/Noise.h"
#include "sdf/SurfaceNets.h"
#include "tools/Workshop.h"

#include <cmath>
#include <iterator>

namespace forge {
namespace {

using Zelkor::Vec3;

constexpr double circle = 3.14159265358979;

Field::Step step(ShapePointer shape, Field::Operation operation = Field::Operation::Add, float blend = 0) {
    Field::Step result;
    result.shape = std::move(shape);
    result.operation = operation;
    result.blend = blend;
    return result;
}

Field only(ShapePointer shape) {
    Field field;
    field.add(step(std::move(shape)));
    return field;
}

Vec3 sample(int i, float reach) {
    return reach * vectorNoise({static_cast<float>(i) * 0.71f, 0.5f, 3.3f}, 12);
}

struct Case {
    const char* name;
    ShapePointer shape;
};
std::vector<Case> exactShapes() {
    Case shapes[] = {
        {"capsule", capsuleShape({-1, 0, 0}, {2, 1, 0}, 1, 0.4f)},
        {"engulfed capsule", capsuleShape({0, 0, 0}, {0.2f, 0, 0}, 1, 0.3f)},
        {"box", boxShape({0, 0.5f, 0}, {3, 2, 1}, 0.2f)},
        {"cone", coneShape({0, -1, 0}, {0, 2, 0}, 1.5f, 0.5f, 0.1f)},
        {"pointed cone", coneShape({0, -1, 0}, {0, 2, 0}, 1.5f, 0, 0)},
        {"torus", torusShape({}, 1.5f, 0.4f, Axis::Z)},
        {"extrusion", extrusionShape({{-1, -1}, {2, -1}, {0, 2}}, 1.5f, 0)},
        {"lathe", latheShape({{0, -1}, {1.5f, -1}, {0.5f, 1}, {0, 1}}, 0)},
        {"tube", tubeShape({{-2, 0, 0, 0.5f}, {0, 1, 0, 0.7f}, {2, 0, 0, 0.3f}})},
        {"half space", halfSpaceShape({0, 0.3f, 0}, {1, 1, 0})},
    };
    return {std::make_move_iterator(std::begin(shapes)), std::make_move_iterator(std::end(shapes))};
}

TEST(Shapes, distancesNeverChangeFasterThanOneGoesAndLeadToTheSurface) {
    for (const auto& [name, shape] : exactShapes()) {
        for (int i = 0; i < 400; ++i) {
            const Vec3 p = sample(i, 4), q = p + 0.3f * vectorNoise({static_cast<float>(i), 0, 0}, 2);
            const float d = shape->distance(p);
            EXPECT_LE(std::fabs(d - shape->distance(q)), Zelkor::distance(p, q) * 1.001f + 1e-4f) << name;
            if (d < 0) continue;
            // Outside the distance is the way to the surface: going it down the slope ends there.
            const float e = 1e-2f;
            Vec3 slope{shape->distance(p + Vec3{e, 0, 0}) - shape->distance(p - Vec3{e, 0, 0}),
                       shape->distance(p + Vec3{0, e, 0}) - shape->distance(p - Vec3{0, e, 0}),
                       shape->distance(p + Vec3{0, 0, e}) - shape->distance(p - Vec3{0, 0, e})};
            if (Zelkor::length(slope) < 1.9f * e) continue; // on a ridge two ways are equally short
            Zelkor::normalize(slope);
            EXPECT_NEAR(shape->distance(p - slope * d), 0, 0.02f + 0.02f * d) << name;
        }
    }
}

TEST(Shapes, boundsHoldEverythingInside) {
    std::vector<Case> shapes = exactShapes();
    shapes.pop_back(); // a half space has none
    shapes.push_back({"ellipsoid", ellipsoidShape({0.5f, 0, 0}, {2, 1, 0.5f})});
    for (const auto& [name, shape] : shapes) {
        const Box box = shape->bounds();
        int inside = 0;
        for (int i = 0; i < 3000; ++i) {
            const Vec3 p = sample(i, 4);
            if (shape->distance(p) >= 0) continue;
            ++inside;
            EXPECT_EQ(Zelkor::clampVec3(p, box.lo, box.hi), p) << name;
        }
        EXPECT_GT(inside, 5) << name;
    }
}

TEST(Fields, addCutAndKeepActInOrder) {
    Field field;
    field.add(step(boxShape({}, {4, 4, 4}, 0)));
    field.add(step(ellipsoidShape({2, 0, 0}, {1, 1, 1}), Field::Operation::Cut));
    field.add(step(halfSpaceShape({0, 1, 0}, {0, 1, 0}), Field::Operation::Keep));
    field.add(step(ellipsoidShape({2, 0, 0}, {0.3f, 0.3f, 0.3f})));
    EXPECT_LT(field.distance({-1, 0, 0}), 0);
    EXPECT_GT(field.distance({1.5f, 0, 0}), 0) << "cut away";
    EXPECT_GT(field.distance({-1, 1.5f, 0}), 0) << "not kept";
    EXPECT_LT(field.distance({2, 0, 0}), 0) << "added after the cut";
}

TEST(Fields, blendsFillTheSeamAndNothingElse) {
    const auto pair = [](float blend) {
        Field field;
        field.add(step(capsuleShape({-3, 0, 0}, {0, 0, 0}, 1, 1)));
        field.add(step(capsuleShape({0, 0, 0}, {0, 3, 0}, 1, 1), Field::Operation::Add, blend));
        return field;
    };
    const Field sharp = pair(0), soft = pair(0.8f);
    EXPECT_LT(soft.distance({-1.1f, 1.1f, 0}), sharp.distance({-1.1f, 1.1f, 0}) - 0.05f);
    for (int i = 0; i < 300; ++i) {
        const Vec3 p = sample(i, 5);
        EXPECT_LE(soft.distance(p), sharp.distance(p) + 1e-5f);
        EXPECT_GE(soft.distance(p), sharp.distance(p) - 0.2f - 1e-5f) << "a quarter of the blend at most";
    }
    EXPECT_NEAR(soft.distance({-3, 1.5f, 0}), 0.5f, 1e-5f);
}

TEST(Fields, skippingFarStepsChangesNothing) {
    Field field;
    for (int i = 0; i < 12; ++i) {
        const Vec3 at{static_cast<float>(i) * 2.5f, std::sin(static_cast<float>(i)), 0};
        Field::Step each = step(ellipsoidShape({}, {1, 0.8f, 1.2f}),
                                i % 4 == 3 ? Field::Operation::Cut : Field::Operation::Add, 0.4f);
        each.warps = {moveWarp(at), turnWarp({0, 0, 20.0f * static_cast<float>(i)})};
        field.add(std::move(each));
    }
    // The same, computed without boxes.
    const auto plain = [](const Vec3& p) {
        const auto blend = [](float a, float b) {
            const float h = std::max(0.4f - std::fabs(a - b), 0.0f) / 0.4f;
            return std::min(a, b) - h * h * 0.1f;
        };
        float d = 1e30f;
        for (int i = 0; i < 12; ++i) {
            const Vec3 at{static_cast<float>(i) * 2.5f, std::sin(static_cast<float>(i)), 0};
            const WarpChain chain{moveWarp(at), turnWarp({0, 0, 20.0f * static_cast<float>(i)})};
            const float own = ellipsoidShape({}, {1, 0.8f, 1.2f})->distance(inverse(chain, p));
            d = i == 0 ? own : i % 4 == 3 ? -blend(-d, own) : blend(d, own);
        }
        return d;
    };
    for (int i = 0; i < 500; ++i) {
        const Vec3 p = Vec3{14, 0, 0} + scaled(sample(i, 1), {16, 3, 3});
        EXPECT_NEAR(field.distance(p), plain(p), 1e-3f);
    }
}

TEST(SurfaceNets, findTheSurfaceClosedAndFacingOutward) {
    struct Known {
        const char* name;
        Field field;
        double volume, tolerance;
    };
    Known known[] = {
        {"sphere", only(ellipsoidShape({}, {2, 2, 2})), 32.0 / 3 * circle, 0.5},
        {"torus", only(torusShape({}, 2, 0.5f, Axis::Y)), 2 * circle * circle * 2 * 0.25, 0.4},
        {"box", only(boxShape({}, {3, 2, 1}, 0)), 6, 0.25},
    };
    for (const Known& each : known) {
        const Surface surface = surfaceNets(each.field, 0.1f);
        EXPECT_TRUE(isClosed(surface)) << each.name;
        EXPECT_NEAR(volumeOf(surface), each.volume, each.tolerance) << each.name;
        float worst = 0;
        for (const Vec3& p : surface.positions)
            worst = std::max(worst, std::fabs(each.field.distance(p)));
        EXPECT_LT(worst, 0.05f) << each.name;
    }
}

TEST(SurfaceNets, keepThinAndFarApartPiecesOfOnePart) {
    Field field;
    field.add(step(coneShape({0, 0, 0}, {0, 0.16f, 0}, 3, 3, 0.05f))); // a brim
    field.add(step(ellipsoidShape({9, 8, 0}, {0.4f, 0.4f, 0.4f})));
    const Surface surface = surfaceNets(field, 0.08f);
    EXPECT_TRUE(isClosed(surface));
    EXPECT_NEAR(volumeOf(surface), circle * 9 * 0.16 + 4.0 / 3 * circle * 0.064, 0.45);
}

TEST(Simplifying, meetsItsBudgetAndKeepsTheShape) {
    const Surface fine = surfaceNets(only(capsuleShape({0, 0, 0}, {0, 6, 0}, 1.5f, 0.8f)), 0.1f);
    ASSERT_GT(fine.triangles.size(), 4000u);
    for (const int budget : {600, 200, 80}) {
        Surface coarse = fine;
        simplify(coarse, budget);
        EXPECT_LE(static_cast<int>(coarse.triangles.size()), budget);
        EXPECT_GT(static_cast<int>(coarse.triangles.size()), budget * 9 / 10);
        EXPECT_TRUE(isClosed(coarse));
        EXPECT_NEAR(volumeOf(coarse) / volumeOf(fine), 1, budget >= 200 ? 0.06 : 0.15);
    }
}

} // namespace
} // namespace forge
