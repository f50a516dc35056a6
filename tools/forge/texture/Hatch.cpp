#include "texture/Hatch.h"

namespace forge {

using Zelkor::Vec2;

namespace {

float radiansOf(float degrees) {
    return degrees * Zelkor::pi / 180;
}

class Hatcher {
  public:
    explicit Hatcher(const HatchSettings& s) : settings(s), random(s.seed), plate(s.size) {}

    // From the lightest tone down: each tone's strokes fill what the lighter ones left free, until the tone
    // is covered. A texel keeps the first, largest threshold it gets.
    Plate draw() {
        constexpr int levels = 40;
        const float total = static_cast<float>(plate.all().size());
        float covered = 0;
        for (int level = 1; level <= levels; ++level) {
            const float tone = 1 - static_cast<float>(level) / levels;
            int misses = 0;
            while (covered < (1 - tone) * total && misses < 400) {
                const bool crossing = tone < settings.cross && random.unit() < 0.55f;
                const float gain = add(bestCandidate(tone, crossing), tone);
                covered += gain;
                misses = gain < 4 ? misses + 1 : 0;
            }
        }
        return std::move(plate);
    }

  private:
    Stroke candidate(bool crossing) {
        Stroke stroke;
        const auto side = static_cast<float>(settings.size);
        stroke.start = {random.unit() * side, random.unit() * side};
        const float base = settings.angle - (crossing ? settings.crossAngle : 0);
        stroke.angle = radiansOf(base + settings.scatter * random.range(-1, 1));
        stroke.length = random.range(settings.length[0], settings.length[1]) * (crossing ? 0.75f : 1);
        stroke.bend = radiansOf(random.range(-1, 1) * 9);
        stroke.halfWidth = random.range(settings.halfWidth[0], settings.halfWidth[1]);
        stroke.seed = random.below(100000);
        return stroke;
    }

    // The one that falls on the most free paper, beside the strokes there are rather than across them.
    Stroke bestCandidate(float tone, bool crossing) {
        const int tries = 3 + static_cast<int>(5 * tone);
        Stroke best;
        float bestScore = -1e30f;
        for (int i = 0; i < tries; ++i) {
            const Stroke stroke = candidate(crossing);
            const float score = freeness(stroke, crossing);
            if (score > bestScore) {
                bestScore = score;
                best = stroke;
            }
        }
        return best;
    }

    // Samples the middle line and both flanks: ink there is a stroke too close.
    float freeness(const Stroke& stroke, bool crossing) const {
        float score = 0;
        int samples = 0;
        float x = stroke.start.x, y = stroke.start.y;
        constexpr float stride = 6;
        for (float along = 0; along < stroke.length; along += stride, ++samples) {
            const float direction = stroke.angle + stroke.bend * (along / stroke.length - 0.5f);
            const float dx = std::cos(direction), dy = std::sin(direction);
            for (const float flank : {-5.0f, -2.5f, 0.0f, 2.5f, 5.0f}) {
                const float ink = plate.at(static_cast<int>(std::floor(x - dy * flank)),
                                           static_cast<int>(std::floor(y + dx * flank)));
                score -= ink * (flank == 0 ? 2.0f : crossing ? 0.3f : 1.0f);
            }
            x += dx * stride;
            y += dy * stride;
        }
        return score / static_cast<float>(std::max(samples, 1));
    }

    // Threshold of a texel: the stroke's tone, less where the pencil hardly touched, so that darker tones
    // widen and lengthen the strokes of lighter ones before new ones appear.
    float add(const Stroke& stroke, float tone) {
        float gain = 0;
        walkStroke(stroke, [&](int x, int y, float pressure) {
            if (pressure < 0.12f) return;
            const float threshold = std::max(0.004f, tone - 0.10f * (1 - pressure));
            float& texel = plate.at(x, y);
            if (texel <= 0) gain += 1;
            texel = std::max(texel, threshold);
        });
        return gain;
    }

    HatchSettings settings;
    Random random;
    Plate plate;
};

} // namespace

Plate hatchThresholds(const HatchSettings& settings) {
    Plate plate = Hatcher(settings).draw();
    soften(plate, 0.5f);
    // Paper tooth orders texels that strokes left equal, the last white ones among them.
    const Plate tooth = wrappedNoise(settings.size, settings.size / 3, 2, settings.seed + 9);
    equaliseByRank(plate, tooth);
    return plate;
}

float hatchCoverage(const Image& hatch, float tone, float soft) {
    double sum = 0;
    for (const std::uint8_t texel : hatch.pixels) {
        const double t =
            std::clamp((static_cast<double>(texel) / 255 - (tone - soft)) / (2.0 * soft), 0.0, 1.0);
        sum += t * t * (3 - 2 * t);
    }
    return static_cast<float>(sum / static_cast<double>(hatch.pixels.size()));
}

} // namespace forge
