#include "mesh/Region.h"

#include <geos_c.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>

namespace forge {

using Zelkor::Vec2;
using Zelkor::Vec3;

namespace {

// The library's own state; it tells nobody but the results what went wrong.
struct Context {
    GEOSContextHandle_t handle = GEOS_init_r();
    Context() = default;
    ~Context() { GEOS_finish_r(handle); }
    Context(const Context&) = delete;
};

GEOSContextHandle_t geos() {
    static const Context context;
    return context.handle;
}

struct Destroy {
    void operator()(const GEOSGeometry* geometry) const {
        GEOSGeom_destroy_r(geos(), const_cast<GEOSGeometry*>(geometry));
    }
};
using Temporary = std::unique_ptr<GEOSGeometry, Destroy>;

// Outlines are kept to this grid, in units, so that corners made twice are the same corner.
constexpr double grid = 1e-4;
// A corner nearer than this to the line between its neighbours is none: triangles there would have no area.
constexpr float flatness = 1e-3f;

GEOSGeometry* checked(GEOSGeometry* geometry) {
    if (!geometry) throw std::runtime_error("this outline cannot be worked with");
    return geometry;
}

Temporary polygonOf(const Outline& outline) {
    const auto n = static_cast<unsigned>(outline.size());
    GEOSCoordSequence* corners = GEOSCoordSeq_create_r(geos(), n + 1, 2);
    for (unsigned i = 0; i <= n; ++i) {
        const Vec2& p = outline[i % n];
        GEOSCoordSeq_setXY_r(geos(), corners, i, std::round(static_cast<double>(p.x) / grid) * grid,
                             std::round(static_cast<double>(p.y) / grid) * grid);
    }
    GEOSGeometry* ring = checked(GEOSGeom_createLinearRing_r(geos(), corners));
    const Temporary polygon(checked(GEOSGeom_createPolygon_r(geos(), ring, nullptr, 0)));
    return Temporary(checked(GEOSMakeValid_r(geos(), polygon.get())));
}

Outline withoutFlatCorners(Outline outline) {
    for (std::size_t i = 0; outline.size() > 3 && i < outline.size();) {
        const std::size_t n = outline.size();
        const Vec2 &a = outline[(i + n - 1) % n], &b = outline[i], &c = outline[(i + 1) % n];
        const float dx = c.x - a.x, dy = c.y - a.y;
        if (std::fabs(dx * (b.y - a.y) - dy * (b.x - a.x)) > flatness * std::hypot(dx, dy) &&
            std::hypot(b.x - a.x, b.y - a.y) > flatness) {
            ++i;
            continue;
        }
        outline.erase(outline.begin() + static_cast<std::ptrdiff_t>(i));
        i -= std::min<std::size_t>(i, 1); // the one before has another neighbour now
    }
    return outline;
}

// What is thinner than a corner is wide.
bool isSliver(const Outline& outline) {
    float around = 0;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const Vec2 &a = outline[i], &b = outline[(i + 1) % outline.size()];
        around += std::hypot(b.x - a.x, b.y - a.y);
    }
    return std::fabs(signedArea2(outline)) <= flatness * around;
}

Outline outlineOf(const GEOSGeometry* ring) {
    const GEOSCoordSequence* corners = GEOSGeom_getCoordSeq_r(geos(), ring);
    unsigned n = 0;
    GEOSCoordSeq_getSize_r(geos(), corners, &n);
    Outline outline;
    for (unsigned i = 0; i + 1 < n; ++i) { // the last is the first again
        double x = 0, y = 0;
        GEOSCoordSeq_getXY_r(geos(), corners, i, &x, &y);
        outline.push_back({static_cast<float>(x), static_cast<float>(y)});
    }
    return outline;
}

// Calls visit for every polygon, however collections nest.
template <class Visit>
void eachPolygon(const GEOSGeometry* geometry, const Visit& visit) {
    if (GEOSGeomTypeId_r(geos(), geometry) == GEOS_POLYGON) {
        if (!GEOSisEmpty_r(geos(), geometry)) visit(geometry);
        return;
    }
    const int pieces = GEOSGetNumGeometries_r(geos(), geometry);
    if (pieces < 1 || GEOSGeomTypeId_r(geos(), geometry) < GEOS_MULTIPOINT) return; // points and lines
    for (int i = 0; i < pieces; ++i)
        eachPolygon(GEOSGetGeometryN_r(geos(), geometry, i), visit);
}

// Positions of a surface by their place in the picture.
class Corners {
  public:
    explicit Corners(Surface& s) : surface(s) {}
    int at(const Vec2& p, float z) {
        const auto [entry, fresh] = known.try_emplace({p.x, p.y, z}, static_cast<int>(surface.positions.size()));
        if (fresh) surface.positions.push_back({p.x, p.y, z});
        return entry->second;
    }
    bool knows(const Vec2& p, float z) const { return known.count({p.x, p.y, z}) > 0; }

  private:
    Surface& surface;
    std::map<std::array<float, 3>, int> known;
};

Vec2 flat(const Vec3& p) {
    return {p.x, p.y};
}

} // namespace

Region::Region() : geometry(checked(GEOSGeom_createEmptyPolygon_r(geos())), Destroy()) {}

Region Region::owned(GEOSGeom_t* result) {
    const Temporary raw(checked(result));
    return Region(Geometry(checked(GEOSGeom_setPrecision_r(geos(), raw.get(), grid, 0)), Destroy()));
}

Region Region::tidied(GEOSGeom_t* result) {
    std::vector<Outline> kept = owned(result).outlines();
    std::erase_if(kept, isSliver);
    return Region(kept);
}

Region::Region(const std::vector<Outline>& outlines) : Region() {
    for (const Outline& given : outlines) {
        const Outline outline = withoutFlatCorners(given);
        if (outline.size() < 3) continue;
        const Temporary polygon = polygonOf(outline);
        *this = owned(GEOSSymDifference_r(geos(), geometry.get(), polygon.get()));
    }
}

bool Region::empty() const {
    return area() <= 0;
}

double Region::area() const {
    double result = 0;
    GEOSArea_r(geos(), geometry.get(), &result);
    return result;
}

Region Region::joined(const Region& other) const {
    return tidied(GEOSUnion_r(geos(), geometry.get(), other.geometry.get()));
}

Region Region::without(const Region& other) const {
    return owned(GEOSDifference_r(geos(), geometry.get(), other.geometry.get()));
}

Region Region::within(const Region& other) const {
    return tidied(GEOSIntersection_r(geos(), geometry.get(), other.geometry.get()));
}

Region Region::grown(float by) const {
    if (by == 0) return *this;
    constexpr int arcPieces = 8;
    constexpr double longestMitre = 3;
    return tidied(GEOSBufferWithStyle_r(geos(), geometry.get(), static_cast<double>(by), arcPieces,
                                        GEOSBUF_CAP_FLAT, GEOSBUF_JOIN_MITRE, longestMitre));
}

std::vector<Outline> Region::outlines() const {
    std::vector<Outline> result;
    eachPolygon(geometry.get(), [&](const GEOSGeometry* polygon) {
        result.push_back(outlineOf(GEOSGetExteriorRing_r(geos(), polygon)));
        makeCounterClockwise(result.back());
        for (int i = 0; i < GEOSGetNumInteriorRings_r(geos(), polygon); ++i) {
            result.push_back(outlineOf(GEOSGetInteriorRingN_r(geos(), polygon, i)));
            makeCounterClockwise(result.back());
            std::reverse(result.back().begin(), result.back().end());
        }
    });
    return result;
}

Surface Region::triangulated() const {
    Surface surface;
    Corners corners(surface);
    eachPolygon(geometry.get(), [&](const GEOSGeometry* polygon) {
        const Temporary triangles(checked(GEOSConstrainedDelaunayTriangulation_r(geos(), polygon)));
        eachPolygon(triangles.get(), [&](const GEOSGeometry* triangle) {
            Outline three = outlineOf(GEOSGetExteriorRing_r(geos(), triangle));
            makeCounterClockwise(three);
            surface.triangles.push_back({corners.at(three[0], 0), corners.at(three[1], 0), corners.at(three[2], 0)});
        });
    });
    return surface;
}

Surface cutoutSurface(const Region& shape, float depth, float bevel) {
    const Region region(shape.outlines());
    const float half = depth / 2, cut = std::clamp(bevel, 0.0f, depth * 0.9f), rim = half - cut;
    const Region face = cut > 0 ? region.grown(-cut) : region;
    Surface surface;
    Corners corners(surface);
    const auto lay = [&](const Surface& sheet, const auto& height, bool turned) {
        for (const Triangle& t : sheet.triangles) {
            Triangle laid;
            for (std::size_t k = 0; k < 3; ++k) {
                const Vec2 p = flat(sheet.positions[static_cast<std::size_t>(t[k])]);
                laid[k] = corners.at(p, height(p));
            }
            if (turned) std::swap(laid[1], laid[2]);
            surface.triangles.push_back(laid);
        }
    };
    lay(face.triangulated(), [&](const Vec2&) { return half; }, false);
    if (cut > 0) {
        // The bevel spans what lies between the rim and the face: it rises towards the face's corners.
        const auto height = [&](const Vec2& p) { return corners.knows(p, half) ? half : rim; };
        lay(region.without(face).triangulated(), height, false);
    }
    lay(region.triangulated(), [&](const Vec2&) { return -half; }, true);
    for (const Outline& outline : region.outlines())
        for (std::size_t i = 0; i < outline.size(); ++i) {
            const Vec2 &a = outline[i], &b = outline[(i + 1) % outline.size()];
            const int front = corners.at(a, rim), back = corners.at(a, -half), nextFront = corners.at(b, rim),
                      nextBack = corners.at(b, -half);
            surface.triangles.push_back({front, back, nextBack});
            surface.triangles.push_back({front, nextBack, nextFront});
        }
    return surface;
}

} // namespace forge
