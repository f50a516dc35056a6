#include "texture/Plate.h"

#include <numeric>

namespace forge {

Image Plate::grey() const {
    Image image(size, size, 1);
    for (std::size_t i = 0; i < texels.size(); ++i)
        image.pixels[i] = static_cast<std::uint8_t>(std::lround(std::clamp(texels[i], 0.0f, 1.0f) * 255));
    return image;
}

void equaliseByRank(Plate& plate, const Plate& tieBreak) {
    std::vector<float>& texels = plate.all();
    std::vector<std::uint32_t> order(texels.size());
    std::iota(order.begin(), order.end(), 0u);
    std::sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
        if (texels[a] != texels[b]) return texels[a] < texels[b];
        const float ta = tieBreak.all()[a], tb = tieBreak.all()[b];
        return ta != tb ? ta < tb : a < b;
    });
    const float scale = 1.0f / static_cast<float>(order.size());
    for (std::size_t rank = 0; rank < order.size(); ++rank)
        texels[order[rank]] = (static_cast<float>(rank) + 0.5f) * scale;
}

void soften(Plate& plate, float amount) {
    const Plate before = plate;
    for (int y = 0; y < plate.side(); ++y)
        for (int x = 0; x < plate.side(); ++x) {
            float near = 0;
            for (int dy = -1; dy <= 1; ++dy)
                for (int dx = -1; dx <= 1; ++dx)
                    near += before.at(x + dx, y + dy) * (dx == 0 ? 0.5f : 0.25f) * (dy == 0 ? 0.5f : 0.25f);
            plate.at(x, y) += (near - before.at(x, y)) * amount;
        }
}

Plate wrappedNoise(int side, int cells, int octaves, int seed) {
    Plate plate(side);
    float amplitude = 0.6f;
    for (int octave = 0; octave < octaves; ++octave, cells *= 2, amplitude *= 0.55f) {
        const auto corner = [&](int i, int j) {
            return 2 * hashUnit(i % cells, j % cells, seed + octave) - 1;
        };
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x) {
                const float px = static_cast<float>(x * cells) / static_cast<float>(side);
                const float py = static_cast<float>(y * cells) / static_cast<float>(side);
                const int i = static_cast<int>(px), j = static_cast<int>(py);
                const auto ease = [](float t) { return t * t * (3 - 2 * t); };
                const float u = ease(px - static_cast<float>(i)), v = ease(py - static_cast<float>(j));
                const float top = corner(i, j) + (corner(i + 1, j) - corner(i, j)) * u;
                const float low = corner(i, j + 1) + (corner(i + 1, j + 1) - corner(i, j + 1)) * u;
                plate.at(x, y) += amplitude * (top + (low - top) * v);
            }
    }
    return plate;
}

} // namespace forge
