#include "CheckData.h"

#include "check/CheckEffects.h"
#include "check/CheckGui.h"
#include "check/CheckMaterials.h"
#include "check/CheckSounds.h"
#include "check/CheckStages.h"
#include "check/Findings.h"

#include "Platform.h"
#include "core/EngineManagers.h"
#include "core/Log.h"
#include "io/DataFiles.h"
#include "render/Renderer.h"
#include "render/Tga.h"
#include "resources/Mesh.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

struct Data {
    std::vector<std::string> files; // below the data folder, sorted, with forward slashes
    std::set<std::string> materials;
    Findings findings;

    void report(const std::string& file, const std::string& reason) { findings.push_back({file, 0, reason}); }
};

Data listFiles() {
    Data data;
    std::error_code error;
    for (fs::recursive_directory_iterator it(Zelkor::dataFolder(), error), end; it != end && !error;
         it.increment(error))
        if (it->is_regular_file(error))
            data.files.push_back(fs::relative(it->path(), Zelkor::dataFolder()).generic_string());
    std::sort(data.files.begin(), data.files.end());
    return data;
}

template <class Check>
void forEach(Data& data, std::string_view folder, std::string_view extension, Check check) {
    for (const std::string& file : data.files)
        if (file.starts_with(folder) && file.ends_with(extension)) check(file);
}

void checkTexture(Data& data, const std::string& file) {
    std::string reason = "cannot be read";
    const auto bytes = Zelkor::readDataFile(file);
    if (!bytes || !Zelkor::decodeTga(*bytes, &reason)) data.report(file, reason);
}

void checkSkeleton(Data& data, const std::string& file) {
    std::string reason = "cannot be read";
    const auto bytes = Zelkor::readDataFile(file);
    if (!bytes || !Zelkor::readSkeleton(*bytes, &reason)) data.report(file, reason);
}

void checkMesh(Data& data, const std::string& file) {
    std::string reason = "cannot be read";
    const auto bytes = Zelkor::readDataFile(file);
    const auto mesh = bytes ? Zelkor::readMesh(*bytes, &reason) : std::nullopt;
    if (!mesh) {
        data.report(file, reason);
        return;
    }
    int joints = 0;
    if (!mesh->skeletonFile.empty()) {
        const auto skeletonBytes = Zelkor::readDataFile("units/" + mesh->skeletonFile);
        const auto skeleton = skeletonBytes ? Zelkor::readSkeleton(*skeletonBytes) : std::nullopt;
        if (!skeleton) {
            data.report(file, "missing or broken skeleton '" + mesh->skeletonFile + "'");
            return;
        }
        joints = skeleton->jointCount();
    }
    for (const auto& influence : mesh->vertices.influences)
        if (influence.joint >= joints) {
            data.report(file, "an influence of joint " + std::to_string(influence.joint) + " of " +
                                  std::to_string(joints));
            break;
        }
    for (const auto& submesh : mesh->submeshes)
        if (!submesh.isCollision() && !data.materials.contains(submesh.materialName) &&
            !textureExists(submesh.materialName))
            data.report(file, "missing material '" + submesh.materialName + "'");
}

// Builds every program in a context of its own. What the driver says comes with the failure.
void checkShaders(Data& data) {
    Zelkor::EngineManagers managers;
    if (!managers.renderer->init("check", 64, 64, 32, false) || !managers.renderer->shadersSupported) {
        data.report("shaders/", "no context to build them in");
        return;
    }
    for (const char* prefix : {"", "post", "direct"}) {
        managers.renderer->reloadShaders(prefix);
        const std::string folder = std::string("shaders/") + prefix + (*prefix ? "/" : "");
        forEach(data, folder, ".shader", [&](const std::string& file) {
            const std::string name =
                file.substr(folder.size(), file.size() - folder.size() - std::string_view(".shader").size());
            const auto bytes = Zelkor::readDataFile(file);
            const std::string text = bytes ? std::string(bytes->begin(), bytes->end()) : "";
            // Parts that others include have no program of their own.
            if (name.find('/') != std::string::npos || text.find("PIXEL") == std::string::npos) return;
            std::vector<std::string> log;
            Zelkor::Log::instance().captureInto(&log);
            const int shader = managers.renderer->loadShader(name);
            Zelkor::Log::instance().captureInto(nullptr);
            if (shader >= 0) return;
            std::string reason = "does not build";
            for (const std::string& line : log)
                if (line.starts_with("compiler_log: "))
                    reason += "; " + line.substr(std::string_view("compiler_log: ").size());
            data.report(file, reason);
        });
    }
}

} // namespace

int checkData() {
    Data data = listFiles();
    if (data.files.empty()) data.report(Zelkor::dataFolder().string(), "no data here");
    forEach(data, "materials/", ".material",
            [&](const std::string& file) { checkMaterialFile(file, data.findings, data.materials); });
    checkShaders(data);
    forEach(data, "textures/", ".tga", [&](const std::string& file) { checkTexture(data, file); });
    forEach(data, "sound/", ".wav", [&](const std::string& file) { checkWavFile(file, data.findings); });
    forEach(data, "sound/", ".ogg", [&](const std::string& file) { checkOggFile(file, data.findings); });
    forEach(data, "spritedef/", ".spritedef",
            [&](const std::string& file) { checkSpriteDefFile(file, data.findings); });
    forEach(data, "sample.fnt", "", [&](const std::string& file) { checkFontFile(file, data.findings); });
    forEach(data, "units/", ".skel", [&](const std::string& file) { checkSkeleton(data, file); });
    forEach(data, "units/", ".mesh", [&](const std::string& file) { checkMesh(data, file); });
    forEach(data, "units/tiles/", "tiledef.txt",
            [&](const std::string& file) { checkTileDefFile(file, data.findings); });
    forEach(data, "effects/", ".effect",
            [&](const std::string& file) { checkEffectFile(file, data.findings, data.materials); });
    forEach(data, "levels/", ".level", [&](const std::string& file) { checkLevelFile(file, data.findings); });
    forEach(data, "levels/", ".event", [&](const std::string& file) { checkEventFile(file, data.findings); });

    for (const Finding& finding : data.findings)
        std::printf("%s:%d: %s\n", finding.file.c_str(), finding.line, finding.reason.c_str());
    std::printf("%zu files, %zu findings\n", data.files.size(), data.findings.size());
    return data.findings.empty() ? 0 : 1;
}
