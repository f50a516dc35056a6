#include "sdf/SurfaceNets.h"

#include <algorithm>
#include <cmath>

namespace forge {

using Zelkor::Vec3;

namespace {

constexpr int mostCells = 160;
constexpr int blockCells = 8;
// Blends and warps bend distances: a block is skipped only when it is this many half-diagonals away.
constexpr float skipMargin = 1.8f;

class Grid {
  public:
    Grid(const Field& f, float wanted) : field(f) {
        Box box = f.bounds();
        const Vec3 size = box.size();
        cell = std::max(wanted, std::max({size.x, size.y, size.z}) / mostCells);
        box.grow(cell * 1.5f);
        origin = box.lo;
        const auto count = [&](float length) {
            const int cells = static_cast<int>(std::ceil(length / cell)) + 1;
            return (cells + blockCells - 1) / blockCells * blockCells + 1;
        };
        nx = count(box.size().x);
        ny = count(box.size().y);
        nz = count(box.size().z);
        values.assign(
            static_cast<std::size_t>(nx) * static_cast<std::size_t>(ny) * static_cast<std::size_t>(nz), 1.0f);
        fill();
    }

    Surface polygonise() {
        Surface surface;
        std::vector<int> vertexOf(values.size(), -1);
        for (int k = 0; k + 1 < nz; ++k)
            for (int j = 0; j + 1 < ny; ++j)
                for (int i = 0; i + 1 < nx; ++i)
                    cellVertex(i, j, k, surface, vertexOf);
        for (int k = 1; k + 1 < nz; ++k)
            for (int j = 1; j + 1 < ny; ++j)
                for (int i = 1; i + 1 < nx; ++i)
                    crossingFaces(i, j, k, surface, vertexOf);
        return surface;
    }

  private:
    std::size_t at(int i, int j, int k) const {
        return (static_cast<std::size_t>(k) * static_cast<std::size_t>(ny) + static_cast<std::size_t>(j)) *
                   static_cast<std::size_t>(nx) +
               static_cast<std::size_t>(i);
    }
    Vec3 point(float i, float j, float k) const { return origin + Vec3{i, j, k} * cell; }

    void fill() {
        const float reach = 0.5f * std::sqrt(3.0f) * blockCells * cell * skipMargin;
        for (int k = 0; k < nz; k += blockCells)
            for (int j = 0; j < ny; j += blockCells)
                for (int i = 0; i < nx; i += blockCells) {
                    const float half = 0.5f * blockCells;
                    const float middle =
                        field.distance(point(static_cast<float>(i) + half, static_cast<float>(j) + half,
                                             static_cast<float>(k) + half));
                    fillBlock(i, j, k, middle, std::fabs(middle) > reach);
                }
    }

    void fillBlock(int i0, int j0, int k0, float middle, bool far) {
        for (int k = k0; k < std::min(k0 + blockCells, nz); ++k)
            for (int j = j0; j < std::min(j0 + blockCells, ny); ++j)
                for (int i = i0; i < std::min(i0 + blockCells, nx); ++i)
                    values[at(i, j, k)] =
                        far ? middle
                            : field.distance(
                                  point(static_cast<float>(i), static_cast<float>(j), static_cast<float>(k)));
    }

    // The mean of the points where the cell's edges cross the surface, then two steps down the gradient.
    void cellVertex(int i, int j, int k, Surface& surface, std::vector<int>& vertexOf) const {
        float corner[8];
        int inside = 0;
        for (int c = 0; c < 8; ++c) {
            corner[c] = values[at(i + (c & 1), j + (c >> 1 & 1), k + (c >> 2))];
            inside += corner[c] < 0;
        }
        if (inside == 0 || inside == 8) return;
        Vec3 sum;
        int crossings = 0;
        for (int c = 0; c < 8; ++c)
            for (int bit = 1; bit < 8; bit <<= 1) {
                const int other = c | bit;
                if (other == c || (corner[c] < 0) == (corner[other] < 0)) continue;
                const float t = corner[c] / (corner[c] - corner[other]);
                sum += Vec3{static_cast<float>(c & 1) + (bit == 1 ? t : 0),
                            static_cast<float>(c >> 1 & 1) + (bit == 2 ? t : 0),
                            static_cast<float>(c >> 2) + (bit == 4 ? t : 0)};
                ++crossings;
            }
        sum = sum * (1 / static_cast<float>(crossings));
        const Vec3 lo = point(static_cast<float>(i), static_cast<float>(j), static_cast<float>(k));
        Vec3 p = lo + sum * cell;
        for (int step = 0; step < 2; ++step)
            p -= field.normal(p, 0.2f * cell) * field.distance(p);
        // A crease can throw a vertex out of its cell; a little outside is fine, far is a spike.
        const Vec3 slack = Vec3{1, 1, 1} * (0.5f * cell);
        p = Zelkor::clampVec3(p, lo - slack, lo + slack * 3);
        vertexOf[at(i, j, k)] = static_cast<int>(surface.positions.size());
        surface.positions.push_back(p);
    }

    // Each grid edge whose ends differ in sign is crossed by a quad of the four cells around it.
    void crossingFaces(int i, int j, int k, Surface& surface, const std::vector<int>& vertexOf) const {
        const bool inside = values[at(i, j, k)] < 0;
        const auto quad = [&](bool other, int a, int b, int c, int d) {
            if (inside == other) return;
            if (!inside) std::swap(b, d);
            surface.triangles.push_back({a, b, c});
            surface.triangles.push_back({a, c, d});
        };
        const auto cellOf = [&](int di, int dj, int dk) { return vertexOf[at(i - di, j - dj, k - dk)]; };
        quad(values[at(i + 1, j, k)] < 0, cellOf(0, 0, 0), cellOf(0, 1, 0), cellOf(0, 1, 1), cellOf(0, 0, 1));
        quad(values[at(i, j + 1, k)] < 0, cellOf(0, 0, 0), cellOf(0, 0, 1), cellOf(1, 0, 1), cellOf(1, 0, 0));
        quad(values[at(i, j, k + 1)] < 0, cellOf(0, 0, 0), cellOf(1, 0, 0), cellOf(1, 1, 0), cellOf(0, 1, 0));
    }

    const Field& field;
    float cell = 1;
    Vec3 origin;
    int nx = 0, ny = 0, nz = 0;
    std::vector<float> values;
};

} // namespace

Surface surfaceNets(const Field& field, float cell) {
    return Grid(field, cell).polygonise();
}

} // namespace forge
