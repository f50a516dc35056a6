// How light a picture is, pixel by pixel, and measures of it: for judging redraws, strokes and edges by
// numbers.
#pragma once

#include "render/Image.h"

#include <vector>

namespace Zelkor {

struct Lightness {
    // Pixels, from the upper left.
    struct Box {
        int x = 0, y = 0, width = 0, height = 0;
    };

    Lightness() = default;
    explicit Lightness(const Image& image); // of red, green and blue

    float at(int x, int y) const {
        return values[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
    Box whole() const { return {0, 0, width, height}; }
    // Of the pixels of a box that lies inside and is not empty.
    float mean(const Box& box) const;
    // Share of the pixels whose left neighbour differs by more than step: hard edges and ragged ones.
    float steepShare(float step) const;
    // The smallest box around every pixel below limit; empty when there is none.
    Box boundsBelow(float limit) const;

    int width = 0, height = 0;
    std::vector<float> values; // 0 black .. 1 white, rows from the top
};

// The largest difference between means of the same block, of so many along each side. Both of one size.
float largestBlockChange(const Lightness& a, const Lightness& b, int along);

// The mean of the squared differences. Both of one size.
float meanSquareChange(const Lightness& a, const Lightness& b);

// Correlation, -1..1, of a inside the box with b so many pixels further right. 0 where either is even.
float correlation(const Lightness& a, const Lightness& b, const Lightness::Box& box, int shift);

} // namespace Zelkor
