#include "picture/Sheet.h"

#include "mesh/Box.h"
#include "model/Finish.h"
#include "model/ModelReader.h"
#include "write/OutputFile.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

namespace forge {

using Zelkor::Vec3;

namespace {

constexpr int silhouetteHeight = 130; // pixels a figure has at play distance

struct Framing {
    Vec3 centre;
    float extent; // units across the largest side, a margin included
};

Framing framing(const Box& box) {
    const Vec3 size = box.size();
    const float flat = std::max({size.x, size.y, size.z});
    // The slanted view shows a diagonal.
    return {(box.lo + box.hi) * 0.5f, std::max({1.12f * flat, 0.8f * Zelkor::length(size), 1e-3f})};
}

Box boxOf(const MeshRecord& mesh, const Posed& posed) {
    Box box;
    for (const auto& submesh : mesh.submeshes)
        if (submesh.material != "collision")
            for (const auto& t : submesh.triangles)
                for (const int i : t)
                    box.add(posed.positions[static_cast<std::size_t>(i)]);
    if (box.empty()) box.add(Vec3{});
    return box;
}

Posed poseFor(const LoadedUnit& unit, const std::string& clip, float time) {
    return clip.empty() ? restPose(unit.mesh) : posedAt(unit.mesh, unit.skeleton, clip, time);
}

// Shaded from the side asked for and a quarter round, from above at a slant, and as play-size silhouettes.
Canvas drawViews(const LoadedUnit& unit, const PictureOptions& options) {
    const Posed posed = poseFor(unit, options.clip, options.time);
    const Framing frame = framing(boxOf(unit.mesh, posed));
    const int size = options.size;
    const float scale = static_cast<float>(size) / frame.extent;
    Canvas canvas(size * 3 + 220, size, 245);
    const View views[] = {{options.yaw, options.pitch},
                          {options.yaw - 90, options.pitch},
                          {options.yaw - 35, options.pitch + 25}};
    for (int i = 0; i < 3; ++i)
        canvas.paste(drawMesh(unit.mesh, posed, views[i], frame.centre, scale, size, size), size * i, 0);
    View filled = views[0];
    filled.silhouette = true;
    const float tall = std::max(boxOf(unit.mesh, posed).size().y, 0.3f * frame.extent);
    const int side = std::max(150, size / 2);
    canvas.paste(drawMesh(unit.mesh, posed, filled, frame.centre, silhouetteHeight / tall, 210, side),
                 size * 3 + 5, 0);
    canvas.paste(drawMesh(unit.mesh, posed, views[0], frame.centre, silhouetteHeight / tall, 210, side),
                 size * 3 + 5, side);
    return canvas;
}

Canvas drawSheet(const LoadedUnit& unit, const PictureOptions& options) {
    std::vector<const ClipRecord*> rows;
    for (const ClipRecord& clip : unit.skeleton.clips)
        if (options.clips.empty() || std::count(options.clips.begin(), options.clips.end(), clip.name))
            rows.push_back(&clip);
    Box box = boxOf(unit.mesh, restPose(unit.mesh));
    box.grow(0.08f * Zelkor::length(box.size())); // poses reach farther than rest
    const Framing frame = framing(box);
    const int cell = std::clamp(options.size / 2, 100, 400), moments = std::max(options.moments, 1);
    Canvas canvas(cell * moments, std::max<int>(1, static_cast<int>(rows.size())) * cell, 245);
    for (std::size_t r = 0; r < rows.size(); ++r) {
        const float length = clipLength(*rows[r]);
        for (int m = 0; m < moments; ++m) {
            const float time =
                moments > 1 ? length * static_cast<float>(m) / static_cast<float>(moments - 1) : 0;
            const Posed posed = posedAt(unit.mesh, unit.skeleton, rows[r]->name, time);
            const View view{options.yaw, options.pitch};
            canvas.paste(drawMesh(unit.mesh, posed, view, frame.centre,
                                  static_cast<float>(cell) / frame.extent, cell, cell),
                         cell * m, static_cast<int>(r) * cell);
        }
        char text[80];
        std::snprintf(text, sizeof text, "%s %.2f", rows[r]->name.c_str(), static_cast<double>(length));
        canvas.label(4, static_cast<int>(r) * cell + 4, text);
    }
    return canvas;
}

} // namespace

LoadedUnit loadUnit(const std::string& path, const std::vector<std::string>& includeFolders) {
    LoadedUnit unit;
    if (std::filesystem::path(path).extension() == ".model") {
        const ModelSource source = readModel(path, includeFolders);
        unit.mesh = finishMesh(source.model);
        if (!source.model.rig.joints.empty()) unit.skeleton = finishSkeleton(source.model);
        return unit;
    }
    unit.mesh = decodeMesh(readFile(path));
    if (!unit.mesh.skeletonFile.empty()) { // named from the units folder; it stands beside the mesh
        const std::filesystem::path skeleton = std::filesystem::path(unit.mesh.skeletonFile).filename();
        unit.skeleton =
            decodeSkeleton(readFile((std::filesystem::path(path).parent_path() / skeleton).string()));
    }
    return unit;
}

std::string describeUnit(const LoadedUnit& unit) {
    std::string text;
    char line[256];
    const auto print = [&](const char* format, auto... values) {
        std::snprintf(line, sizeof line, format, values...);
        text += line;
    };
    const MeshRecord& mesh = unit.mesh;
    std::size_t triangles = 0;
    for (const auto& submesh : mesh.submeshes)
        triangles += submesh.triangles.size();
    const auto real = [](float v) { return static_cast<double>(v); };
    print("%s: %zu vertices, %zu triangles, %s\n", mesh.name.c_str(), mesh.positions.size(), triangles,
          mesh.colours.empty() ? "no colours" : "hull normals in the colours");
    print("box %.2f %.2f %.2f to %.2f %.2f %.2f\n", real(mesh.boxMin.x), real(mesh.boxMin.y),
          real(mesh.boxMin.z), real(mesh.boxMax.x), real(mesh.boxMax.y), real(mesh.boxMax.z));
    for (const auto& submesh : mesh.submeshes)
        print("material %s: %zu triangles\n", submesh.material.c_str(), submesh.triangles.size());
    if (!unit.skeleton.joints.empty())
        print("skeleton %s, %zu influences\n", mesh.skeletonFile.c_str(), mesh.influences.size());
    for (std::size_t i = 0; i < unit.skeleton.joints.size(); ++i)
        print("joint %zu %s\n", i, unit.skeleton.joints[i].path.c_str());
    for (const ClipRecord& clip : unit.skeleton.clips) {
        std::size_t moving = 0, keys = 0;
        for (const auto& track : clip.tracks) {
            moving += track.size() >= 3;
            keys += track.size();
        }
        print("clip %s: %.3f s, %zu joints move, %zu keys\n", clip.name.c_str(), real(clipLength(clip)),
              moving, keys);
    }
    return text;
}

Canvas drawPicture(const LoadedUnit& unit, const PictureOptions& options) {
    return options.sheet && !unit.skeleton.clips.empty() ? drawSheet(unit, options)
                                                         : drawViews(unit, options);
}

} // namespace forge
