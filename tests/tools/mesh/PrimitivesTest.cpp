#include "mesh/Primitives.h"
#include "tools/Workshop.h"

#include <cmath>

namespace forge {
namespace {

using Zelkor::Vec2;
using Zelkor::Vec3;
using Zelkor::Vec4;

constexpr double circle = 3.14159265358979;
const Outline corner{{0, 0}, {4, 0}, {4, 1}, {1, 1}, {1, 4}, {0, 4}};

TEST(Primitives, closedSolidsFaceOutwardAndHaveTheirVolume) {
    struct Solid {
        const char* name;
        Surface surface;
        double volume, tolerance;
    };
    std::vector<Vec2> half;
    for (int i = 0; i <= 12; ++i) {
        const float a = Zelkor::pi * static_cast<float>(i) / 12 - Zelkor::pi / 2;
        half.push_back({i % 12 ? 2 * std::cos(a) : 0, 2 * std::sin(a)});
    }
    const std::vector<Vec2> downwards(half.rbegin(), half.rend());
    const std::vector<std::vector<Vec3>> pyramid{{{-2, 0, 2}, {2, 0, 2}, {2, 0, -2}, {-2, 0, -2}},
                                                 {{-1, 3, 1}, {1, 3, 1}, {1, 3, -1}, {-1, 3, -1}}};
    const Solid solids[] = {
        {"box", boxSurface({2, 3, 4}, 0), 24, 1e-4},
        // Twelve edges lose half a square each; where three meet, the corners' share is counted.
        {"bevelled box", boxSurface({2, 2, 2}, 0.2f), 8 - 12 * 0.02 * 2 + 8 * (0.008 * 2 / 3.0), 0.02},
        {"prism", prismSurface(corner, 2, 0), 14, 1e-4},
        {"clockwise prism", prismSurface({corner.rbegin(), corner.rend()}, 2, 0), 14, 1e-4},
        {"bevelled prism", prismSurface(corner, 2, 0.1f), 14, 0.25},
        {"sphere", latheSurface(half, 24, 360), 4.0 / 3 * circle * 8, 1.3},
        {"sphere from above", latheSurface(downwards, 24, 360), 4.0 / 3 * circle * 8, 1.3},
        {"frustum", loftSurface(pyramid, true), 28, 1e-3},
        {"rod", tubeSurface({{0, 0, 0, 1}, {0, 5, 0, 1}, {0, 9, 0, 1}}, 24, false), 9 * circle, 0.4},
        {"ring", tubeSurface({{3, 0, 0, .5f}, {0, 3, 0, .5f}, {-3, 0, 0, .5f}, {0, -3, 0, .5f}}, 8, true),
         9.4, 3.2},
        {"plank", plankSurface({10, 2, 1}, 0, 0, 0, 3, 1), 20, 1e-3},
    };
    for (const Solid& solid : solids) {
        EXPECT_TRUE(isClosed(solid.surface)) << solid.name;
        EXPECT_NEAR(volumeOf(solid.surface), solid.volume, solid.tolerance) << solid.name;
    }
}

TEST(Primitives, countsStayWithinTheTilesBudget) {
    EXPECT_EQ(boxSurface({2, 2, 2}, 0).triangles.size(), 12u);
    EXPECT_EQ(boxSurface({2, 2, 2}, 0.2f).triangles.size(), 44u);
    EXPECT_LE(plankSurface({10, 2, 1}, 0.1f, 0.1f, 0.4f, 2.5f, 3).triangles.size(), 100u);
    for (const int budget : {30, 60, 120}) {
        const Surface rock = rockSurface({4, 3, 3}, 16, budget, 2);
        EXPECT_LE(static_cast<int>(rock.triangles.size()), budget);
        EXPECT_GE(static_cast<int>(rock.triangles.size()), budget * 3 / 4);
    }
}

TEST(Primitives, planksAndRocksDifferBySeedAndFillTheirSize) {
    const Vec3 size{6, 4, 5};
    const Surface one = rockSurface(size, 16, 80, 1), two = rockSurface(size, 16, 80, 2);
    EXPECT_TRUE(isClosed(one));
    EXPECT_GT(volumeOf(one), 0.35 * 6 * 4 * 5);
    EXPECT_NE(volumeOf(one), volumeOf(two));
    // Simplifying may cost the outermost points, but not much of them.
    const Vec3 reached = boundsOf(rockSurface(size, 16, 600, 1)).size();
    EXPECT_TRUE(near(reached, size, 0.3f));
    const Surface board = plankSurface({10, 2, 1}, 0.1f, 0.15f, 0.5f, 2.5f, 1);
    EXPECT_TRUE(isClosed(board));
    EXPECT_LE(boundsOf(board).size().x, 10.001f) << "chips take away, they do not add";
    EXPECT_NE(volumeOf(board), volumeOf(plankSurface({10, 2, 1}, 0.1f, 0.15f, 0.5f, 2.5f, 2)));
}

TEST(Outlines, triangulateWhateverDoesNotCrossItself) {
    Outline star, comb{{0, 0}};
    for (int i = 0; i < 14; ++i) {
        const float a = 2 * Zelkor::pi * static_cast<float>(i) / 14, r = i % 2 ? 1.0f : 3.0f;
        star.push_back({r * std::cos(a), r * std::sin(a)});
    }
    for (int i = 0; i < 8; ++i) {
        const auto x = static_cast<float>(8 - i);
        comb.push_back({x, 0.2f});
        comb.push_back({x - 0.5f, 5});
    }
    makeCounterClockwise(comb);
    for (const Outline& outline : {corner, star, comb}) {
        float area = 0;
        for (const auto& t : triangulate(outline)) {
            const auto at = [&](std::size_t k) { return outline[static_cast<std::size_t>(t[k])]; };
            const float each = signedArea2({at(0), at(1), at(2)});
            EXPECT_GE(each, 0);
            area += each;
        }
        EXPECT_NEAR(area, signedArea2(outline), 1e-3f);
    }
    EXPECT_TRUE(prismSurface({{0, 0}, {2, 2}, {2, 0}, {0, 2}}, 1, 0).triangles.empty()) << "a bow tie";
}

TEST(Outlines, insetAndDistanceAgree) {
    for (const Vec2& p : inset(corner, 0.25f)) // at the inner corner the mitre stands a diagonal away
        EXPECT_NEAR(signedDistance(corner, p),
                    p.x < 1 && p.y < 1 && p.x + p.y > 1 ? -0.25f * std::sqrt(2.0f) : -0.25f, 1e-4f);
    EXPECT_NEAR(signedDistance(corner, {-3, 0.5f}), 3, 1e-5f);
    EXPECT_NEAR(signedDistance(corner, {2, 2}), 1, 1e-5f);
    EXPECT_NEAR(signedDistance(corner, {0.5f, 0.5f}), -0.5f, 1e-5f);
}

TEST(Outlines, rougheningKeepsTheCornersAndStaysWithinItsAmount) {
    const Outline square{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    const Outline rough = roughened(square, 0.4f, 2, 5);
    EXPECT_EQ(rough.size(), 20u);
    float farthest = 0;
    for (const Vec2& p : rough)
        farthest = std::max(farthest, std::fabs(signedDistance(square, p)));
    EXPECT_LE(farthest, 0.4001f);
    EXPECT_GT(farthest, 0.15f);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(rough[i * 5].x, square[i].x);
        EXPECT_EQ(rough[i * 5].y, square[i].y);
    }
}

TEST(Surfaces, splittingLeavesShapeAndClosureAlone) {
    Surface surface = boxSurface({5, 3, 2}, 0);
    splitLongEdges(surface, 0.7f);
    EXPECT_TRUE(isClosed(surface));
    EXPECT_NEAR(volumeOf(surface), 30, 1e-3);
    EXPECT_NEAR(areaOf(surface), 62, 1e-3);
    for (const Triangle& t : surface.triangles)
        for (std::size_t k = 0; k < 3; ++k)
            EXPECT_LE(Zelkor::distance(surface.positions[static_cast<std::size_t>(t[k])],
                                       surface.positions[static_cast<std::size_t>(t[(k + 1) % 3])]),
                      0.7f);
}

} // namespace
} // namespace forge
