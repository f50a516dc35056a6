#include "mesh/Angles.h"
#include "mesh/Noise.h"
#include "mesh/Primitives.h"
#include "tools/Workshop.h"

#include <cmath>

namespace forge {
namespace {

using Zelkor::Vec3;

TEST(Warps, inverseUndoesForward) {
    struct Case {
        const char* name;
        WarpPointer warp;
        float tolerance;
    };
    const Case cases[] = {
        {"move", moveWarp({1, -2, 3}), 1e-5f},
        {"turn", turnWarp({20, 50, -70}), 1e-5f},
        {"scale", scaleWarp({2, 0.5f, -1}), 1e-5f},
        {"mirror", mirrorWarp(Axis::X), 0},
        {"bend", bendWarp(Axis::Y, Axis::X, 70, 8), 1e-4f},
        {"bend back", bendWarp(Axis::X, Axis::Z, -90, 6), 1e-4f},
        {"twist", twistWarp(Axis::Z, 120, 5), 1e-5f},
        {"taper", taperWarp(Axis::Y, 0.4f, 8), 1e-4f},
        {"wobble", wobbleWarp(0.2f, 3, 4), 0.02f},
    };
    for (const Case& each : cases)
        for (int i = 0; i < 60; ++i) {
            const Vec3 p = 2.0f * vectorNoise({static_cast<float>(i) * 1.7f, 0.3f, 0.9f}, 8);
            EXPECT_TRUE(near(each.warp->inverse(each.warp->forward(p)), p, each.tolerance)) << each.name;
        }
}

TEST(Warps, bendsKeepTheLengthOfTheirMiddleLineAndReachTheirAngle) {
    const WarpPointer bend = bendWarp(Axis::Y, Axis::X, 90, 10);
    float length = 0;
    Vec3 before = bend->forward({});
    for (int i = 1; i <= 200; ++i) {
        const Vec3 p = bend->forward({0, 10 * static_cast<float>(i) / 200, 0});
        length += Zelkor::distance(before, p);
        before = p;
    }
    EXPECT_NEAR(length, 10, 0.01f);
    const float radius = 10 / (Zelkor::pi / 2);
    EXPECT_TRUE(near(before, {radius, radius, 0}, 1e-3f)) << "a quarter circle ends beside its centre";
}

TEST(Warps, chainsActInnermostFirstAndCountMirrors) {
    const WarpChain chain{moveWarp({10, 0, 0}), turnWarp({0, 0, 90}), mirrorWarp(Axis::X)};
    EXPECT_TRUE(near(forward(chain, {1, 0, 0}), {10, -1, 0}, 1e-5f));
    EXPECT_TRUE(near(inverse(chain, {10, -1, 0}), {1, 0, 0}, 1e-5f));
    EXPECT_TRUE(mirrors(chain));
    Surface box = boxSurface({2, 2, 2}, 0.3f);
    const double volume = volumeOf(box);
    applyWarps(box, chain, 1);
    EXPECT_NEAR(volumeOf(box), volume, 1e-4) << "a mirrored solid still faces outward";
}

TEST(Warps, bentSolidsStayClosed) {
    Surface bar = boxSurface({1, 10, 1}, 0.1f);
    applyWarps(bar, {bendWarp(Axis::Y, Axis::X, 120, 10), wobbleWarp(0.1f, 1, 2)}, 0.6f);
    EXPECT_TRUE(isClosed(bar));
    EXPECT_NEAR(volumeOf(bar), 9.5, 1.2);
}

TEST(Angles, degreesTwistThenLeanThenSwing) {
    EXPECT_TRUE(near(rotate(quatFromDegrees({0, 0, 90}), {0, -1, 0}), {1, 0, 0}, 1e-5f))
        << "a swing goes forwards";
    EXPECT_TRUE(near(rotate(quatFromDegrees({0, 90, 0}), {0, 0, 1}), {1, 0, 0}, 1e-5f));
    EXPECT_TRUE(near(rotate(quatFromDegrees({0, 90, 90}), {0, 0, 1}), {0, 1, 0}, 1e-5f));
    for (const Vec3& to : {Vec3{1, 0, 0}, Vec3{-1, 0, 0}, Vec3{0, 0.6f, 0.8f}})
        EXPECT_TRUE(near(rotate(quatBetween({1, 0, 0}, to), {1, 0, 0}), to, 1e-4f));
}

TEST(Noise, fillsItsRangeWithoutJumps) {
    float low = 1, high = -1;
    for (int i = 0; i < 4000; ++i) {
        const Vec3 p{static_cast<float>(i) * 0.05f, static_cast<float>(i % 71) * 0.3f, 0.5f};
        const float v = valueNoise(p, 3);
        low = std::min(low, v);
        high = std::max(high, v);
        EXPECT_LT(std::fabs(v - valueNoise(p + Vec3{0.001f, 0, 0}, 3)), 0.01f);
    }
    EXPECT_TRUE(low >= -1 && low < -0.7f) << low;
    EXPECT_TRUE(high <= 1 && high > 0.7f) << high;
}

} // namespace
} // namespace forge
