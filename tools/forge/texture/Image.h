// A picture with one or more 8-bit channels, its rows from the top, and the file the game reads.
#pragma once

#include "write/MeshFile.h"

#include <cstdint>
#include <vector>

namespace forge {

struct Image {
    int width = 0, height = 0;
    int channels = 1; // 1 grey, 3 red green blue, 4 with alpha
    std::vector<std::uint8_t> pixels;

    Image() = default;
    Image(int w, int h, int c)
        : width(w), height(h), channels(c),
          pixels(static_cast<std::size_t>(w) * static_cast<std::size_t>(h) * static_cast<std::size_t>(c)) {}
    std::uint8_t& at(int x, int y, int c = 0) { return pixels[index(x, y, c)]; }
    std::uint8_t at(int x, int y, int c = 0) const { return pixels[index(x, y, c)]; }

  private:
    std::size_t index(int x, int y, int c) const {
        return (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) *
                   static_cast<std::size_t>(channels) +
               static_cast<std::size_t>(c);
    }
};

// An uncompressed Targa, rows from the bottom, blue before red.
Bytes encodeTga(const Image& image);
// Throws std::runtime_error on anything encodeTga does not write.
Image decodeTga(const Bytes& bytes);

} // namespace forge
