#include "texture/Surfaces.h"

namespace forge {

using Zelkor::Vec2;

namespace {

void darken(Plate& plate, int x, int y, float darkness) {
    float& texel = plate.at(x, y);
    texel = std::min(texel, 1 - darkness);
}

void draw(Plate& plate, const Stroke& stroke, float ink) {
    walkStroke(stroke, [&](int x, int y, float pressure) { darken(plate, x, y, ink * pressure); });
}

void dab(Plate& plate, const Vec2& p, float radius, float ink) {
    const int reach = static_cast<int>(radius) + 2;
    const int cx = static_cast<int>(std::floor(p.x)), cy = static_cast<int>(std::floor(p.y));
    for (int dy = -reach; dy <= reach; ++dy)
        for (int dx = -reach; dx <= reach; ++dx) {
            const float away = std::hypot(static_cast<float>(cx + dx) + 0.5f - p.x,
                                          static_cast<float>(cy + dy) + 0.5f - p.y);
            darken(plate, cx + dx, cy + dy, ink * std::clamp(radius + 0.5f - away, 0.0f, 1.0f));
        }
}

// A line from a to b as a hand draws it.
void drawLine(Plate& plate, const Vec2& a, const Vec2& b, float halfWidth, float ink, Random& random) {
    Stroke stroke;
    stroke.start = {a.x + random.range(-1, 1), a.y + random.range(-1, 1)};
    stroke.angle = std::atan2(b.y - a.y, b.x - a.x) + random.range(-0.015f, 0.015f);
    stroke.length = std::hypot(b.x - a.x, b.y - a.y) + random.range(-2, 3);
    stroke.bend = random.range(-0.06f, 0.06f);
    stroke.halfWidth = halfWidth;
    stroke.seed = random.below(100000);
    draw(plate, stroke, ink);
}

// Parallel strokes over a box.
void hatchBox(Plate& plate, const Vec2& lo, const Vec2& hi, float spacing, float ink, Random& random) {
    const float height = hi.y - lo.y, slant = 0.6f * height;
    for (float x = lo.x + spacing; x + slant < hi.x; x += spacing * random.range(0.7f, 1.4f))
        drawLine(plate, {x, hi.y - 0.12f * height}, {x + slant, lo.y + 0.12f * height}, 0.7f,
                 ink * random.range(0.5f, 0.9f), random);
}

float wrappedGap(float a, float b, float size) {
    const float gap = a - b;
    return gap - size * std::round(gap / size);
}

} // namespace

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
        plate.all()[i] = 0.2f * clouds.all()[i] + tooth.all()[i] + std::clamp(fibres.all()[i], -0.5f, 0.5f);
    equaliseByRank(plate, tooth);
    return plate;
}

Plate woodGrain(const SurfaceSettings& settings, int lines, int knots) {
    Plate plate(settings.size, 1);
    Random random(settings.seed);
    const auto side = static_cast<float>(settings.size);
    struct Knot {
        Vec2 at;
        float radius;
    };
    std::vector<Knot> eyes;
    for (int k = 0; k < knots; ++k)
        eyes.push_back({{random.unit() * side, random.unit() * side}, side * random.range(0.025f, 0.05f)});
    const Plate drift = wrappedNoise(settings.size, 3, 2, settings.seed + 5);
    const auto flowed = [&](float x, float y) {
        float moved = y + 0.03f * side * drift.at(static_cast<int>(x), static_cast<int>(y));
        for (const Knot& knot : eyes) {
            const float u = wrappedGap(x, knot.at.x, side) / (3.2f * knot.radius),
                        v = wrappedGap(y, knot.at.y, side);
            moved +=
                (v < 0 ? -1.4f : 1.4f) * knot.radius * std::exp(-u * u - std::fabs(v) / (2.2f * knot.radius));
        }
        return moved;
    };
    for (int line = 0; line < lines; ++line) {
        const float y =
            side * (static_cast<float>(line) + random.range(-0.3f, 0.3f)) / static_cast<float>(lines);
        const float start = random.unit() * side, length = side * random.range(0.35f, 0.98f);
        const float weight = random.range(0.4f, 1.0f), width = random.range(0.4f, 1.0f);
        for (float along = 0; along < length; along += 0.7f) {
            const float t = along / length, lift = std::min({1.0f, t / 0.1f, (1 - t) / 0.3f});
            const float waver =
                0.75f + 0.25f * valueNoise({along * 0.05f, static_cast<float>(line), 0}, settings.seed);
            const float x = start + along;
            dab(plate, {x, flowed(x, y)}, width * lift, settings.ink * weight * waver * lift);
        }
    }
    for (const Knot& knot : eyes)
        for (float ring = 0.25f; ring < 1.1f; ring += 0.33f)
            for (float angle = 0; angle < 6.3f; angle += 0.5f / knot.radius)
                dab(plate,
                    {knot.at.x + 1.5f * ring * knot.radius * std::cos(angle),
                     knot.at.y + 0.8f * ring * knot.radius * std::sin(angle)},
                    0.6f, settings.ink * (0.6f + 0.4f * std::sin(angle + 4 * ring)));
    return plate;
}

Plate rockFacets(const SurfaceSettings& settings, int facets) {
    Plate plate(settings.size, 1);
    Random random(settings.seed);
    const auto side = static_cast<float>(settings.size);
    std::vector<Vec2> sites;
    for (int i = 0; i < facets; ++i)
        sites.push_back({random.unit() * side, random.unit() * side});
    const Plate shake = wrappedNoise(settings.size, 10, 3, settings.seed + 3);
    std::vector<int> owner(plate.all().size());
    for (int y = 0; y < settings.size; ++y)
        for (int x = 0; x < settings.size; ++x) {
            const float px = static_cast<float>(x) + 7 * shake.at(x, y),
                        py = static_cast<float>(y) + 7 * shake.at(y, x);
            float nearest = 1e9f, second = 1e9f;
            for (int i = 0; i < facets; ++i) {
                const Vec2& site = sites[static_cast<std::size_t>(i)];
                const float d = std::hypot(wrappedGap(px, site.x, side), 1.3f * wrappedGap(py, site.y, side));
                if (d < nearest) {
                    second = nearest;
                    nearest = d;
                    owner[static_cast<std::size_t>(y * settings.size + x)] = i;
                } else {
                    second = std::min(second, d);
                }
            }
            // Cracks come and go along the borders.
            const float crack = std::clamp(1.6f - (second - nearest), 0.0f, 1.0f);
            darken(plate, x, y,
                   settings.ink * crack * std::clamp(0.6f + 1.2f * shake.at(x + 40, y + 90), 0.0f, 1.0f));
        }
    for (int i = 0; i < facets * 60; ++i) {
        Stroke stroke;
        stroke.start = {random.unit() * side, random.unit() * side};
        const auto index = static_cast<std::size_t>(static_cast<int>(stroke.start.y) * settings.size +
                                                    static_cast<int>(stroke.start.x));
        const int cell = owner[index];
        if (hashUnit(cell, settings.seed, 2) < 0.5f) continue; // this facet lies in the light
        stroke.angle = -0.9f + 0.7f * hashUnit(cell, settings.seed, 3);
        stroke.length = random.range(0.04f, 0.09f) * side;
        stroke.halfWidth = 0.7f;
        stroke.seed = i;
        walkStroke(stroke, [&](int x, int y, float pressure) {
            const auto wrap = [&](int v) { return ((v % settings.size) + settings.size) % settings.size; };
            if (owner[static_cast<std::size_t>(wrap(y) * settings.size + wrap(x))] == cell)
                darken(plate, x, y, 0.6f * settings.ink * pressure);
        });
    }
    return plate;
}

Plate brickWork(const SurfaceSettings& settings, int courses, int bricksInCourse) {
    Plate plate(settings.size, 1);
    Random random(settings.seed);
    const auto side = static_cast<float>(settings.size);
    const float high = side / static_cast<float>(courses), wide = side / static_cast<float>(bricksInCourse),
                gap = 0.09f * high;
    for (int row = 0; row < courses; ++row)
        for (int column = 0; column < bricksInCourse; ++column) {
            const float x = wide * (static_cast<float>(column) + (row % 2 ? 0.5f : 0.0f)),
                        y = high * static_cast<float>(row);
            const auto corner = [&](float cx, float cy) {
                return Vec2{cx + random.range(-0.05f, 0.05f) * wide, cy + random.range(-0.06f, 0.06f) * high};
            };
            const Vec2 a = corner(x + gap, y + gap), b = corner(x + wide - gap, y + gap);
            const Vec2 c = corner(x + wide - gap, y + high - gap), d = corner(x + gap, y + high - gap);
            const float ink = settings.ink * random.range(0.6f, 1.0f);
            drawLine(plate, a, b, 0.9f, ink * 0.7f, random);
            drawLine(plate, c, b, 1.1f, ink, random);
            drawLine(plate, d, c, 1.2f, ink, random); // the lower edge lies in shade
            drawLine(plate, a, d, 0.9f, ink * 0.8f, random);
            if (random.unit() < 0.3f) hatchBox(plate, a, c, 0.16f * high, ink * 0.8f, random);
        }
    return plate;
}

Plate foliageCurls(const SurfaceSettings& settings, int clumps) {
    Plate plate(settings.size, 1);
    Random random(settings.seed);
    const auto side = static_cast<float>(settings.size);
    for (int i = 0; i < clumps; ++i) {
        const Vec2 centre{random.unit() * side, random.unit() * side};
        const float radius = side * random.range(0.035f, 0.08f);
        const int curls = 5 + random.below(4);
        for (int k = 0; k < curls; ++k) {
            // Scallops around the upper side of the clump; below it stays open.
            const float angle =
                Zelkor::pi * (1.05f + 0.95f * static_cast<float>(k) / static_cast<float>(curls - 1));
            Stroke stroke;
            stroke.start = {centre.x + radius * std::cos(angle), centre.y + 0.8f * radius * std::sin(angle)};
            stroke.angle = angle + 1.4f + random.range(-0.3f, 0.3f);
            stroke.length = radius * random.range(0.9f, 1.5f);
            stroke.bend = random.range(2.2f, 3.4f);
            stroke.halfWidth = random.range(0.6f, 1.1f);
            stroke.seed = random.below(100000);
            draw(plate, stroke, settings.ink * random.range(0.5f, 1.0f));
        }
    }
    return plate;
}

Plate washStain(const SurfaceSettings& settings, int spots) {
    Plate plate = wrappedNoise(settings.size, spots, 3, settings.seed);
    for (float& v : plate.all()) {
        const float rim =
            std::max(0.0f, 1 - std::fabs(v - 0.1f) / 0.05f); // colour gathers where a puddle dried
        v = 1 - settings.ink * std::clamp(0.3f + 0.25f * v + 0.12f * rim, 0.0f, 1.0f);
    }
    return plate;
}

} // namespace forge
