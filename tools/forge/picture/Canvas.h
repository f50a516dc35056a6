// A colour picture in memory, its PNG, and little letters to label it with.
#pragma once

#include "math/Math.h"

#include <cstdint>
#include <string>
#include <vector>

namespace forge {

struct Canvas {
    int width = 0, height = 0;
    std::vector<std::uint8_t> rgb;

    Canvas() = default;
    Canvas(int w, int h, std::uint8_t shade = 255)
        : width(w), height(h), rgb(static_cast<std::size_t>(w) * static_cast<std::size_t>(h) * 3, shade) {}

    void set(int x, int y, const Zelkor::Vec3& colour); // 0..1; outside is ignored
    void paste(const Canvas& other, int left, int top);
    // Upper-case letters, digits and a few signs, 3 x 5 points scaled by 2; others show as blanks.
    void label(int left, int top, const std::string& text);
};

// Throws std::runtime_error when it cannot be written.
void writePng(const std::string& path, const Canvas& canvas);

} // namespace forge
