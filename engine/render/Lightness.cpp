#include "render/Lightness.h"

#include <algorithm>
#include <cmath>

namespace Zelkor {

namespace {

constexpr float red = 0.2126f / 255, green = 0.7152f / 255, blue = 0.0722f / 255;

template <class Visit>
void forEachPixel(const Lightness::Box& box, Visit visit) {
    for (int y = box.y; y < box.y + box.height; ++y)
        for (int x = box.x; x < box.x + box.width; ++x)
            visit(x, y);
}

} // namespace

Lightness::Lightness(const Image& image) : width(image.width), height(image.height) {
    values.reserve(image.pixels.size() / 3);
    for (std::size_t i = 0; i + 2 < image.pixels.size(); i += 3)
        values.push_back(red * image.pixels[i] + green * image.pixels[i + 1] + blue * image.pixels[i + 2]);
}

float Lightness::mean(const Box& box) const {
    double sum = 0;
    forEachPixel(box, [&](int x, int y) { sum += at(x, y); });
    return static_cast<float>(sum / (static_cast<double>(box.width) * box.height));
}

float Lightness::steepShare(float step) const {
    int steep = 0;
    forEachPixel({1, 0, width - 1, height},
                 [&](int x, int y) { steep += std::fabs(at(x, y) - at(x - 1, y)) > step; });
    return static_cast<float>(steep) / static_cast<float>(std::max<std::size_t>(values.size(), 1));
}

Lightness::Box Lightness::boundsBelow(float limit) const {
    int left = width, top = height, right = 0, bottom = 0;
    forEachPixel(whole(), [&](int x, int y) {
        if (!(at(x, y) < limit)) return;
        left = std::min(left, x);
        top = std::min(top, y);
        right = std::max(right, x + 1);
        bottom = std::max(bottom, y + 1);
    });
    return right > left ? Box{left, top, right - left, bottom - top} : Box{};
}

float largestBlockChange(const Lightness& a, const Lightness& b, int along) {
    const int wide = a.width / along, high = a.height / along;
    float largest = 0;
    if (wide == 0 || high == 0) return largest;
    forEachPixel({0, 0, along, along}, [&](int x, int y) {
        const Lightness::Box block{x * wide, y * high, wide, high};
        largest = std::max(largest, std::fabs(a.mean(block) - b.mean(block)));
    });
    return largest;
}

float meanSquareChange(const Lightness& a, const Lightness& b) {
    double sum = 0;
    forEachPixel(a.whole(), [&](int x, int y) {
        const double change = a.at(x, y) - b.at(x, y);
        sum += change * change;
    });
    return static_cast<float>(sum / static_cast<double>(std::max<std::size_t>(a.values.size(), 1)));
}

float correlation(const Lightness& a, const Lightness& b, const Lightness::Box& box, int shift) {
    const float meanA = a.mean(box), meanB = b.mean({box.x + shift, box.y, box.width, box.height});
    double both = 0, onlyA = 0, onlyB = 0;
    forEachPixel(box, [&](int x, int y) {
        const double p = a.at(x, y) - meanA, q = b.at(x + shift, y) - meanB;
        both += p * q;
        onlyA += p * p;
        onlyB += q * q;
    });
    return onlyA > 0 && onlyB > 0 ? static_cast<float>(both / std::sqrt(onlyA * onlyB)) : 0;
}

} // namespace Zelkor
