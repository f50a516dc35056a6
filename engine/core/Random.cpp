#include "core/Random.h"

namespace Zelkor {

namespace {
std::uint64_t state = 0;
}

void seedRandom(std::uint32_t seed) {
    state = seed;
}

// A linear congruential generator with Knuth's MMIX constants (The Art of Computer Programming, 3.3.4). Its
// low bits repeat early, so the highest 15 of 64 are drawn.
int randomInt() {
    state = state * 6364136223846793005u + 1442695040888963407u;
    return static_cast<int>(state >> 49);
}

float randomFraction() {
    return static_cast<float>(randomInt() & 2047) / 2047;
}

float randomUniform() {
    return static_cast<float>(randomInt()) / (randomMax + 1);
}

} // namespace Zelkor
