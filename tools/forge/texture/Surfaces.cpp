#include "texture/Surfaces.h"

namespace forge {

Plate paperGrain(int size, float spread, int seed) {
    Plate plate(size);
    const Plate clouds = wrappedNoise(size, 8, 3, seed), tooth = wrappedNoise(size, size / 4, 2, seed + 1);
    // Fibres: short faint strokes every way.
    Plate fibres(size);
    Random random(seed + 2);
    for (int i = 0; i < size * size / 160; ++i) {
        Stroke stroke;
        stroke.start = {random.unit() * static_cast<float>(size), random.unit() * static_cast<float>(size)};
        stroke.angle = random.range(0, 2 * Zelkor::pi);
        stroke.length = random.range(6, 22);
        stroke.bend = random.range(-1.2f, 1.2f);
        stroke.halfWidth = 0.6f;
        const float depth = random.range(-0.35f, 0.35f);
        walkStroke(stroke, [&](int x, int y, float pressure) { fibres.at(x, y) += depth * pressure * 0.3f; });
    }
    double sum = 0, squares = 0;
    for (std::size_t i = 0; i < plate.all().size(); ++i) {
        const float v = 0.35f * clouds.all()[i] + tooth.all()[i] + std::clamp(fibres.all()[i], -0.5f, 0.5f);
        plate.all()[i] = v;
        sum += static_cast<double>(v);
        squares += static_cast<double>(v) * static_cast<double>(v);
    }
    const double n = static_cast<double>(plate.all().size()), mean = sum / n;
    const double deviation = std::sqrt(std::max(squares / n - mean * mean, 1e-12));
    for (float& v : plate.all())
        v = std::clamp(0.5f + spread * static_cast<float>((static_cast<double>(v) - mean) / deviation), 0.0f,
                       1.0f);
    return plate;
}

} // namespace forge
