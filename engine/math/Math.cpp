#include "math/Math.h"

#include <cmath>

namespace Zelkor {

float absolute(float x) { return static_cast<float>(std::fabs(static_cast<double>(x))); }
float squareRoot(float x) { return static_cast<float>(std::sqrt(static_cast<double>(x))); }
float sine(float x) { return static_cast<float>(std::sin(static_cast<double>(x))); }
float cosine(float x) { return static_cast<float>(std::cos(static_cast<double>(x))); }
float arcCosine(float x) { return static_cast<float>(std::acos(static_cast<double>(x))); }

float length(const Vec3& v) { return squareRoot(dot(v, v)); }
float distance(const Vec3& a, const Vec3& b) { return length(a - b); }

float clamp(float value, float lo, float hi) {
    if (hi < value) return hi;
    if (lo > value) return lo;
    return value;
}

Vec3 clampVec3(const Vec3& value, const Vec3& lo, const Vec3& hi) {
    return {clamp(value.x, lo.x, hi.x), clamp(value.y, lo.y, hi.y), clamp(value.z, lo.z, hi.z)};
}

float moveTowards(float value, float target, float step) {
    if (value < target) return value + step < target ? value + step : target;
    return value - step > target ? value - step : target;
}

float normalize(Vec3& v) {
    const float len = length(v);
    if (len > 1e-8f) v = v * (1.0f / len);
    return len;
}

Mat3& mat3Multiply(Mat3& out, const Mat3& a, const Mat3& b) {
    Mat3 r;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            r.m[3 * i + j] =
                a.m[3 * i] * b.m[j] + a.m[3 * i + 1] * b.m[3 + j] + a.m[3 * i + 2] * b.m[6 + j];
    return out = r;
}

Vec3& mat3Transform(Vec3& out, const Mat3& m, const Vec3& v) {
    return out = {m.m[0] * v.x + m.m[1] * v.y + m.m[2] * v.z, m.m[3] * v.x + m.m[4] * v.y + m.m[5] * v.z,
                  m.m[6] * v.x + m.m[7] * v.y + m.m[8] * v.z};
}

Mat4& mat4Inverse(Mat4& out, const Mat4& a) {
    const float* m = a.m;
    // The 2 x 2 minors of the upper and the lower two rows (Laplace expansion by complementary minors).
    const float s0 = m[0] * m[5] - m[1] * m[4], s1 = m[0] * m[6] - m[2] * m[4];
    const float s2 = m[0] * m[7] - m[3] * m[4], s3 = m[1] * m[6] - m[2] * m[5];
    const float s4 = m[1] * m[7] - m[3] * m[5], s5 = m[2] * m[7] - m[3] * m[6];
    const float c0 = m[8] * m[13] - m[9] * m[12], c1 = m[8] * m[14] - m[10] * m[12];
    const float c2 = m[8] * m[15] - m[11] * m[12], c3 = m[9] * m[14] - m[10] * m[13];
    const float c4 = m[9] * m[15] - m[11] * m[13], c5 = m[10] * m[15] - m[11] * m[14];
    Mat4 adjugate;
    float* r = adjugate.m;
    r[0] = m[5] * c5 - m[6] * c4 + m[7] * c3;
    r[1] = -m[1] * c5 + m[2] * c4 - m[3] * c3;
    r[2] = m[13] * s5 - m[14] * s4 + m[15] * s3;
    r[3] = -m[9] * s5 + m[10] * s4 - m[11] * s3;
    r[4] = -m[4] * c5 + m[6] * c2 - m[7] * c1;
    r[5] = m[0] * c5 - m[2] * c2 + m[3] * c1;
    r[6] = -m[12] * s5 + m[14] * s2 - m[15] * s1;
    r[7] = m[8] * s5 - m[10] * s2 + m[11] * s1;
    r[8] = m[4] * c4 - m[5] * c2 + m[7] * c0;
    r[9] = -m[0] * c4 + m[1] * c2 - m[3] * c0;
    r[10] = m[12] * s4 - m[13] * s2 + m[15] * s0;
    r[11] = -m[8] * s4 + m[9] * s2 - m[11] * s0;
    r[12] = -m[4] * c3 + m[5] * c1 - m[6] * c0;
    r[13] = m[0] * c3 - m[1] * c1 + m[2] * c0;
    r[14] = -m[12] * s3 + m[13] * s1 - m[14] * s0;
    r[15] = m[8] * s3 - m[9] * s1 + m[10] * s0;
    const float determinant = m[0] * r[0] + m[1] * r[4] + m[2] * r[8] + m[3] * r[12];
    return mat4Scale(out, adjugate, 1.0f / determinant);
}

Mat4& mat4Multiply(Mat4& out, const Mat4& a, const Mat4& b) {
    Mat4 r;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            r.m[4 * i + j] = a.m[4 * i] * b.m[j] + a.m[4 * i + 1] * b.m[4 + j] +
                             a.m[4 * i + 2] * b.m[8 + j] + a.m[4 * i + 3] * b.m[12 + j];
    return out = r;
}

Mat4& mat4Add(Mat4& out, const Mat4& a, const Mat4& b) {
    for (int i = 0; i < 16; ++i) out.m[i] = a.m[i] + b.m[i];
    return out;
}

Mat4& mat4Scale(Mat4& out, const Mat4& m, float s) {
    for (int i = 0; i < 16; ++i) out.m[i] = m.m[i] * s;
    return out;
}

Mat4& mat4FromTransform(Mat4& out, const Quat& rotation, const Vec3& scale, const Vec3& translation) {
    Mat3 r;
    quatToMat3(r, rotation);
    const float s[3] = {scale.x, scale.y, scale.z};
    const float t[3] = {translation.x, translation.y, translation.z};
    for (int row = 0; row < 3; ++row) {
        for (int col = 0; col < 3; ++col) out.m[4 * row + col] = r.m[3 * row + col] * s[col];
        out.m[4 * row + 3] = t[row];
    }
    out.m[12] = out.m[13] = out.m[14] = 0;
    out.m[15] = 1;
    return out;
}

Mat4& mat4InverseTransform(Mat4& out, const Vec3& scale, const Vec3& translation, const Quat& rotation) {
    Quat inverse;
    quatInverse(inverse, rotation);
    Mat3 r;
    quatToMat3(r, inverse);
    Vec3 t;
    quatRotate(t, inverse, {-translation.x / scale.x, -translation.y / scale.y, -translation.z / scale.z});
    const float s[3] = {scale.x, scale.y, scale.z};
    const float moved[3] = {t.x, t.y, t.z};
    for (int row = 0; row < 3; ++row) {
        for (int col = 0; col < 3; ++col) out.m[4 * row + col] = r.m[3 * row + col] / s[row];
        out.m[4 * row + 3] = moved[row];
    }
    out.m[12] = out.m[13] = out.m[14] = 0;
    out.m[15] = 1;
    return out;
}

Vec3 mat4TransformPoint(const Mat4& m, const Vec3& v) {
    return mat4TransformDirection(m, v) + Vec3{m.m[3], m.m[7], m.m[11]};
}

Vec3 mat4TransformDirection(const Mat4& a, const Vec3& v) {
    const float* m = a.m;
    return {m[0] * v.x + m[1] * v.y + m[2] * v.z, m[4] * v.x + m[5] * v.y + m[6] * v.z,
            m[8] * v.x + m[9] * v.y + m[10] * v.z};
}

Mat3& quatToMat3(Mat3& out, const Quat& q) {
    const float w = q.w, x = q.x, y = q.y, z = q.z;
    out = {{1 - 2 * (y * y + z * z), 2 * (x * y - w * z), 2 * (x * z + w * y), 2 * (x * y + w * z),
            1 - 2 * (x * x + z * z), 2 * (y * z - w * x), 2 * (x * z - w * y), 2 * (y * z + w * x),
            1 - 2 * (x * x + y * y)}};
    return out;
}

Vec3& quatAxisX(Vec3& out, const Quat& q) {
    Mat3 r;
    quatToMat3(r, q);
    return out = {r.m[0], r.m[3], r.m[6]};
}

Vec3& quatAxisY(Vec3& out, const Quat& q) {
    Mat3 r;
    quatToMat3(r, q);
    return out = {r.m[1], r.m[4], r.m[7]};
}

Vec3& quatAxisZ(Vec3& out, const Quat& q) {
    Mat3 r;
    quatToMat3(r, q);
    return out = {r.m[2], r.m[5], r.m[8]};
}

Quat& quatFromMat3(Quat& out, const Mat3& matrix) {
    const float* m = matrix.m;
    const float trace = m[0] + m[4] + m[8];
    if (trace > 0) {
        const float r = squareRoot(trace + 1);
        const float s = 0.5f / r;
        return out = {r / 2, (m[7] - m[5]) * s, (m[2] - m[6]) * s, (m[3] - m[1]) * s};
    }
    const auto at = [m](int row, int col) { return m[3 * row + col]; };
    int i = 0;
    if (at(0, 0) < at(1, 1)) i = 1;
    if (at(i, i) < at(2, 2)) i = 2;
    const int next[3] = {1, 2, 0};
    const int j = next[i], k = next[j];
    const float r = squareRoot(at(i, i) - at(j, j) - at(k, k) + 1);
    const float s = 0.5f / r;
    float v[3];
    v[i] = r / 2;
    v[j] = (at(i, j) + at(j, i)) * s;
    v[k] = (at(i, k) + at(k, i)) * s;
    return out = {(at(k, j) - at(j, k)) * s, v[0], v[1], v[2]};
}

void quatToAxisAngle(const Quat& q, float& angleOut, Vec3& axisOut) {
    const float squared = q.x * q.x + q.y * q.y + q.z * q.z;
    if (!(squared > 0)) {
        angleOut = 0;
        axisOut = {1, 0, 0};
        return;
    }
    angleOut = 2 * arcCosine(clamp(q.w, -1, 1));
    axisOut = Vec3{q.x, q.y, q.z} * (1 / squareRoot(squared));
}

Quat quatFromAxisAngle(float angle, const Vec3& axis) {
    const float s = sine(angle / 2);
    return {cosine(angle / 2), axis.x * s, axis.y * s, axis.z * s};
}

Quat& quatMultiply(Quat& out, const Quat& a, const Quat& b) {
    return out = {a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z, a.w * b.x + a.x * b.w + a.y * b.z - a.z * b.y,
                  a.w * b.y + a.y * b.w + a.z * b.x - a.x * b.z, a.w * b.z + a.z * b.w + a.x * b.y - a.y * b.x};
}

Quat& quatInverse(Quat& out, const Quat& q) {
    const float n = q.w * q.w + q.x * q.x + q.y * q.y + q.z * q.z;
    if (!(n > 0)) return out = {0, 0, 0, 0};
    return out = {q.w / n, -q.x / n, -q.y / n, -q.z / n};
}

Vec3& quatRotate(Vec3& out, const Quat& q, const Vec3& v) {
    const Vec3 u{q.x, q.y, q.z};
    const Vec3 k = cross(u, v);
    return out = v + k * (2 * q.w) + cross(u, k) * 2;
}

float quatNormalize(Quat& q) {
    const float squared = q.w * q.w + q.x * q.x + q.y * q.y + q.z * q.z;
    const float len = squareRoot(squared);
    // The middle of two opposite rotations is zero: left so, it cannot spread as NaN.
    if (len > 0) q = {q.w / len, q.x / len, q.y / len, q.z / len};
    return squared;
}

Quat& quatSlerp(Quat& out, const Quat& a, const Quat& b, float t, bool shortestPath) {
    float d = a.w * b.w + a.x * b.x + a.y * b.y + a.z * b.z;
    float sign = 1;
    if (d < 0 && shortestPath) {
        d = -d;
        sign = -1;
    }
    const auto blend = [&](float u, float v) {
        v *= sign;
        return Quat{u * a.w + v * b.w, u * a.x + v * b.x, u * a.y + v * b.y, u * a.z + v * b.z};
    };
    if (static_cast<double>(absolute(d)) >= static_cast<double>(0.999f)) {
        out = blend(1 - t, t);
        quatNormalize(out);
        return out;
    }
    const float s = squareRoot(1 - d * d);
    const float theta = static_cast<float>(std::atan2(static_cast<double>(s), static_cast<double>(d)));
    return out = blend(sine((1 - t) * theta) / s, sine(t * theta) / s);
}

} // namespace Zelkor
