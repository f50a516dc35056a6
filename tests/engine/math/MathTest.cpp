#include "math/Math.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

using namespace Zelkor;

constexpr float tolerance = 1e-5f;

void expectNear(const Vec3& a, const Vec3& b) {
    EXPECT_LT(distance(a, b), tolerance);
}
void expectNear(const Quat& a, const Quat& b) {
    EXPECT_NEAR(a.w, b.w, tolerance);
    expectNear(Vec3{a.x, a.y, a.z}, Vec3{b.x, b.y, b.z});
}
void expectNear(const Mat4& a, const Mat4& b) {
    for (int i = 0; i < 16; ++i)
        EXPECT_NEAR(a.m[i], b.m[i], tolerance) << i;
}

class RandomMath : public ::testing::Test {
  protected:
    float number() { return std::uniform_real_distribution<float>(-1, 1)(random); }
    Vec3 vector() { return {number(), number(), number()}; }
    Quat rotation() {
        Quat q{number(), number(), number(), number()};
        quatNormalize(q);
        return q;
    }
    std::mt19937 random{3};
};

TEST(Math, ClampTestsTheUpperBoundFirst) {
    EXPECT_EQ(clamp(5, 0, 3), 3);
    EXPECT_EQ(clamp(2, 3, 1), 1);
    EXPECT_EQ(clamp(0, 3, 1), 3);
    EXPECT_TRUE(std::isnan(clamp(std::numeric_limits<float>::quiet_NaN(), 0, 1)));
    EXPECT_EQ(moveTowards(1, 3, 5), 3);
    EXPECT_EQ(moveTowards(3, 1, 0.5f), 2.5f);
}

TEST(Math, NormalizeLeavesTinyVectorsAlone) {
    for (const float tiny : {0.0f, 1e-9f, 1e-8f}) {
        Vec3 v{0, tiny, 0};
        EXPECT_FLOAT_EQ(normalize(v), tiny);
        EXPECT_EQ(v, (Vec3{0, tiny, 0}));
    }
    Vec3 v{3, 0, -4};
    EXPECT_EQ(normalize(v), 5);
    expectNear(v, {0.6f, 0, -0.8f});
}

TEST(Math, TransformKeepsItsTranslationInTheFourthColumn) {
    Mat4 m;
    mat4FromTransform(m, {}, {2, 3, 4}, {5, 6, 7});
    expectNear(m, {{2, 0, 0, 5, 0, 3, 0, 6, 0, 0, 4, 7, 0, 0, 0, 1}});
    expectNear(mat4TransformPoint(m, {1, 1, 1}), {7, 9, 11});
    expectNear(mat4TransformDirection(m, {1, 1, 1}), {2, 3, 4});
    // A quarter turn about z takes x to y; the rotation acts on what the scale made.
    const Quat quarter = quatFromAxisAngle(pi / 2, {0, 0, 1});
    mat4FromTransform(m, quarter, {2, 1, 1}, {0, 0, 1});
    expectNear(mat4TransformPoint(m, {1, 0, 0}), {0, 2, 1});
}

TEST_F(RandomMath, InversesUndo) {
    for (int i = 0; i < 200; ++i) {
        Mat4 m, inverse, product;
        for (float& element : m.m)
            element = 2 * number();
        for (int diagonal = 0; diagonal < 4; ++diagonal)
            m.m[5 * diagonal] += 5;
        mat4Multiply(product, m, mat4Inverse(inverse, m));
        expectNear(product, {});

        const Quat q = rotation();
        const float s = 1.5f + number();
        const Vec3 t = vector();
        mat4FromTransform(m, q, {s, s, s}, t);
        mat4InverseTransform(inverse, {s, s, s}, t, q);
        mat4Multiply(m, m, inverse); // an output may be an operand
        expectNear(m, {});

        Quat back;
        expectNear(quatMultiply(back, q, quatInverse(back, q)), {});
    }
    Quat zero{0, 0, 0, 0};
    EXPECT_EQ(quatInverse(zero, zero), (Quat{0, 0, 0, 0}));
    EXPECT_EQ(quatNormalize(zero), 0);
    EXPECT_EQ(zero, (Quat{0, 0, 0, 0}));
}

TEST_F(RandomMath, QuaternionsMatricesAndAxesAgree) {
    for (int i = 0; i < 200; ++i) {
        // The half turns, in which the trace is not positive, are among them.
        const Quat a = i < 4 ? Quat{0, float(i == 1), float(i == 2), float(i == 3)} : rotation();
        if (i == 0) continue;
        const Quat b = rotation();
        const Vec3 v = vector();
        Mat3 ma, mb, mab;
        Quat ab, back;
        Vec3 byMatrix, byQuat, axis;
        quatToMat3(ma, a);
        mat3Transform(byMatrix, ma, v);
        expectNear(byMatrix, quatRotate(byQuat, a, v));
        // b first, then a
        quatToMat3(mab, quatMultiply(ab, a, b));
        mat3Multiply(mb, ma, quatToMat3(mb, b));
        for (int e = 0; e < 9; ++e)
            EXPECT_NEAR(mab.m[e], mb.m[e], tolerance);

        quatFromMat3(back, ma);
        const float sameSide = back.w * a.w + back.x * a.x + back.y * a.y + back.z * a.z;
        EXPECT_NEAR(std::fabs(sameSide), 1, tolerance);

        expectNear(quatAxisX(axis, a), quatRotate(byQuat, a, {1, 0, 0}));
        expectNear(quatAxisY(axis, a), quatRotate(byQuat, a, {0, 1, 0}));
        expectNear(quatAxisZ(axis, a), quatRotate(byQuat, a, {0, 0, 1}));

        float angle;
        quatToAxisAngle(a, angle, axis);
        expectNear(quatFromAxisAngle(angle, axis), a);
    }
    float angle = 1;
    Vec3 axis;
    quatToAxisAngle({}, angle, axis);
    EXPECT_EQ(angle, 0);
    EXPECT_EQ(axis, (Vec3{1, 0, 0}));
}

TEST_F(RandomMath, SlerpTurnsAtAnEvenRate) {
    const Vec3 z{0, 0, 1};
    Quat out;
    expectNear(quatSlerp(out, {}, quatFromAxisAngle(2, z), 0.25f, true), quatFromAxisAngle(0.5f, z));
    // The long way round and the short one.
    const Quat far = quatFromAxisAngle(2 * pi - 1, z);
    expectNear(quatSlerp(out, {}, far, 0.5f, false), quatFromAxisAngle(pi - 0.5f, z));
    expectNear(quatSlerp(out, {}, far, 0.5f, true), quatFromAxisAngle(-0.5f, z));
    for (int i = 0; i < 50; ++i) {
        const Quat a = rotation(), b = rotation(), minus{-a.w, -a.x, -a.y, -a.z};
        expectNear(quatSlerp(out, a, b, 0, false), a);
        expectNear(quatSlerp(out, a, b, 1, false), b);
        expectNear(quatSlerp(out, a, a, 0.3f, true), a);
        expectNear(quatSlerp(out, a, minus, 0.3f, true), a);
    }
    // Half way between opposite ends there is no rotation, but no NaN either.
    quatSlerp(out, {}, {-1, 0, 0, 0}, 0.5f, false);
    EXPECT_FALSE(std::isnan(out.w));
}

} // namespace
