// The only chance in the kit: pure functions of their arguments, the same on every machine.
#pragma once

#include "math/Math.h"

#include <cstdint>

namespace forge {

std::uint32_t hashBits(int a, int b, int c);

// In 0..1, 1 excluded.
float hashUnit(int a, int b, int c);

// Smooth noise of about unit wavelength, in -1..1.
float valueNoise(const Zelkor::Vec3& p, int seed);
Zelkor::Vec3 vectorNoise(const Zelkor::Vec3& p, int seed);

// A plain sequence, for generators that draw many numbers in a row.
class Random {
  public:
    explicit Random(int seed) : state(hashBits(seed, 11, 23) | 1u) {}
    float unit(); // 0..1
    float range(float lo, float hi) { return lo + (hi - lo) * unit(); }
    int below(int n) { return static_cast<int>(unit() * static_cast<float>(n)); }

  private:
    std::uint32_t state;
};

} // namespace forge
