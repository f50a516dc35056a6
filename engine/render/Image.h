// A picture in memory.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

namespace Zelkor {

struct Image {
    int width = 0, height = 0;   // pixels
    int components = 0;          // bytes of a pixel: 1 luminance, 3 red green blue, 4 with alpha
    std::vector<uint8_t> pixels; // rows from the top, no padding

    // False when the picture is empty or the file cannot be written whole; then nothing is left of it.
    bool writePng(const std::filesystem::path& file) const;
};

} // namespace Zelkor
