#include "texture/Surfaces.h"

namespace forge {

Plate paperGrain(int size, int seed) {
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
    for (std::size_t i = 0; i < plate.all().size(); ++i)
        plate.all()[i] = 0.35f * clouds.all()[i] + tooth.all()[i] + std::clamp(fibres.all()[i], -0.5f, 0.5f);
    equaliseByRank(plate, tooth);
    return plate;
}

} // namespace forge
