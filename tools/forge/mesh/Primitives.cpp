#include "mesh/Primitives.h"

#include "mesh/Angles.h"
#include "mesh/Noise.h"

#include <algorithm>
#include <cmath>

namespace forge {

using Zelkor::Vec2;
using Zelkor::Vec3;
using Zelkor::Vec4;

namespace {

void quad(Surface& surface, int a, int b, int c, int d) {
    surface.triangles.push_back({a, b, c});
    surface.triangles.push_back({a, c, d});
}

int lastIndex(const Surface& surface) {
    return static_cast<int>(surface.positions.size()) - 1;
}

Surface twoSidedCopy(const Surface& front) {
    Surface back = front;
    for (Triangle& t : back.triangles)
        std::swap(t[1], t[2]);
    return back;
}

} // namespace

Surface boxSurface(const Vec3& size, float bevel) {
    const Vec3 h = size * 0.5f;
    const float b = std::min({bevel, h.x * 0.9f, h.y * 0.9f, h.z * 0.9f});
    if (b <= 0) {
        return prismSurface({{-h.x, -h.y}, {h.x, -h.y}, {h.x, h.y}, {-h.x, h.y}}, size.z, 0);
    }
    Surface s;
    // Three points a corner: index = corner * 3 + the axis whose face the point lies on.
    for (int c = 0; c < 8; ++c)
        for (int axis = 0; axis < 3; ++axis) {
            const Vec3 in{axis == 0 ? 0 : b, axis == 1 ? 0 : b, axis == 2 ? 0 : b};
            const Vec3 p = h - in;
            s.positions.push_back({c & 1 ? p.x : -p.x, c & 2 ? p.y : -p.y, c & 4 ? p.z : -p.z});
        }
    const auto index = [](int corner, int axis) { return corner * 3 + axis; };
    for (int axis = 0; axis < 3; ++axis) {
        const int u = 1 << ((axis + 1) % 3), v = 1 << ((axis + 2) % 3), w = 1 << axis;
        quad(s, index(w, axis), index(w | u, axis), index(w | u | v, axis), index(w | v, axis));
        quad(s, index(0, axis), index(v, axis), index(u | v, axis), index(u, axis));
        // The four edges along this axis lie between the faces of the other two.
        const int fu = (axis + 1) % 3, fv = (axis + 2) % 3;
        for (const int corner : {0, u, v, u | v}) {
            const bool turned = (corner == 0) || (corner == (u | v));
            const int a = index(corner, fu), d = index(corner, fv), e = index(corner | w, fu),
                      f = index(corner | w, fv);
            if (turned)
                quad(s, a, d, f, e);
            else
                quad(s, d, a, e, f);
        }
    }
    for (int c = 0; c < 8; ++c) {
        const bool even = ((c & 1) + (c >> 1 & 1) + (c >> 2)) % 2 == 1;
        if (even)
            s.triangles.push_back({index(c, 0), index(c, 1), index(c, 2)});
        else
            s.triangles.push_back({index(c, 0), index(c, 2), index(c, 1)});
    }
    return s;
}

Surface prismSurface(Outline outline, float depth, float bevel) {
    makeCounterClockwise(outline);
    Surface s;
    const std::vector<Triangle> cap = triangulate(outline);
    if (cap.empty()) return s;
    const float half = depth / 2, b = std::clamp(bevel, 0.0f, half * 0.95f);
    const auto ring = [&](const Outline& points, float z) {
        for (const Vec2& p : points)
            s.positions.push_back({p.x, p.y, z});
    };
    const Outline face = b > 0 ? inset(outline, b) : outline;
    ring(face, half);
    if (b > 0) {
        ring(outline, half - b);
        ring(outline, -half + b);
    }
    ring(face, -half);
    const int n = static_cast<int>(outline.size()), rings = b > 0 ? 4 : 2;
    for (const Triangle& t : cap) {
        const int back = (rings - 1) * n;
        s.triangles.push_back(t);
        s.triangles.push_back({back + t[0], back + t[2], back + t[1]});
    }
    for (int r = 0; r + 1 < rings; ++r)
        for (int i = 0; i < n; ++i) {
            const int next = (i + 1) % n;
            quad(s, r * n + i, (r + 1) * n + i, (r + 1) * n + next, r * n + next);
        }
    return s;
}

Surface latheSurface(const std::vector<Vec2>& profile, int sides, float arc) {
    Surface s;
    const bool whole = arc >= 360;
    const int columns = whole ? sides : sides + 1, rows = static_cast<int>(profile.size());
    for (int i = 0; i < columns; ++i) {
        const float angle = radians(arc) * static_cast<float>(i) / static_cast<float>(sides);
        for (const Vec2& p : profile)
            s.positions.push_back({p.x * std::sin(angle), p.y, p.x * std::cos(angle)});
    }
    for (int i = 0; i < sides; ++i)
        for (int j = 0; j + 1 < rows; ++j) {
            const int a = i * rows + j, b = (i + 1) % columns * rows + j;
            quad(s, a, b, b + 1, a + 1);
        }
    // The profile may be written upwards or downwards: outside is where a closed solid has positive volume.
    float side = 0;
    for (int j = 0; j + 1 < rows; ++j) {
        const Vec2 a = profile[static_cast<std::size_t>(j)], b = profile[static_cast<std::size_t>(j) + 1];
        side += (b.y - a.y) * (a.x * a.x + a.x * b.x + b.x * b.x);
    }
    if (side < 0)
        for (Triangle& t : s.triangles)
            std::swap(t[1], t[2]);
    weld(s);
    return s;
}

Surface loftSurface(const std::vector<std::vector<Vec3>>& rings, bool capped) {
    Surface s;
    const int n = static_cast<int>(rings[0].size()), count = static_cast<int>(rings.size());
    for (const auto& ring : rings)
        s.positions.insert(s.positions.end(), ring.begin(), ring.end());
    for (int r = 0; r + 1 < count; ++r)
        for (int i = 0; i < n; ++i) {
            const int next = (i + 1) % n;
            quad(s, r * n + i, r * n + next, (r + 1) * n + next, (r + 1) * n + i);
        }
    if (!capped) return s;
    for (const bool last : {false, true}) {
        const int base = last ? (count - 1) * n : 0;
        Vec3 middle;
        for (int i = 0; i < n; ++i)
            middle += s.positions[static_cast<std::size_t>(base + i)];
        s.positions.push_back(middle * (1 / static_cast<float>(n)));
        for (int i = 0; i < n; ++i) {
            const int a = base + i, b = base + (i + 1) % n;
            s.triangles.push_back(last ? Triangle{a, b, lastIndex(s)} : Triangle{b, a, lastIndex(s)});
        }
    }
    weld(s);
    return s;
}

Surface tubeSurface(const std::vector<Vec4>& knots, int sides, bool closed) {
    const int n = static_cast<int>(knots.size());
    const auto point = [&](int i) {
        const Vec4& k = knots[static_cast<std::size_t>(closed ? (i + n) % n : std::clamp(i, 0, n - 1))];
        return Vec3{k.x, k.y, k.z};
    };
    // The ring's frame is carried along the path by the shortest turns, so that it does not twist.
    Vec3 along = normalized(point(1) - point(0));
    Vec3 side = normalized(cross(along, std::fabs(along.z) < 0.9f ? Vec3{0, 0, 1} : Vec3{0, 1, 0}));
    std::vector<std::vector<Vec3>> rings;
    for (int i = 0; i < n; ++i) {
        const Vec3 ahead = normalized(point(i + 1) - point(i - 1));
        side = rotate(quatBetween(along, ahead), side);
        along = ahead;
        const Vec3 up = cross(along, side);
        std::vector<Vec3> ring;
        for (int k = 0; k < sides; ++k) {
            const float angle = 2 * Zelkor::pi * static_cast<float>(k) / static_cast<float>(sides);
            ring.push_back(point(i) + (side * std::cos(angle) + up * std::sin(angle)) *
                                          knots[static_cast<std::size_t>(i)].w);
        }
        rings.push_back(std::move(ring));
    }
    if (closed) rings.push_back(rings.front());
    Surface s = loftSurface(rings, !closed);
    weld(s);
    return s;
}

Surface planeSurface(const Vec2& size, bool twoSided) {
    return stripSurface({{-size.x / 2, -size.y / 2, 0}, {-size.x / 2, size.y / 2, 0}},
                        {{size.x / 2, -size.y / 2, 0}, {size.x / 2, size.y / 2, 0}}, twoSided);
}

Surface stripSurface(const std::vector<Vec3>& left, const std::vector<Vec3>& right, bool twoSided) {
    Surface s;
    for (std::size_t i = 0; i < left.size(); ++i) {
        s.positions.push_back(left[i]);
        s.positions.push_back(right[i]);
        const int top = lastIndex(s);
        if (i > 0) quad(s, top - 3, top - 2, top, top - 1);
    }
    if (twoSided) append(s, twoSidedCopy(s));
    return s;
}

Surface plankSurface(const Vec3& size, float bevel, float wobble, float chip, float step, int seed) {
    const Vec3 h = size * 0.5f;
    const float b = std::clamp(bevel, 0.0f, 0.45f * std::min(size.y, size.z));
    const int pieces = std::max(1, static_cast<int>(std::lround(size.x / step)));
    std::vector<std::vector<Vec3>> rings;
    for (int i = 0; i <= pieces; ++i) {
        const bool end = i == 0 || i == pieces;
        const float x = -h.x + size.x * static_cast<float>(i) / static_cast<float>(pieces);
        const float top = h.y + wobble * (2 * hashUnit(i, seed, 1) - 1),
                    bottom = -h.y + wobble * (2 * hashUnit(i, seed, 2) - 1);
        std::vector<Vec2> section{{bottom, -h.z}, {top, -h.z}, {top, h.z}, {bottom, h.z}};
        if (b > 0)
            section = {{bottom + b, -h.z}, {top - b, -h.z},   {top, -h.z + b},   {top, h.z - b},
                       {top - b, h.z},     {bottom + b, h.z}, {bottom, h.z - b}, {bottom, -h.z + b}};
        std::vector<Vec3> ring;
        // The ends are broken: each corner of an end stands somewhere else, front and back alike.
        for (const Vec2& p : section) {
            const float off =
                chip * hashUnit(p.x > 0 ? 1 : 0, seed + i, 3) + 0.3f * chip * hashUnit(p.y > 0, seed + i, 4);
            ring.push_back({end ? x + (i == 0 ? off : -off) : x, p.x, p.y});
        }
        rings.push_back(std::move(ring));
    }
    return loftSurface(rings, true);
}

Surface rockSurface(const Vec3& size, int cuts, int triangles, int seed) {
    Surface s = boxSurface({2, 2, 2}, 0);
    splitLongEdges(s, 0.45f);
    weld(s);
    std::vector<Vec4> planes;
    for (int i = 0; i < cuts; ++i) {
        // Spread over the ball in a spiral, then shaken, so that no side stays round.
        const float y = 1 - 2 * (static_cast<float>(i) + 0.5f) / static_cast<float>(cuts);
        const float angle = 2.39996f * static_cast<float>(i) + 0.9f * hashUnit(i, seed, 5);
        const float flat = std::sqrt(1 - y * y);
        const Vec3 n = normalized(Vec3{flat * std::cos(angle), y, flat * std::sin(angle)} +
                                  0.5f * Vec3{hashUnit(i, seed, 6) - 0.5f, hashUnit(i, seed, 7) - 0.5f,
                                              hashUnit(i, seed, 8) - 0.5f});
        planes.push_back({n.x, n.y, n.z, 0.72f + 0.28f * hashUnit(i, seed, 9)});
    }
    for (Vec3& p : s.positions) {
        const Vec3 d = normalized(p);
        float reach = 1.15f;
        for (const Vec4& plane : planes) {
            const float facing = plane.x * d.x + plane.y * d.y + plane.z * d.z;
            if (facing > 0.05f) reach = std::min(reach, plane.w / facing);
        }
        p = d * reach;
    }
    const Box box = boundsOf(s);
    const Vec3 extent = box.size(), middle = (box.lo + box.hi) * 0.5f;
    for (Vec3& p : s.positions)
        p = Zelkor::scaled(p - middle, {size.x / extent.x, size.y / extent.y, size.z / extent.z});
    simplify(s, triangles);
    return s;
}

} // namespace forge
