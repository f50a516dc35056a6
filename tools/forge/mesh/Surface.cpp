#include "mesh/Surface.h"

#include "mesh/Angles.h"

#include <meshoptimizer.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace forge {

using Zelkor::Vec3;

namespace {

const Vec3& at(const Surface& surface, int index) {
    return surface.positions[static_cast<std::size_t>(index)];
}

// A curve never needs more triangles than this from one primitive; it bounds a mistaken step.
constexpr std::size_t mostSplitTriangles = 40000;

} // namespace

Box boundsOf(const Surface& surface) {
    Box box;
    for (const Vec3& p : surface.positions)
        box.add(p);
    return box;
}

void append(Surface& a, const Surface& b) {
    const int base = static_cast<int>(a.positions.size());
    a.positions.insert(a.positions.end(), b.positions.begin(), b.positions.end());
    for (const Triangle& t : b.triangles)
        a.triangles.push_back({t[0] + base, t[1] + base, t[2] + base});
}

void applyWarps(Surface& surface, const WarpChain& chain, float step) {
    if (chain.empty()) return;
    if (curves(chain)) {
        weld(surface);
        splitLongEdges(surface, step);
    }
    for (Vec3& p : surface.positions)
        p = forward(chain, p);
    if (mirrors(chain))
        for (Triangle& t : surface.triangles)
            std::swap(t[1], t[2]);
}

void splitLongEdges(Surface& surface, float longest) {
    bool again = true;
    while (again && surface.triangles.size() < mostSplitTriangles) {
        again = false;
        std::map<std::pair<int, int>, int> middles;
        const auto middle = [&](int a, int b) {
            const float apart = Zelkor::distance(at(surface, a), at(surface, b));
            if (apart <= longest) return -1;
            const auto [entry, fresh] = middles.try_emplace({std::min(a, b), std::max(a, b)}, 0);
            if (fresh) {
                entry->second = static_cast<int>(surface.positions.size());
                surface.positions.push_back((at(surface, a) + at(surface, b)) * 0.5f);
            }
            return entry->second;
        };
        std::vector<Triangle> split;
        for (Triangle t : surface.triangles) {
            std::array<int, 3> m{middle(t[0], t[1]), middle(t[1], t[2]), middle(t[2], t[0])};
            const int count = (m[0] >= 0) + (m[1] >= 0) + (m[2] >= 0);
            again = again || count > 0;
            if (count == 0) {
                split.push_back(t);
            } else if (count == 3) {
                split.insert(split.end(), {{t[0], m[0], m[2]}, {m[0], t[1], m[1]}, {m[2], m[1], t[2]}, m});
            } else {
                // Turn the triangle until the only split (or the only whole) edge is the first (the last).
                while (count == 1 ? m[0] < 0 : m[2] >= 0) {
                    t = {t[1], t[2], t[0]};
                    m = {m[1], m[2], m[0]};
                }
                if (count == 1)
                    split.insert(split.end(), {{t[0], m[0], t[2]}, {m[0], t[1], t[2]}});
                else
                    split.insert(split.end(), {{t[0], m[0], t[2]}, {m[0], m[1], t[2]}, {m[0], t[1], m[1]}});
            }
        }
        surface.triangles = std::move(split);
    }
}

void weld(Surface& surface) {
    // Cells far smaller than any drawn detail; ordered, so that the result does not depend on hashing.
    constexpr float cell = 1e-4f;
    std::map<std::array<long, 3>, int> known;
    std::vector<int> remap;
    std::vector<Vec3> kept;
    for (const Vec3& p : surface.positions) {
        const std::array<long, 3> key{std::lround(p.x / cell), std::lround(p.y / cell),
                                      std::lround(p.z / cell)};
        const auto [entry, fresh] = known.try_emplace(key, static_cast<int>(kept.size()));
        if (fresh) kept.push_back(p);
        remap.push_back(entry->second);
    }
    std::vector<Triangle> triangles;
    for (const Triangle& t : surface.triangles) {
        const Triangle moved{remap[static_cast<std::size_t>(t[0])], remap[static_cast<std::size_t>(t[1])],
                             remap[static_cast<std::size_t>(t[2])]};
        if (moved[0] != moved[1] && moved[1] != moved[2] && moved[2] != moved[0]) triangles.push_back(moved);
    }
    surface.positions = std::move(kept);
    surface.triangles = std::move(triangles);
}

void simplify(Surface& surface, int target) {
    if (static_cast<int>(surface.triangles.size()) <= target) return;
    std::vector<unsigned> indices;
    for (const Triangle& t : surface.triangles)
        for (const int i : t)
            indices.push_back(static_cast<unsigned>(i));
    std::vector<unsigned> result(indices.size());
    const std::size_t count = meshopt_simplify(
        result.data(), indices.data(), indices.size(), &surface.positions[0].x, surface.positions.size(),
        sizeof(Vec3), static_cast<std::size_t>(target) * 3, 1.0f, 0, nullptr);
    std::vector<int> remap(surface.positions.size(), -1);
    std::vector<Vec3> kept;
    std::vector<Triangle> triangles;
    for (std::size_t i = 0; i < count; i += 3) {
        Triangle t{};
        for (std::size_t k = 0; k < 3; ++k) {
            int& index = remap[result[i + k]];
            if (index < 0) {
                index = static_cast<int>(kept.size());
                kept.push_back(surface.positions[result[i + k]]);
            }
            t[k] = index;
        }
        triangles.push_back(t);
    }
    surface.positions = std::move(kept);
    surface.triangles = std::move(triangles);
}

std::vector<Vec3> smoothNormals(const Surface& surface) {
    std::vector<Vec3> normals(surface.positions.size());
    for (const Triangle& t : surface.triangles) {
        const Vec3 face =
            normalized(cross(at(surface, t[1]) - at(surface, t[0]), at(surface, t[2]) - at(surface, t[0])));
        for (std::size_t k = 0; k < 3; ++k) {
            const Vec3 u = normalized(at(surface, t[(k + 1) % 3]) - at(surface, t[k]));
            const Vec3 v = normalized(at(surface, t[(k + 2) % 3]) - at(surface, t[k]));
            normals[static_cast<std::size_t>(t[k])] += face * std::acos(Zelkor::clamp(dot(u, v), -1, 1));
        }
    }
    for (Vec3& n : normals)
        Zelkor::normalize(n);
    return normals;
}

} // namespace forge
