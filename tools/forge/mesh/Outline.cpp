#include "mesh/Outline.h"

#include "mesh/Noise.h"

#include <algorithm>
#include <cmath>

namespace forge {

using Zelkor::Vec2;
using Zelkor::Vec3;

namespace {

Vec2 operator-(const Vec2& a, const Vec2& b) {
    return {a.x - b.x, a.y - b.y};
}
float cross2(const Vec2& a, const Vec2& b) {
    return a.x * b.y - a.y * b.x;
}
float dot2(const Vec2& a, const Vec2& b) {
    return a.x * b.x + a.y * b.y;
}

template <class Point>
Point catmullRom(const Point& a, const Point& b, const Point& c, const Point& d, float t);

float catmullRomScalar(float a, float b, float c, float d, float t) {
    return 0.5f *
           (2 * b + (c - a) * t + (2 * a - 5 * b + 4 * c - d) * t * t + (3 * b - a - 3 * c + d) * t * t * t);
}
template <>
Vec2 catmullRom(const Vec2& a, const Vec2& b, const Vec2& c, const Vec2& d, float t) {
    return {catmullRomScalar(a.x, b.x, c.x, d.x, t), catmullRomScalar(a.y, b.y, c.y, d.y, t)};
}
template <>
Vec3 catmullRom(const Vec3& a, const Vec3& b, const Vec3& c, const Vec3& d, float t) {
    return {catmullRomScalar(a.x, b.x, c.x, d.x, t), catmullRomScalar(a.y, b.y, c.y, d.y, t),
            catmullRomScalar(a.z, b.z, c.z, d.z, t)};
}

template <class Point>
std::vector<Point> spline(const std::vector<Point>& points, bool closed, int steps) {
    const int n = static_cast<int>(points.size());
    if (n < 3) return points;
    const auto at = [&](int i) {
        return points[static_cast<std::size_t>(closed ? (i + n) % n : std::clamp(i, 0, n - 1))];
    };
    std::vector<Point> result;
    for (int i = 0; i < (closed ? n : n - 1); ++i)
        for (int s = 0; s < steps; ++s)
            result.push_back(catmullRom(at(i - 1), at(i), at(i + 1), at(i + 2),
                                        static_cast<float>(s) / static_cast<float>(steps)));
    if (!closed) result.push_back(points.back());
    return result;
}

bool insideTriangle(const Vec2& p, const Vec2& a, const Vec2& b, const Vec2& c) {
    return cross2(b - a, p - a) >= 0 && cross2(c - b, p - b) >= 0 && cross2(a - c, p - c) >= 0;
}

} // namespace

float signedArea2(const Outline& outline) {
    float area = 0;
    for (std::size_t i = 0; i < outline.size(); ++i)
        area += cross2(outline[i], outline[(i + 1) % outline.size()]);
    return area;
}

void makeCounterClockwise(Outline& outline) {
    if (signedArea2(outline) < 0) std::reverse(outline.begin(), outline.end());
}

float signedDistance(const Outline& outline, const Vec2& p) {
    float nearest = 1e30f;
    bool inside = false;
    for (std::size_t i = 0, j = outline.size() - 1; i < outline.size(); j = i++) {
        const Vec2 a = outline[j], b = outline[i], side = b - a, to = p - a;
        const float t = std::clamp(dot2(to, side) / std::max(dot2(side, side), 1e-12f), 0.0f, 1.0f);
        const Vec2 gap{to.x - side.x * t, to.y - side.y * t};
        nearest = std::min(nearest, dot2(gap, gap));
        if ((a.y > p.y) != (b.y > p.y) && p.x < a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x))
            inside = !inside;
    }
    return inside ? -std::sqrt(nearest) : std::sqrt(nearest);
}

Outline splineThrough(const Outline& points, bool closed, int steps) {
    return spline(points, closed, steps);
}
std::vector<Vec3> splineThrough(const std::vector<Vec3>& points, bool closed, int steps) {
    return spline(points, closed, steps);
}

Outline inset(const Outline& outline, float by) {
    const std::size_t n = outline.size();
    Outline result;
    for (std::size_t i = 0; i < n; ++i) {
        const auto inward = [&](const Vec2& a, const Vec2& b) {
            const Vec2 side = b - a;
            const float len = std::max(std::hypot(side.x, side.y), 1e-9f);
            return Vec2{-side.y / len, side.x / len};
        };
        const Vec2 u = inward(outline[(i + n - 1) % n], outline[i]),
                   v = inward(outline[i], outline[(i + 1) % n]);
        const float scale = by / std::max(1 + dot2(u, v), 0.5f);
        result.push_back({outline[i].x + (u.x + v.x) * scale, outline[i].y + (u.y + v.y) * scale});
    }
    return result;
}

Outline roughened(const Outline& outline, float amount, float step, int seed) {
    Outline result;
    const std::size_t n = outline.size();
    for (std::size_t i = 0; i < n; ++i) {
        const Vec2 a = outline[i], side = outline[(i + 1) % n] - a;
        const float len = std::hypot(side.x, side.y);
        const int pieces = std::max(1, static_cast<int>(len / step + 0.5f));
        result.push_back(a);
        for (int k = 1; k < pieces; ++k) {
            const int id = static_cast<int>(i) * 1000 + k;
            const float t =
                (static_cast<float>(k) + 0.5f * (hashUnit(id, seed, 1) - 0.5f)) / static_cast<float>(pieces);
            const float off = amount * (2 * hashUnit(id, seed, 2) - 1) / std::max(len, 1e-9f);
            result.push_back({a.x + side.x * t - side.y * off, a.y + side.y * t + side.x * off});
        }
    }
    return result;
}

std::vector<std::array<int, 3>> triangulate(const Outline& outline) {
    std::vector<std::array<int, 3>> triangles;
    std::vector<int> left;
    for (int i = 0; i < static_cast<int>(outline.size()); ++i)
        left.push_back(i);
    const auto point = [&](int i) { return outline[static_cast<std::size_t>(i)]; };
    while (left.size() > 3) {
        const std::size_t n = left.size();
        // The fattest ear, for even triangles.
        std::size_t best = n;
        float bestQuality = 0;
        for (std::size_t i = 0; i < n; ++i) {
            const int ia = left[(i + n - 1) % n], ib = left[i], ic = left[(i + 1) % n];
            const Vec2 a = point(ia), b = point(ib), c = point(ic);
            const float area = cross2(b - a, c - a);
            const float longest = std::max({dot2(b - a, b - a), dot2(c - b, c - b), dot2(a - c, a - c)});
            const float quality = area / std::max(longest, 1e-12f);
            if (quality <= bestQuality) continue;
            bool ear = true;
            for (const int k : left) {
                if (k == ia || k == ib || k == ic) continue;
                if (insideTriangle(point(k), a, b, c)) {
                    ear = false;
                    break;
                }
            }
            if (ear) {
                best = i;
                bestQuality = quality;
            }
        }
        if (best == n) {
            // Points in line leave ears without area: drop the flattest, or give up.
            for (std::size_t i = 0; i < n && best == n; ++i) {
                const Vec2 a = point(left[(i + n - 1) % n]), b = point(left[i]), c = point(left[(i + 1) % n]);
                if (std::fabs(cross2(b - a, c - a)) < 1e-6f) best = i;
            }
            if (best == n) return {};
            left.erase(left.begin() + static_cast<std::ptrdiff_t>(best));
            continue;
        }
        triangles.push_back({left[(best + n - 1) % n], left[best], left[(best + 1) % n]});
        left.erase(left.begin() + static_cast<std::ptrdiff_t>(best));
    }
    if (left.size() == 3) triangles.push_back({left[0], left[1], left[2]});
    // A hand may let a thin shape overlap itself a little; a bow tie, whose halves cancel out, is no shape.
    float covered = 0;
    for (const auto& t : triangles)
        covered += std::fabs(cross2(point(t[1]) - point(t[0]), point(t[2]) - point(t[0])));
    if (std::fabs(signedArea2(outline)) < 0.1f * covered) return {};
    return triangles;
}

} // namespace forge
