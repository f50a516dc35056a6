#include "mesh/Noise.h"

#include <cmath>

namespace forge {

std::uint32_t hashBits(int a, int b, int c) {
    // Odd multipliers and xor-shifts, in the manner of an integer finaliser; no table, no state.
    std::uint32_t h = static_cast<std::uint32_t>(a) * 0x9E3779B1u ^
                      static_cast<std::uint32_t>(b) * 0x85EBCA77u ^
                      static_cast<std::uint32_t>(c) * 0xC2B2AE3Du;
    h ^= h >> 15;
    h *= 0x2C1B3C6Du;
    h ^= h >> 12;
    h *= 0x297A2D39u;
    h ^= h >> 15;
    return h;
}

float hashUnit(int a, int b, int c) {
    return static_cast<float>(hashBits(a, b, c) >> 8) / 16777216.0f;
}

float valueNoise(const Zelkor::Vec3& p, int seed) {
    const float fx = std::floor(p.x), fy = std::floor(p.y), fz = std::floor(p.z);
    const int x = static_cast<int>(fx), y = static_cast<int>(fy), z = static_cast<int>(fz);
    const auto ease = [](float t) { return t * t * (3 - 2 * t); };
    const float u = ease(p.x - fx), v = ease(p.y - fy), w = ease(p.z - fz);
    const auto corner = [&](int i, int j, int k) {
        return hashUnit(x + i, (y + j) * 7919 + z + k, seed) * 2 - 1;
    };
    const auto mix = [](float a, float b, float t) { return a + (b - a) * t; };
    const auto face = [&](int k) {
        return mix(mix(corner(0, 0, k), corner(1, 0, k), u), mix(corner(0, 1, k), corner(1, 1, k), u), v);
    };
    return mix(face(0), face(1), w);
}

Zelkor::Vec3 vectorNoise(const Zelkor::Vec3& p, int seed) {
    return {valueNoise(p, seed), valueNoise(p + Zelkor::Vec3{17.3f, 5.1f, 9.7f}, seed + 1),
            valueNoise(p + Zelkor::Vec3{3.9f, 29.4f, 13.2f}, seed + 2)};
}

float Random::unit() {
    state ^= state << 13;
    state ^= state >> 17;
    state ^= state << 5;
    return static_cast<float>(state >> 8) / 16777216.0f;
}

} // namespace forge
