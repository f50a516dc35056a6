// What every target in this folder is made of: one function that reads whatever it is given. A finding is a
// crash, a sanitizer's report, or a fuzzCheck that does not hold.
#pragma once

#include "io/TokenReader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size);

// Unlike an assert, checked in every build.
inline void fuzzCheck(bool holds) {
    if (!holds) std::abort();
}

inline Zelkor::TokenReader tokensOf(const uint8_t* data, std::size_t size) {
    return Zelkor::TokenReader(std::vector<char>(data, data + size));
}
