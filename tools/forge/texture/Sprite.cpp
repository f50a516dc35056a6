#include "texture/Sprite.h"

#include <algorithm>
#include <cmath>

namespace forge {

using Zelkor::pi;
using Zelkor::Vec2;

namespace {

constexpr int samples = 4; // a side, of each texel of a shape's rim
constexpr Tint black{0, 0, 0};

Vec2 onCircle(float angle) {
    return {std::cos(angle), std::sin(angle)};
}

float lengthOf(const Outline& path) {
    float length = 0;
    for (std::size_t i = 1; i < path.size(); ++i)
        length += std::hypot(path[i].x - path[i - 1].x, path[i].y - path[i - 1].y);
    return length;
}

// Where the outlines cross the height y, from left to right.
std::vector<float> crossings(const std::vector<Outline>& outlines, float y) {
    std::vector<float> xs;
    for (const Outline& outline : outlines)
        for (std::size_t i = 0, j = outline.size() - 1; i < outline.size(); j = i++) {
            const Vec2 &a = outline[i], &b = outline[j];
            if ((a.y > y) != (b.y > y)) xs.push_back((b.x - a.x) * (y - a.y) / (b.y - a.y) + a.x);
        }
    std::sort(xs.begin(), xs.end());
    return xs;
}

} // namespace

Ground Ground::square(int size) {
    return {size, size, -1, 1, static_cast<float>(size) / 2};
}

Ground Ground::sheet(int width, int height, float unitsAcross) {
    const float scale = static_cast<float>(width) / unitsAcross;
    return {width, height, 0, static_cast<float>(height) / scale, scale};
}

Sprite::Sprite(const Ground& ground, int seed)
    : ground_(ground), random_(seed),
      texels_(static_cast<std::size_t>(ground.width) * static_cast<std::size_t>(ground.height)) {}

Vec2 Sprite::texelOf(const Vec2& p) const {
    return {(p.x - ground_.left) * ground_.texelsAUnit, (ground_.top - p.y) * ground_.texelsAUnit};
}

void Sprite::lay(int x, int y, float cover, const Tint& tint) {
    if (x < 0 || y < 0 || x >= ground_.width || y >= ground_.height) return;
    Texel& texel = texels_[index(x, y)];
    for (std::size_t c = 0; c < 3; ++c)
        texel.light[c] = tint[c] * cover + texel.light[c] * (1 - cover);
    texel.alpha = cover + texel.alpha * (1 - cover);
}

// Calls visit(x, y, share 0..1) for every texel that the outlines cover in part.
template <class Visit>
void Sprite::fill(const std::vector<Outline>& outlines, const Visit& visit) const {
    float left = 1e9f, right = -1e9f, top = 1e9f, bottom = -1e9f;
    for (const Outline& outline : outlines)
        for (const Vec2& p : outline) {
            const Vec2 t = texelOf(p);
            left = std::min(left, t.x), right = std::max(right, t.x);
            top = std::min(top, t.y), bottom = std::max(bottom, t.y);
        }
    const auto clipped = [](float v, int most) { return std::clamp(static_cast<int>(v), 0, most); };
    const int x0 = clipped(left, ground_.width), x1 = clipped(right + 1, ground_.width);
    for (int y = clipped(top, ground_.height); y < clipped(bottom + 1, ground_.height); ++y) {
        std::vector<int> hits(static_cast<std::size_t>(std::max(x1 - x0, 0)));
        for (int row = 0; row < samples; ++row) {
            const float fy = static_cast<float>(y) + (static_cast<float>(row) + 0.5f) / samples;
            const std::vector<float> xs = crossings(outlines, ground_.top - fy / ground_.texelsAUnit);
            std::size_t passed = 0; // even-odd: inside between the first and the second, and so on
            for (int k = 0; k < (x1 - x0) * samples; ++k) {
                const float fx = static_cast<float>(x0 + k / samples) + (static_cast<float>(k % samples) + 0.5f) / samples;
                while (passed < xs.size() && xs[passed] <= ground_.left + fx / ground_.texelsAUnit)
                    ++passed;
                hits[static_cast<std::size_t>(k / samples)] += passed % 2 == 1;
            }
        }
        for (int x = x0; x < x1; ++x)
            if (const int hit = hits[static_cast<std::size_t>(x - x0)])
                visit(x, y, static_cast<float>(hit) / (samples * samples));
    }
}

void Sprite::shape(const std::vector<Outline>& outlines, const Tint& tint, float worn) {
    const int holes = random_.below(100000);
    fill(outlines, [&](int x, int y, float cover) {
        const Zelkor::Vec3 place{static_cast<float>(x) * 0.12f, static_cast<float>(y) * 0.12f, 0.5f};
        const float rubbed = std::clamp(0.5f + 1.6f * valueNoise(place, holes) - 1.6f * (0.5f - worn), 0.0f, 1.0f);
        lay(x, y, worn > 0 ? cover * (1 - rubbed) : cover, tint);
    });
}

void Sprite::wash(const Outline& outline, const Tint& tint) {
    const int seed = random_.below(100000);
    fill({outline}, [&](int x, int y, float cover) {
        const float fx = static_cast<float>(x), fy = static_cast<float>(y);
        const float rim = -signedDistance(outline, {ground_.left + (fx + 0.5f) / ground_.texelsAUnit,
                                                    ground_.top - (fy + 0.5f) / ground_.texelsAUnit});
        const float dried = 0.35f * std::clamp(1 - rim * ground_.texelsAUnit / 5, 0.0f, 1.0f);
        const float pools = 0.25f * valueNoise({fx * 0.02f, fy * 0.02f, 0.5f}, seed) +
                            0.12f * valueNoise({fx * 0.3f, fy * 0.3f, 0.5f}, seed + 1);
        const float strength = cover * std::clamp(0.75f + dried + pools, 0.0f, 1.3f);
        Texel& texel = texels_[index(x, y)];
        for (std::size_t c = 0; c < 3; ++c)
            texel.light[c] *= std::clamp(1 - (1 - tint[c]) * strength, 0.0f, 1.0f);
    });
}

// Of the paper under the pencil: specks, and places where the hand is lighter. 0 takes the lead, 1 does not.
float Sprite::tooth(int x, int y) const {
    const float fx = static_cast<float>(x), fy = static_cast<float>(y);
    return std::clamp(0.5f + 0.6f * valueNoise({fx / 1.7f, fy / 1.7f, 0.5f}, 71) + 0.35f * valueNoise({fx / 9, fy / 9, 0.5f}, 72),
                      0.0f, 1.0f);
}

void Sprite::dab(const Vec2& at, float radius, float ink, const Tint& tint, float grain) {
    const Vec2 t = texelOf(at);
    const float r = radius * ground_.texelsAUnit;
    const int reach = static_cast<int>(std::ceil(r)) + 1;
    const int cx = static_cast<int>(std::floor(t.x)), cy = static_cast<int>(std::floor(t.y));
    for (int y = cy - reach; y <= cy + reach; ++y)
        for (int x = cx - reach; x <= cx + reach; ++x) {
            const float away =
                std::hypot(static_cast<float>(x) + 0.5f - t.x, static_cast<float>(y) + 0.5f - t.y);
            const float edge = std::clamp(r + 0.5f - away, 0.0f, 1.0f);
            if (edge > 0) lay(x, y, ink * edge * (grain > 0 ? 1 - grain * tooth(x, y) : 1), tint);
        }
}

// Dabs lie half a texel apart, so each lays a share of the ink that adds up to all of it over their width.
void Sprite::line(const Outline& path, const Pen& pen, bool closed) {
    Outline points = path;
    if (closed && points.size() > 1) points.push_back(points.front());
    const float total = lengthOf(points);
    if (!(total > 0)) return;
    const int waverSeed = random_.below(100000);
    const float texel = 1 / ground_.texelsAUnit, step = texel / 2;
    // The hand wavers by the size of the whole picture: a unit is half its height.
    const float pace = 2 * ground_.texelsAUnit / static_cast<float>(ground_.height);
    float before = 0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const Vec2 a = points[i - 1], b = points[i];
        const float piece = std::hypot(b.x - a.x, b.y - a.y);
        for (float along = std::ceil(before / step) * step; along < before + piece; along += step) {
            const float u = (along - before) / piece, t = along / total;
            const float ends = closed ? 1
                                      : std::min({1.0f, t / std::max(pen.taper, 0.01f),
                                                  (1 - t) / std::max(pen.taper, 0.01f)});
            const float gone = along * pace;
            const float waver = valueNoise({gone * 7, 0.5f, 0.5f}, waverSeed);
            const float lifted = valueNoise({gone * 3.1f, 8.5f, 0.5f}, waverSeed);
            if (pen.broken > 0 && lifted * 0.5f + 0.5f < pen.broken) continue;
            const float pressure = std::sqrt(std::max(ends, 0.0f)) * (0.82f + 0.28f * waver);
            const float radius = pen.width / 2 * pressure;
            const float overlap = std::max(2 * radius / step, 1.0f);
            const float share = 1 - std::pow(1 - std::min(pen.ink, 0.995f), 2.2f / overlap);
            const Vec2 shake{0.35f * pen.width * valueNoise({gone * 4, 3.5f, 0.5f}, waverSeed),
                             0.35f * pen.width * valueNoise({gone * 4, 6.5f, 0.5f}, waverSeed)};
            dab({a.x + (b.x - a.x) * u + shake.x, a.y + (b.y - a.y) * u + shake.y},
                std::max(radius, texel * 0.3f), share, pen.tint, pen.grain);
        }
        before += piece;
    }
}

void Sprite::strokes(const Vec2& at, float radius, float angle, float gap, const Pen& pen, const Outline* outline) {
    // Strokes wander over their disc's rim by no more than their width; only there is anything to take back.
    const float reach = radius + 2 * pen.width;
    const Vec2 corner = texelOf({at.x - reach, at.y + reach});
    const int side = static_cast<int>(2 * reach * ground_.texelsAUnit) + 4;
    const int left = static_cast<int>(std::floor(corner.x)) - 2, top = static_cast<int>(std::floor(corner.y)) - 2;
    const int x0 = std::max(left, 0), x1 = std::min(left + side + 4, ground_.width), y0 = std::max(top, 0),
              y1 = std::min(top + side + 4, ground_.height);
    if (x0 >= x1 || y0 >= y1) return;
    std::vector<Texel> before;
    for (int y = y0; y < y1; ++y)
        for (int x = x0; x < x1; ++x)
            before.push_back(texels_[index(x, y)]);

    const Vec2 along = onCircle(angle * pi / 180), across{-along.y, along.x};
    for (float d = -radius + gap / 2; d < radius; d += gap * random_.range(0.75f, 1.25f)) {
        const float half = std::sqrt(radius * radius - d * d) * random_.range(0.75f, 1.0f);
        const Vec2 middle{at.x + across.x * d, at.y + across.y * d};
        line({{middle.x - along.x * half, middle.y - along.y * half},
              {middle.x + along.x * half, middle.y + along.y * half}},
             pen);
    }

    std::vector<float> kept(before.size(), outline ? 0.0f : 1.0f);
    const auto within = [&](int x, int y) {
        return static_cast<std::size_t>(y - y0) * static_cast<std::size_t>(x1 - x0) + static_cast<std::size_t>(x - x0);
    };
    if (outline)
        fill({*outline}, [&](int x, int y, float cover) {
            if (x >= x0 && x < x1 && y >= y0 && y < y1) kept[within(x, y)] = cover;
        });
    for (int y = y0; y < y1; ++y)
        for (int x = x0; x < x1; ++x) {
            Texel& texel = texels_[index(x, y)];
            const Texel& old = before[within(x, y)];
            const float shown = kept[within(x, y)];
            for (std::size_t c = 0; c < 3; ++c) {
                const float shade = texel.alpha > 0 ? texel.light[c] / texel.alpha : 0;
                const float laid = old.alpha > 0 ? std::min(shade * old.alpha, old.light[c]) : 0;
                texel.light[c] = shown * laid + (1 - shown) * old.light[c];
            }
            texel.alpha = old.alpha;
        }
}

void Sprite::hatch(const Vec2& at, float radius, float angle, float gap, const Pen& pen) {
    strokes(at, radius, angle, gap, pen, nullptr);
}

void Sprite::hatch(const Outline& outline, float angle, float gap, const Pen& pen) {
    Vec2 lo = outline.front(), hi = lo;
    for (const Vec2& p : outline) {
        lo = {std::min(lo.x, p.x), std::min(lo.y, p.y)};
        hi = {std::max(hi.x, p.x), std::max(hi.y, p.y)};
    }
    const float radius = 0.6f * std::hypot(hi.x - lo.x, hi.y - lo.y);
    strokes({(lo.x + hi.x) / 2, (lo.y + hi.y) / 2}, radius, angle, gap, pen, &outline);
}

void Sprite::scribble(const Vec2& at, const Vec2& end, const Vec2& radius, float loops, const Pen& pen) {
    const int seed = random_.below(100000);
    const float phase = random_.range(0, 2 * pi);
    const int steps = std::max(8, static_cast<int>(loops * 28));
    Outline path;
    for (int i = 0; i <= steps; ++i) {
        const float t = static_cast<float>(i) / static_cast<float>(steps);
        const float size = 1 + 0.3f * valueNoise({t * loops * 1.3f, 0.5f, 0.5f}, seed);
        const Vec2 turn = onCircle(phase + 2 * pi * loops * t);
        path.push_back({at.x + (end.x - at.x) * t + radius.x * size * turn.x,
                        at.y + (end.y - at.y) * t + radius.y * size * turn.y});
    }
    line(path, pen);
}

void Sprite::smudge(const Vec2& at, float radius, float ink) {
    const int seed = random_.below(100000);
    const Vec2 middle = texelOf(at);
    for (int y = 0; y < ground_.height; ++y)
        for (int x = 0; x < ground_.width; ++x) {
            const float fx = static_cast<float>(x) + 0.5f, fy = static_cast<float>(y) + 0.5f;
            const float away = std::hypot(fx - middle.x, fy - middle.y) / (radius * ground_.texelsAUnit);
            const float clouds = 1 + 0.6f * valueNoise({fx * 0.07f, fy * 0.07f, 0.5f}, seed);
            const float tooth = 0.75f + 0.25f * valueNoise({fx * 0.6f, fy * 0.6f, 0.5f}, seed + 1);
            const float density = std::clamp(1 - away, 0.0f, 1.0f);
            if (density > 0) lay(x, y, std::clamp(ink * density * clouds * tooth, 0.0f, 1.0f), black);
        }
}

void Sprite::spatter(const Vec2& at, float radius, int count, float size, float ink) {
    for (int i = 0; i < count; ++i) {
        const Vec2 way = onCircle(random_.range(0, 2 * pi));
        const float away = radius * std::sqrt(random_.unit());
        const float r = size * random_.range(0.35f, 1) * (1 - 0.5f * away / std::max(radius, 0.001f));
        dab({at.x + way.x * away, at.y + way.y * away}, r, ink, black);
    }
}

Outline Sprite::puffOutline(const Vec2& at, float radius, int lobes, float depth) {
    std::vector<float> rims; // angles of the creases
    float sum = 0;
    for (int i = 0; i < lobes; ++i)
        rims.push_back(sum += random_.range(0.7f, 1.3f));
    Outline outline;
    const float start = random_.range(0, 2 * pi);
    for (int lobe = 0; lobe < lobes; ++lobe) {
        const float from = lobe == 0 ? 0 : rims[static_cast<std::size_t>(lobe) - 1];
        const float to = rims[static_cast<std::size_t>(lobe)];
        const float reach = radius * random_.range(0.88f, 1.0f);
        for (int i = 0; i < 9; ++i) {
            const float t = static_cast<float>(i) / 9;
            const float bulge = std::pow(std::sin(pi * t), 0.6f);
            const Vec2 way = onCircle(start + 2 * pi * (from + (to - from) * t) / sum);
            const float r = reach * (1 - depth + depth * bulge);
            outline.push_back({at.x + way.x * r, at.y + way.y * r});
        }
    }
    return outline;
}

Outline Sprite::starOutline(const Vec2& at, float inner, float outer, int spikes) {
    Outline outline;
    const float start = random_.range(0, 2 * pi);
    for (int i = 0; i < 2 * spikes; ++i) {
        const float angle = start + pi * (static_cast<float>(i) + random_.range(-0.22f, 0.22f)) / static_cast<float>(spikes);
        const float r = i % 2 == 0 ? outer * (i % 4 == 0 ? 1 : random_.range(0.55f, 0.85f))
                                   : inner * random_.range(0.85f, 1.15f);
        const Vec2 way = onCircle(angle);
        outline.push_back({at.x + way.x * r, at.y + way.y * r});
    }
    return outline;
}

Image Sprite::image() const {
    Image image(ground_.width, ground_.height, 4);
    const auto toByte = [](float v) {
        return static_cast<std::uint8_t>(std::lround(std::clamp(v, 0.0f, 1.0f) * 255));
    };
    for (int y = 0; y < ground_.height; ++y)
        for (int x = 0; x < ground_.width; ++x) {
            const Texel& texel = texels_[index(x, y)];
            for (int c = 0; c < 3; ++c)
                image.at(x, y, c) = toByte(texel.alpha > 0 ? texel.light[static_cast<std::size_t>(c)] / texel.alpha : 0);
            image.at(x, y, 3) = toByte(texel.alpha);
        }
    return image;
}

} // namespace forge
