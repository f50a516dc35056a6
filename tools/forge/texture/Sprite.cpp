#include "texture/Sprite.h"

#include <algorithm>
#include <cmath>

namespace forge {

using Zelkor::pi;
using Zelkor::Vec2;

namespace {

constexpr int samples = 4; // a side, of each texel of a shape's rim

Vec2 onCircle(float angle) {
    return {std::cos(angle), std::sin(angle)};
}

float lengthOf(const Outline& path) {
    float length = 0;
    for (std::size_t i = 1; i < path.size(); ++i)
        length += std::hypot(path[i].x - path[i - 1].x, path[i].y - path[i - 1].y);
    return length;
}

// Even-odd.
bool inside(const Outline& outline, const Vec2& p) {
    bool in = false;
    for (std::size_t i = 0, j = outline.size() - 1; i < outline.size(); j = i++) {
        const Vec2 &a = outline[i], &b = outline[j];
        if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x) in = !in;
    }
    return in;
}

} // namespace

Sprite::Sprite(int size, int seed)
    : size_(size), random_(seed),
      light_(static_cast<std::size_t>(size) * static_cast<std::size_t>(size)), alpha_(light_.size()) {}

Vec2 Sprite::texelOf(const Vec2& p) const {
    const float half = static_cast<float>(size_) / 2;
    return {(p.x + 1) * half, (1 - p.y) * half};
}

void Sprite::layPaper(int x, int y, float cover, float tone) {
    if (x < 0 || y < 0 || x >= size_ || y >= size_) return;
    const auto i = static_cast<std::size_t>(y * size_ + x);
    light_[i] = tone * cover + light_[i] * (1 - cover);
    alpha_[i] = cover + alpha_[i] * (1 - cover);
}

void Sprite::layInk(int x, int y, float ink) {
    layPaper(x, y, ink, 0);
}

void Sprite::shape(const Outline& outline, float tone, float worn) {
    const int holes = random_.below(100000);
    for (int y = 0; y < size_; ++y)
        for (int x = 0; x < size_; ++x) {
            int hits = 0;
            for (int k = 0; k < samples * samples; ++k) {
                const float fx = static_cast<float>(x) + (static_cast<float>(k % samples) + 0.5f) / samples;
                const float fy = static_cast<float>(y) + (static_cast<float>(k / samples) + 0.5f) / samples;
                const auto side = static_cast<float>(size_);
                hits += inside(outline, {2 * fx / side - 1, 1 - 2 * fy / side});
            }
            if (hits == 0) continue;
            const Zelkor::Vec3 place{static_cast<float>(x) * 0.12f, static_cast<float>(y) * 0.12f, 0.5f};
            const float rubbed = std::clamp(0.5f + 1.6f * valueNoise(place, holes) - 1.6f * (0.5f - worn), 0.0f, 1.0f);
            const float cover = static_cast<float>(hits) / (samples * samples);
            layPaper(x, y, worn > 0 ? cover * (1 - rubbed) : cover, tone);
        }
}

void Sprite::dab(const Vec2& at, float radius, float ink) {
    const Vec2 t = texelOf(at);
    const float r = radius * static_cast<float>(size_) / 2;
    const int reach = static_cast<int>(std::ceil(r)) + 1;
    const int cx = static_cast<int>(std::floor(t.x)), cy = static_cast<int>(std::floor(t.y));
    for (int y = cy - reach; y <= cy + reach; ++y)
        for (int x = cx - reach; x <= cx + reach; ++x) {
            const float away =
                std::hypot(static_cast<float>(x) + 0.5f - t.x, static_cast<float>(y) + 0.5f - t.y);
            const float edge = std::clamp(r + 0.5f - away, 0.0f, 1.0f);
            if (edge > 0) layInk(x, y, ink * edge);
        }
}

// Dabs lie half a texel apart, so each lays a share of the ink that adds up to all of it over their width.
void Sprite::line(const Outline& path, const Pen& pen, bool closed) {
    Outline points = path;
    if (closed && points.size() > 1) points.push_back(points.front());
    const float total = lengthOf(points);
    if (!(total > 0)) return;
    const int waverSeed = random_.below(100000);
    const float texel = 2 / static_cast<float>(size_), step = texel / 2;
    float before = 0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const Vec2 a = points[i - 1], b = points[i];
        const float piece = std::hypot(b.x - a.x, b.y - a.y);
        for (float along = std::ceil(before / step) * step; along < before + piece; along += step) {
            const float u = (along - before) / piece, t = along / total;
            const float ends = closed ? 1
                                      : std::min({1.0f, t / std::max(pen.taper, 0.01f),
                                                  (1 - t) / std::max(pen.taper, 0.01f)});
            const float waver = valueNoise({along * 7, 0.5f, 0.5f}, waverSeed);
            const float lifted = valueNoise({along * 3.1f, 8.5f, 0.5f}, waverSeed);
            if (pen.broken > 0 && lifted * 0.5f + 0.5f < pen.broken) continue;
            const float pressure = std::sqrt(std::max(ends, 0.0f)) * (0.82f + 0.28f * waver);
            const float radius = pen.width / 2 * pressure;
            const float overlap = std::max(2 * radius / step, 1.0f);
            const float share = 1 - std::pow(1 - std::min(pen.ink, 0.995f), 2.2f / overlap);
            const Vec2 shake{0.35f * pen.width * valueNoise({along * 4, 3.5f, 0.5f}, waverSeed),
                             0.35f * pen.width * valueNoise({along * 4, 6.5f, 0.5f}, waverSeed)};
            dab({a.x + (b.x - a.x) * u + shake.x, a.y + (b.y - a.y) * u + shake.y},
                std::max(radius, texel * 0.3f), share);
        }
        before += piece;
    }
}

void Sprite::hatch(const Vec2& at, float radius, float angle, float gap, const Pen& pen) {
    const std::vector<float> light = light_, alpha = alpha_;
    const Vec2 along = onCircle(angle * pi / 180), across{-along.y, along.x};
    for (float d = -radius + gap / 2; d < radius; d += gap * random_.range(0.75f, 1.25f)) {
        const float half = std::sqrt(radius * radius - d * d) * random_.range(0.75f, 1.0f);
        const Vec2 middle{at.x + across.x * d, at.y + across.y * d};
        line({{middle.x - along.x * half, middle.y - along.y * half},
              {middle.x + along.x * half, middle.y + along.y * half}},
             pen);
    }
    for (std::size_t i = 0; i < light_.size(); ++i) { // what fell beside the shape
        const float kept = alpha[i];
        const float shade = alpha_[i] > 0 ? light_[i] / alpha_[i] : 0;
        alpha_[i] = kept;
        light_[i] = kept > 0 ? std::min(shade * kept, light[i]) : 0;
    }
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
    for (int y = 0; y < size_; ++y)
        for (int x = 0; x < size_; ++x) {
            const float fx = static_cast<float>(x) + 0.5f, fy = static_cast<float>(y) + 0.5f;
            const float away =
                std::hypot(fx - middle.x, fy - middle.y) / (radius * static_cast<float>(size_) / 2);
            const float clouds = 1 + 0.6f * valueNoise({fx * 0.07f, fy * 0.07f, 0.5f}, seed);
            const float tooth = 0.75f + 0.25f * valueNoise({fx * 0.6f, fy * 0.6f, 0.5f}, seed + 1);
            const float density = std::clamp(1 - away, 0.0f, 1.0f);
            if (density > 0) layInk(x, y, std::clamp(ink * density * clouds * tooth, 0.0f, 1.0f));
        }
}

void Sprite::spatter(const Vec2& at, float radius, int count, float size, float ink) {
    for (int i = 0; i < count; ++i) {
        const Vec2 way = onCircle(random_.range(0, 2 * pi));
        const float away = radius * std::sqrt(random_.unit());
        const float r = size * random_.range(0.35f, 1) * (1 - 0.5f * away / std::max(radius, 0.001f));
        dab({at.x + way.x * away, at.y + way.y * away}, r, ink);
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
    Image image(size_, size_, 4);
    const auto toByte = [](float v) {
        return static_cast<std::uint8_t>(std::lround(std::clamp(v, 0.0f, 1.0f) * 255));
    };
    for (int y = 0; y < size_; ++y)
        for (int x = 0; x < size_; ++x) {
            const auto i = static_cast<std::size_t>(y * size_ + x);
            const std::uint8_t light = toByte(alpha_[i] > 0 ? light_[i] / alpha_[i] : 0);
            for (int c = 0; c < 3; ++c)
                image.at(x, y, c) = light;
            image.at(x, y, 3) = toByte(alpha_[i]);
        }
    return image;
}

} // namespace forge
