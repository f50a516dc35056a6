#include "picture/Draw.h"

#include "mesh/Angles.h"
#include "picture/Strokes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <numeric>

namespace forge {

using Zelkor::Vec2;
using Zelkor::Vec3;

namespace {

constexpr int oversample = 3;

struct Texel {
    float depth = -1e30f;
    int hull = -1;
    int material = 0;
    Vec3 normal;
    Vec2 uv;
};

// A number for each vertex, the same on all that triangles or equal places join: one hull, one outline.
std::vector<int> hullsOf(const MeshRecord& mesh) {
    std::vector<int> root(mesh.positions.size());
    std::iota(root.begin(), root.end(), 0);
    const auto find = [&](int i) {
        while (root[static_cast<std::size_t>(i)] != i)
            i = root[static_cast<std::size_t>(i)];
        return i;
    };
    const auto join = [&](int a, int b) {
        const int low = std::min(find(a), find(b)), high = std::max(find(a), find(b));
        root[static_cast<std::size_t>(high)] = low;
    };
    std::map<std::array<long, 3>, int> places;
    for (std::size_t i = 0; i < mesh.positions.size(); ++i) {
        const Vec3& p = mesh.positions[i];
        const std::array<long, 3> key{std::lround(p.x * 1e3f), std::lround(p.y * 1e3f),
                                      std::lround(p.z * 1e3f)};
        join(places.try_emplace(key, static_cast<int>(i)).first->second, static_cast<int>(i));
    }
    for (const auto& submesh : mesh.submeshes)
        for (const auto& t : submesh.triangles) {
            join(t[0], t[1]);
            join(t[0], t[2]);
        }
    for (std::size_t i = 0; i < root.size(); ++i)
        root[i] = find(static_cast<int>(i));
    return root;
}

class Raster {
  public:
    Raster(int w, int h)
        : width(w), height(h), texels(static_cast<std::size_t>(w) * static_cast<std::size_t>(h)) {}

    const Texel& at(int x, int y) const {
        x = std::clamp(x, 0, width - 1);
        y = std::clamp(y, 0, height - 1);
        return texels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }

    // Screen positions: x right, y down, z towards the viewer. Faces turned away are left out.
    void triangle(const Vec3 (&p)[3], const Vec3 (&n)[3], const Vec2 (&uv)[3], int hull, int material) {
        const float area = (p[1].x - p[0].x) * (p[2].y - p[0].y) - (p[2].x - p[0].x) * (p[1].y - p[0].y);
        if (area >= -1e-9f) return;
        const int x0 = std::max(0, static_cast<int>(std::floor(std::min({p[0].x, p[1].x, p[2].x}))));
        const int x1 = std::min(width - 1, static_cast<int>(std::ceil(std::max({p[0].x, p[1].x, p[2].x}))));
        const int y0 = std::max(0, static_cast<int>(std::floor(std::min({p[0].y, p[1].y, p[2].y}))));
        const int y1 = std::min(height - 1, static_cast<int>(std::ceil(std::max({p[0].y, p[1].y, p[2].y}))));
        for (int y = y0; y <= y1; ++y)
            for (int x = x0; x <= x1; ++x) {
                const float px = static_cast<float>(x) + 0.5f, py = static_cast<float>(y) + 0.5f;
                float w[3];
                for (int k = 0; k < 3; ++k) {
                    const Vec3 &a = p[(k + 1) % 3], &b = p[(k + 2) % 3];
                    w[k] = ((b.x - a.x) * (py - a.y) - (px - a.x) * (b.y - a.y)) / area;
                }
                if (w[0] < 0 || w[1] < 0 || w[2] < 0) continue;
                const float depth = w[0] * p[0].z + w[1] * p[1].z + w[2] * p[2].z;
                Texel& texel = texels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                                      static_cast<std::size_t>(x)];
                if (depth <= texel.depth) continue;
                texel = {depth,
                         hull,
                         material,
                         n[0] * w[0] + n[1] * w[1] + n[2] * w[2],
                         {uv[0].x * w[0] + uv[1].x * w[1] + uv[2].x * w[2],
                          uv[0].y * w[0] + uv[1].y * w[1] + uv[2].y * w[2]}};
            }
    }

    int width, height;
    std::vector<Texel> texels;
};

Vec3 materialTint(const std::string& name) {
    // Pale, and different for different names.
    std::uint32_t h = 2166136261u;
    for (const char c : name)
        h = (h ^ static_cast<unsigned char>(c)) * 16777619u;
    const auto channel = [&](int shift) {
        return 0.72f + 0.24f * static_cast<float>(h >> shift & 255) / 255.0f;
    };
    return {channel(0), channel(9), channel(18)};
}

bool isLine(const Raster& raster, int x, int y, float scale) {
    const Texel& here = raster.at(x, y);
    for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx) {
            const Texel& there = raster.at(x + dx, y + dy);
            if ((here.hull < 0) != (there.hull < 0)) return true;
            if (here.hull < 0) continue;
            if (there.hull != here.hull && there.depth > here.depth) return true;
            if (there.depth > here.depth + 12 * oversample / scale) return true;
        }
    return false;
}

} // namespace

Posed restPose(const MeshRecord& mesh) {
    return {mesh.positions, mesh.normals};
}

Canvas drawMesh(const MeshRecord& mesh, const Posed& posed, const View& view, const Vec3& centre, float scale,
                int width, int height) {
    Raster raster(width * oversample, height * oversample);
    const float zoom = scale * oversample;
    const Zelkor::Quat turn = Zelkor::quatFromAxisAngle(radians(view.pitch), {1, 0, 0}) *
                              Zelkor::quatFromAxisAngle(radians(view.yaw), {0, 1, 0});
    const std::vector<int> hulls = hullsOf(mesh);
    std::vector<Vec3> screen, normals;
    for (std::size_t i = 0; i < posed.positions.size(); ++i) {
        const Vec3 p = rotate(turn, posed.positions[i] - centre);
        screen.push_back({static_cast<float>(raster.width) / 2 + p.x * zoom,
                          static_cast<float>(raster.height) / 2 - p.y * zoom, p.z});
        normals.push_back(rotate(turn, posed.normals[i]));
    }
    for (std::size_t m = 0; m < mesh.submeshes.size(); ++m) {
        if (mesh.submeshes[m].material == "collision") continue;
        for (const auto& t : mesh.submeshes[m].triangles) {
            const std::size_t a = static_cast<std::size_t>(t[0]), b = static_cast<std::size_t>(t[1]),
                              c = static_cast<std::size_t>(t[2]);
            const auto& uv = mesh.texCoords[0];
            raster.triangle({screen[a], screen[b], screen[c]}, {normals[a], normals[b], normals[c]},
                            {uv[a], uv[b], uv[c]}, hulls[a], static_cast<int>(m));
        }
    }
    Canvas canvas(width, height);
    const Vec3 light = normalized({-0.45f, 0.75f, 0.5f});
    const Vec3 paper{0.96f, 0.94f, 0.89f}, graphite{0.15f, 0.15f, 0.17f};
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            Vec3 sum;
            for (int k = 0; k < oversample * oversample; ++k) {
                const int sx = x * oversample + k % oversample, sy = y * oversample + k / oversample;
                const Texel& texel = raster.at(sx, sy);
                Vec3 colour = paper;
                if (texel.hull >= 0 && view.silhouette) {
                    colour = graphite;
                } else if (isLine(raster, sx, sy, scale)) {
                    colour = graphite * 0.5f;
                } else if (texel.hull >= 0) {
                    const float lit =
                        Zelkor::clamp(dot(normalized(texel.normal), light) * 0.55f + 0.45f, 0, 1);
                    const Vec3 tint =
                        materialTint(mesh.submeshes[static_cast<std::size_t>(texel.material)].material);
                    const float ink =
                        view.hatch ? strokeInk(texel.uv, 0.08f + 0.9f * lit) : 0.75f * (1 - lit);
                    colour = tint * (1 - ink) + graphite * ink;
                }
                sum += colour;
            }
            canvas.set(x, y, sum * (1.0f / (oversample * oversample)));
        }
    return canvas;
}

} // namespace forge
