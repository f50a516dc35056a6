#include "mesh/Warp.h"

#include "mesh/Angles.h"
#include "mesh/Noise.h"

#include <algorithm>
#include <cmath>

namespace forge {

using Zelkor::Vec3;

namespace {

float& component(Vec3& v, Axis axis) {
    return axis == Axis::X ? v.x : axis == Axis::Y ? v.y : v.z;
}

class Move : public Warp {
  public:
    explicit Move(const Vec3& by) : offset(by) {}
    Vec3 forward(const Vec3& p) const override { return p + offset; }
    Vec3 inverse(const Vec3& p) const override { return p - offset; }

  private:
    Vec3 offset;
};

class Turn : public Warp {
  public:
    explicit Turn(const Zelkor::Quat& q) : rotation(q) { Zelkor::quatInverse(back, q); }
    Vec3 forward(const Vec3& p) const override {
        Vec3 out;
        return Zelkor::quatRotate(out, rotation, p);
    }
    Vec3 inverse(const Vec3& p) const override {
        Vec3 out;
        return Zelkor::quatRotate(out, back, p);
    }

  private:
    Zelkor::Quat rotation, back;
};

class Scale : public Warp {
  public:
    explicit Scale(const Vec3& f) : factors(f) {}
    Vec3 forward(const Vec3& p) const override { return Zelkor::scaled(p, factors); }
    Vec3 inverse(const Vec3& p) const override { return {p.x / factors.x, p.y / factors.y, p.z / factors.z}; }
    float shrink() const override {
        return std::min({std::fabs(factors.x), std::fabs(factors.y), std::fabs(factors.z)});
    }
    bool mirrors() const override { return factors.x * factors.y * factors.z < 0; }

  private:
    Vec3 factors;
};

class Bend : public Warp {
  public:
    Bend(Axis a, Axis t, float degrees, float length)
        : along(a), towards(t), curvature(radians(degrees) / length) {}
    Vec3 forward(const Vec3& p) const override {
        Vec3 out = p;
        const float angle = component(out, along) * curvature;
        const float radius = 1 / curvature - component(out, towards);
        component(out, towards) = 1 / curvature - radius * std::cos(angle);
        component(out, along) = radius * std::sin(angle);
        return out;
    }
    Vec3 inverse(const Vec3& p) const override {
        Vec3 out = p;
        // The centre of the bend lies on the far side for a negative curvature.
        const float side = curvature < 0 ? -1.0f : 1.0f;
        const float u = side * (1 / curvature - component(out, towards)), v = side * component(out, along);
        component(out, towards) = 1 / curvature - side * std::hypot(u, v);
        component(out, along) = std::atan2(v, u) / curvature;
        return out;
    }
    float shrink() const override { return 0.6f; }
    bool curves() const override { return true; }

  private:
    Axis along, towards;
    float curvature;
};

class Twist : public Warp {
  public:
    Twist(Axis a, float degrees, float length) : along(a), rate(radians(degrees) / length) {}
    Vec3 forward(const Vec3& p) const override { return turned(p, 1); }
    Vec3 inverse(const Vec3& p) const override { return turned(p, -1); }
    float shrink() const override { return 0.6f; }
    bool curves() const override { return true; }

  private:
    Vec3 turned(const Vec3& p, float sign) const {
        Vec3 out = p;
        const float angle = sign * rate * component(out, along);
        const float c = std::cos(angle), s = std::sin(angle);
        float& u = component(out, along == Axis::X ? Axis::Y : Axis::X);
        float& v = component(out, along == Axis::Z ? Axis::Y : Axis::Z);
        const float turnedU = c * u - s * v;
        v = s * u + c * v;
        u = turnedU;
        return out;
    }

    Axis along;
    float rate;
};

class Taper : public Warp {
  public:
    Taper(Axis a, float factor, float length)
        : along(a), slope((factor - 1) / length), narrow(std::min(factor, 1.0f)) {}
    Vec3 forward(const Vec3& p) const override { return spread(p, factorAt(p)); }
    Vec3 inverse(const Vec3& p) const override { return spread(p, 1 / factorAt(p)); }
    float shrink() const override { return 0.8f * narrow; }
    bool curves() const override { return true; }

  private:
    float factorAt(Vec3 p) const { return std::max(0.02f, 1 + slope * component(p, along)); }
    Vec3 spread(Vec3 p, float factor) const {
        const float kept = component(p, along);
        p = p * factor;
        component(p, along) = kept;
        return p;
    }

    Axis along;
    float slope, narrow;
};

class Wobble : public Warp {
  public:
    Wobble(float a, float size, int s) : amount(a), frequency(1 / size), seed(s) {}
    Vec3 forward(const Vec3& p) const override { return p + amount * vectorNoise(p * frequency, seed); }
    // Two steps of fixed-point iteration: exact enough for wobbles smaller than their size.
    Vec3 inverse(const Vec3& p) const override {
        Vec3 q = p - amount * vectorNoise(p * frequency, seed);
        return p - amount * vectorNoise(q * frequency, seed);
    }
    float shrink() const override { return 0.6f; }
    bool curves() const override { return true; }

  private:
    float amount, frequency;
    int seed;
};

} // namespace

Vec3 forward(const WarpChain& chain, Vec3 p) {
    for (auto warp = chain.rbegin(); warp != chain.rend(); ++warp)
        p = (*warp)->forward(p);
    return p;
}

Vec3 inverse(const WarpChain& chain, Vec3 p) {
    for (const WarpPointer& warp : chain)
        p = warp->inverse(p);
    return p;
}

float shrink(const WarpChain& chain) {
    float factor = 1;
    for (const WarpPointer& warp : chain)
        factor *= warp->shrink();
    return factor;
}

bool mirrors(const WarpChain& chain) {
    bool odd = false;
    for (const WarpPointer& warp : chain)
        odd ^= warp->mirrors();
    return odd;
}

bool curves(const WarpChain& chain) {
    return std::any_of(chain.begin(), chain.end(), [](const WarpPointer& warp) { return warp->curves(); });
}

WarpPointer moveWarp(const Vec3& offset) {
    return std::make_shared<Move>(offset);
}
WarpPointer turnWarp(const Vec3& degrees) {
    return std::make_shared<Turn>(quatFromDegrees(degrees));
}
WarpPointer scaleWarp(const Vec3& factors) {
    return std::make_shared<Scale>(factors);
}
WarpPointer mirrorWarp(Axis axis) {
    Vec3 factors{1, 1, 1};
    component(factors, axis) = -1;
    return std::make_shared<Scale>(factors);
}
WarpPointer bendWarp(Axis along, Axis towards, float degrees, float length) {
    return std::make_shared<Bend>(along, towards, degrees, length);
}
WarpPointer twistWarp(Axis along, float degrees, float length) {
    return std::make_shared<Twist>(along, degrees, length);
}
WarpPointer taperWarp(Axis along, float factor, float length) {
    return std::make_shared<Taper>(along, factor, length);
}
WarpPointer wobbleWarp(float amount, float size, int seed) {
    return std::make_shared<Wobble>(amount, size, seed);
}

} // namespace forge
