// The one source of random numbers. The same seed gives the same sequence on every machine.
#pragma once

#include <cstdint>

namespace Zelkor {

inline constexpr int randomMax = 0x7FFF;

void seedRandom(std::uint32_t seed);
// 0..randomMax. A choice among n is randomInt() % n.
int randomInt();
// 0..1 in steps of 1/2047, both ends included.
float randomFraction();
// 0 up to but not including 1, uniform over 32768 steps.
float randomUniform();

} // namespace Zelkor
