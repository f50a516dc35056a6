#include "model/Finish.h"

#include "mesh/Angles.h"
#include "rig/Bake.h"
#include "sdf/SurfaceNets.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace forge {

using Zelkor::Vec2;
using Zelkor::Vec3;

namespace {

constexpr float leastWeight = 0.02f;

struct Corner {
    Vec3 position, local, normal, hull; // local: before the primitive was put in its place
    std::vector<std::pair<int, float>> influences;
};

enum class Plane { X, Y, Z };

Plane dominant(const Vec3& n) {
    // The front wins ties: it is what the viewer sees.
    const float x = std::fabs(n.x), y = std::fabs(n.y), z = std::fabs(n.z) + 1e-3f;
    return z >= x && z >= y ? Plane::Z : y >= x ? Plane::Y : Plane::X;
}

Vec2 textureCoordinates(const Mapping& mapping, float units, const Vec3& p, Plane plane) {
    Vec2 flat = plane == Plane::Z ? Vec2{p.x, -p.y} : plane == Plane::Y ? Vec2{p.x, p.z} : Vec2{-p.z, -p.y};
    flat = {flat.x / units * mapping.scale.x, flat.y / units * mapping.scale.y};
    const float c = std::cos(radians(mapping.turn)), s = std::sin(radians(mapping.turn));
    return {c * flat.x - s * flat.y + mapping.offset.x, s * flat.x + c * flat.y + mapping.offset.y};
}

// Collects corners into shared vertices and triangles by material.
class Assembly {
  public:
    Assembly(const Model& m, MeshRecord& r) : model(m), record(r) {
        turn = Zelkor::quatFromAxisAngle(radians(m.yaw), {0, 1, 0});
    }

    // Vertices are shared within one batch only: batches are separate hulls.
    void beginBatch(const Part& part, const Mapping& m) {
        mapping = &m;
        known.clear();
        submesh = nullptr;
        for (auto& each : record.submeshes)
            if (each.material == part.material) submesh = &each;
        if (!submesh) submesh = &record.submeshes.emplace_back(MeshRecord::Submesh{part.material, {}});
    }

    void triangle(const std::array<Corner, 3>& corners) {
        const Vec3* p[3];
        const bool local = mapping->projection == Mapping::Projection::Local;
        for (std::size_t k = 0; k < 3; ++k)
            p[k] = local ? &corners[k].local : &corners[k].position;
        Plane plane = Plane::Z;
        switch (mapping->projection) {
        case Mapping::Projection::Front:
            plane = Plane::Z;
            break;
        case Mapping::Projection::Side:
            plane = Plane::X;
            break;
        case Mapping::Projection::Top:
            plane = Plane::Y;
            break;
        case Mapping::Projection::Box:
        case Mapping::Projection::Local:
            plane = dominant(normalized(cross(*p[1] - *p[0], *p[2] - *p[0])));
            break;
        }
        std::array<int, 3> indices{};
        for (std::size_t k = 0; k < 3; ++k)
            indices[k] = vertex(corners[k], textureCoordinates(*mapping, model.texture, *p[k], plane));
        if (indices[0] != indices[1] && indices[1] != indices[2] && indices[2] != indices[0])
            submesh->triangles.push_back(indices);
    }

  private:
    int vertex(const Corner& corner, const Vec2& uv) {
        const auto fixed = [](float v, float scale) { return std::lround(v * scale); };
        const std::array<long, 8> key{fixed(corner.position.x, 1e4f),
                                      fixed(corner.position.y, 1e4f),
                                      fixed(corner.position.z, 1e4f),
                                      fixed(corner.normal.x, 500),
                                      fixed(corner.normal.y, 500),
                                      fixed(corner.normal.z, 500),
                                      fixed(uv.x, 1e5f),
                                      fixed(uv.y, 1e5f)};
        const int next = static_cast<int>(record.positions.size());
        const auto [entry, fresh] = known.try_emplace(key, next);
        if (!fresh) return entry->second;
        record.positions.push_back(rotate(turn, corner.position));
        record.normals.push_back(rotate(turn, corner.normal));
        const Vec3 hull = rotate(turn, corner.hull);
        const auto channel = [](float v) {
            return static_cast<std::uint8_t>(std::clamp(std::lround((v * 0.5f + 0.5f) * 255), 0L, 255L));
        };
        record.colours.push_back({channel(hull.x), channel(hull.y), channel(hull.z)});
        record.texCoords[0].push_back(uv);
        for (const auto& [joint, weight] : corner.influences) {
            record.influences.emplace_back(next, joint);
            record.weights.push_back(weight);
        }
        return next;
    }

    const Model& model;
    MeshRecord& record;
    Zelkor::Quat turn;
    const Mapping* mapping = nullptr;
    MeshRecord::Submesh* submesh = nullptr;
    std::map<std::array<long, 8>, int> known;
};

std::vector<std::pair<int, float>> weightsAt(const Part& part, const std::vector<float>& distances) {
    return blendBones(distances, part.soft, part.influences);
}

void addFieldPart(const Model& model, const Part& part, const Surface& surface, Assembly& assembly) {
    const std::vector<BoneSegment> segments = model.rig.segments();
    const float reach = std::max(1e-3f, 0.002f * Zelkor::length(part.field.bounds().size()));
    std::vector<Corner> corners;
    for (const Vec3& p : surface.positions) {
        Corner corner{p, p, part.field.normal(p, reach), {}, {}};
        corner.hull = corner.normal;
        if (!segments.empty()) {
            std::vector<float> distances(segments.size(), 1e30f);
            part.field.boneDistances(p, segments, distances);
            corner.influences = weightsAt(part, distances);
        }
        corners.push_back(std::move(corner));
    }
    assembly.beginBatch(part, part.mapping);
    for (const Triangle& t : surface.triangles)
        assembly.triangle({corners[static_cast<std::size_t>(t[0])], corners[static_cast<std::size_t>(t[1])],
                           corners[static_cast<std::size_t>(t[2])]});
}

Vec3 middle(const Surface& surface) {
    Vec3 sum;
    for (const Vec3& p : surface.positions)
        sum += p;
    return surface.positions.empty() ? sum : sum * (1 / static_cast<float>(surface.positions.size()));
}

void addPiece(const Model& model, const Part& part, const Piece& piece, Assembly& assembly) {
    Surface local = piece.surface;
    if (curves(piece.warps)) {
        weld(local);
        splitLongEdges(local, piece.step);
    }
    Surface placed = local;
    applyWarps(placed, piece.warps, 1e30f);
    if (mirrors(piece.warps)) local.triangles = placed.triangles;

    // Faces around each position; coincident positions of one piece count as one.
    Surface joined = placed;
    std::map<std::array<long, 3>, int> where;
    std::vector<int> spot;
    for (const Vec3& p : placed.positions)
        spot.push_back(
            where
                .try_emplace({std::lround(p.x * 1e4f), std::lround(p.y * 1e4f), std::lround(p.z * 1e4f)},
                             static_cast<int>(where.size()))
                .first->second);
    struct Face {
        Vec3 normal;
        float angle;
    };
    std::vector<std::vector<Face>> faces(where.size());
    std::vector<Vec3> faceNormals;
    for (const Triangle& t : placed.triangles) {
        const auto at = [&](std::size_t k) { return placed.positions[static_cast<std::size_t>(t[k % 3])]; };
        faceNormals.push_back(normalized(cross(at(1) - at(0), at(2) - at(0))));
        for (std::size_t k = 0; k < 3; ++k) {
            const Vec3 u = normalized(at(k + 1) - at(k)), v = normalized(at(k + 2) - at(k));
            const float angle = std::acos(Zelkor::clamp(dot(u, v), -1, 1));
            faces[static_cast<std::size_t>(spot[static_cast<std::size_t>(t[k])])].push_back(
                {faceNormals.back(), angle});
        }
    }

    // Equal pieces of one model show different parts of the drawing: each lies on it where it stands.
    const Vec3 shift = middle(placed) - middle(local);
    const std::vector<BoneSegment> segments = model.rig.segments();
    const float together = std::cos(radians(piece.smoothAngle)) - 1e-4f;
    assembly.beginBatch(part, piece.mapping);
    for (std::size_t i = 0; i < placed.triangles.size(); ++i) {
        std::array<Corner, 3> corners;
        for (std::size_t k = 0; k < 3; ++k) {
            const auto index = static_cast<std::size_t>(placed.triangles[i][k]);
            Corner& corner = corners[k];
            corner.position = placed.positions[index];
            corner.local = local.positions[index] + shift;
            for (const Face& face : faces[static_cast<std::size_t>(spot[index])]) {
                corner.hull += face.normal * face.angle;
                if (dot(face.normal, faceNormals[i]) >= together) corner.normal += face.normal * face.angle;
            }
            Zelkor::normalize(corner.normal);
            // The two sides of a sheet cancel out: it has no hull of its own.
            if (Zelkor::normalize(corner.hull) < 1e-3f) corner.hull = corner.normal;
            if (!segments.empty()) {
                std::vector<float> distances(segments.size(), 1e30f);
                bringBones(distances, piece.bones, segments, corner.position, 0);
                corner.influences = weightsAt(part, distances);
            }
        }
        assembly.triangle(corners);
    }
}

float areaOf(const Surface& surface) {
    float area = 0;
    for (const Triangle& t : surface.triangles) {
        const auto at = [&](std::size_t k) { return surface.positions[static_cast<std::size_t>(t[k])]; };
        area += 0.5f * Zelkor::length(cross(at(1) - at(0), at(2) - at(0)));
    }
    return area;
}

// Polygonises the field parts and divides the model's triangles among them.
std::vector<Surface> fieldSurfaces(const Model& model) {
    constexpr int fewest = 16;
    std::vector<Surface> surfaces;
    float wanted = 0;
    for (const Part& part : model.parts) {
        Surface surface;
        if (!part.solid) {
            const Vec3 size = part.field.bounds().size();
            const float cell = part.cell > 0 ? part.cell : std::max({size.x, size.y, size.z}) / 64;
            surface = surfaceNets(part.field, cell);
            if (surface.triangles.empty())
                throw SourceError(part.place, "part " + part.name + " has no surface");
            // By the square root of the area: small parts need their shape more than big ones their
            // smoothness.
            if (part.triangles == 0) wanted += part.share * std::sqrt(areaOf(surface));
        }
        surfaces.push_back(std::move(surface));
    }
    for (std::size_t i = 0; i < surfaces.size(); ++i) {
        const Part& part = model.parts[i];
        if (part.solid) continue;
        const float share = part.share * std::sqrt(areaOf(surfaces[i])) / std::max(wanted, 1e-9f);
        simplify(surfaces[i],
                 part.triangles > 0
                     ? part.triangles
                     : std::max(fewest, static_cast<int>(share * static_cast<float>(model.triangles))));
    }
    return surfaces;
}

} // namespace

std::vector<std::pair<int, float>> blendBones(const std::vector<float>& distances, float soft, int most) {
    const float nearest = *std::min_element(distances.begin(), distances.end());
    std::vector<std::pair<int, float>> result;
    for (std::size_t i = 0; i < distances.size(); ++i) {
        const float fade = distances[i] <= nearest ? 1 : soft > 0 ? 1 - (distances[i] - nearest) / soft : 0;
        if (fade > 0) result.emplace_back(static_cast<int>(i), fade * fade);
    }
    std::stable_sort(result.begin(), result.end(),
                     [](const auto& a, const auto& b) { return a.second > b.second; });
    if (static_cast<int>(result.size()) > most) result.resize(static_cast<std::size_t>(most));
    const auto rescale = [&] {
        float sum = 0;
        for (const auto& [bone, weight] : result)
            sum += weight;
        for (auto& [bone, weight] : result)
            weight /= sum;
    };
    rescale();
    while (result.back().second < leastWeight)
        result.pop_back();
    rescale();
    return result;
}

SkeletonRecord finishSkeleton(const Model& model) {
    SkeletonRecord skeleton = bakeRig(model.rig, model.yaw);
    for (const Clip& clip : model.clips)
        skeleton.clips.push_back(bakeClip(model.rig, clip, model.yaw));
    return skeleton;
}

MeshRecord finishMesh(const Model& model) {
    MeshRecord record;
    record.name = model.name;
    if (!model.rig.joints.empty())
        record.skeletonFile = (model.unitFolder.empty() ? "" : model.unitFolder + "/") + model.name + ".skel";
    record.texCoords.resize(1);
    Assembly assembly(model, record);
    const std::vector<Surface> surfaces = fieldSurfaces(model);
    bool anySolid = false;
    for (std::size_t i = 0; i < model.parts.size(); ++i) {
        const Part& part = model.parts[i];
        anySolid = anySolid || part.solid;
        if (part.solid) {
            for (const Piece& piece : part.pieces)
                addPiece(model, part, piece, assembly);
        } else {
            addFieldPart(model, part, surfaces[i], assembly);
        }
    }
    if (!anySolid) record.colours.clear(); // smooth normals serve the hull themselves
    Box box;
    for (const Vec3& p : record.positions)
        box.add(p);
    if (box.empty()) box.add(Vec3{});
    box.grow(model.boundsMargin);
    record.boxMin = box.lo;
    record.boxMax = box.hi;
    return record;
}

} // namespace forge
