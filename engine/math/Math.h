// Vectors, matrices and quaternions. Single precision, angles in radians. Operations take their operands by
// reference, write into a caller-supplied object and return it; none allocates. Outputs may be operands.
#pragma once

namespace Zelkor {

inline constexpr float pi = 3.14159265f;

struct Vec2 {
    float x = 0, y = 0;
};

struct Vec3 {
    float x = 0, y = 0, z = 0;
    bool operator==(const Vec3&) const = default;
};

struct Vec4 {
    float x = 0, y = 0, z = 0, w = 0;
    bool operator==(const Vec4&) const = default;
};

// Scalar part first; a unit quaternion is a rotation.
struct Quat {
    float w = 1, x = 0, y = 0, z = 0;
    bool operator==(const Quat&) const = default;
};

// Row-major: element (row r, column c) is m[3r + c].
struct Mat3 {
    float m[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
};

// Row-major with column vectors (v' = M v): a transform keeps its translation in m[3], m[7], m[11].
struct Mat4 {
    float m[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
};

inline Vec3 operator+(const Vec3& a, const Vec3& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Vec3 operator-(const Vec3& a, const Vec3& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Vec3 operator-(const Vec3& a) { return {-a.x, -a.y, -a.z}; }
inline Vec3 operator*(const Vec3& a, float s) { return {a.x * s, a.y * s, a.z * s}; }
inline Vec3 operator*(float s, const Vec3& a) { return a * s; }
inline Vec3& operator+=(Vec3& a, const Vec3& b) { return a = a + b; }
inline Vec3& operator-=(Vec3& a, const Vec3& b) { return a = a - b; }
inline float dot(const Vec3& a, const Vec3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline Vec3 cross(const Vec3& a, const Vec3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
// Component by component.
inline Vec3 scaled(const Vec3& a, const Vec3& b) { return {a.x * b.x, a.y * b.y, a.z * b.z}; }

// Single-precision results of the runtime's double-precision functions.
float absolute(float x);
float squareRoot(float x);
float sine(float x);
float cosine(float x);
float arcCosine(float x);

float length(const Vec3& v);
float distance(const Vec3& a, const Vec3& b);

// hi if hi < value, else lo if lo > value, else value: the upper bound wins when lo > hi, and a NaN is
// returned unchanged.
float clamp(float value, float lo, float hi);
Vec3 clampVec3(const Vec3& value, const Vec3& lo, const Vec3& hi);

// Moves value towards target by at most step (>= 0), without overshooting.
float moveTowards(float value, float target, float step);

// Returns the length before; a vector no longer than 1e-8 is left as it was.
float normalize(Vec3& v);

Mat3& mat3Multiply(Mat3& out, const Mat3& a, const Mat3& b);
Vec3& mat3Transform(Vec3& out, const Mat3& m, const Vec3& v);

// General inverse by cofactors; m must not be singular.
Mat4& mat4Inverse(Mat4& out, const Mat4& m);
Mat4& mat4Multiply(Mat4& out, const Mat4& a, const Mat4& b);
Mat4& mat4Add(Mat4& out, const Mat4& a, const Mat4& b);
Mat4& mat4Scale(Mat4& out, const Mat4& m, float s);
// T R S: scales, then rotates, then translates.
Mat4& mat4FromTransform(Mat4& out, const Quat& rotation, const Vec3& scale, const Vec3& translation);
// For a uniform scale, exactly the inverse of mat4FromTransform.
Mat4& mat4InverseTransform(Mat4& out, const Vec3& scale, const Vec3& translation, const Quat& rotation);
// The point m v (with translation) and the direction m v (upper-left 3 x 3 only).
Vec3 mat4TransformPoint(const Mat4& m, const Vec3& v);
Vec3 mat4TransformDirection(const Mat4& m, const Vec3& v);

Mat3& quatToMat3(Mat3& out, const Quat& q);
Vec3& quatAxisX(Vec3& out, const Quat& q);
Vec3& quatAxisY(Vec3& out, const Quat& q);
Vec3& quatAxisZ(Vec3& out, const Quat& q);
// Shoemake's method: K. Shoemake, "Quaternion Calculus and Fast Animation", 1987.
Quat& quatFromMat3(Quat& out, const Mat3& m);
// angle in radians, 0 about (1, 0, 0) when the vector part is zero.
void quatToAxisAngle(const Quat& q, float& angleOut, Vec3& axisOut);
Quat quatFromAxisAngle(float angle, const Vec3& unitAxis);
// The Hamilton product: rotates by b first, then by a.
Quat& quatMultiply(Quat& out, const Quat& a, const Quat& b);
// The zero quaternion for a zero quaternion.
Quat& quatInverse(Quat& out, const Quat& q);
Vec3& quatRotate(Vec3& out, const Quat& q, const Vec3& v);
// Returns the squared length before; a zero quaternion is left as it was.
float quatNormalize(Quat& q);
Quat& quatSlerp(Quat& out, const Quat& a, const Quat& b, float t, bool shortestPath);

} // namespace Zelkor
