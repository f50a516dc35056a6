// Drawing 200 units of 500 triangles each from their own arrays, as the renderer does, against the same
// vertices handed over one by one. Counted is the processor time of the whole process, the driver's threads
// included, up to the finished picture. Where the driver draws in software, much of that is the cost of
// filling triangles, which is the same for both and no business of the processor elsewhere: the ratio is
// given with everything, and with rasterising switched off.
#include "core/EngineManagers.h"
#include "io/DataFiles.h"
#include "render/GlApi.h"
#include "render/GlRenderer.h"
#include "render/MaterialManager.h"
#include "resources/UnitManager.h"
#include "sdl/SdlPlatform.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <memory>
#include <vector>

namespace {

using namespace Zelkor;

constexpr int unitCount = 200;
constexpr int around = 25, across = 10; // 500 triangles
constexpr int rounds = 30;

// A ring with everything a vertex can have.
Mesh ring() {
    Mesh mesh;
    mesh.submeshes.emplace_back().materialName = "plain";
    for (int i = 0; i < around; ++i) {
        for (int j = 0; j < across; ++j) {
            const float u = 2 * pi * static_cast<float>(i) / around,
                        v = 2 * pi * static_cast<float>(j) / across;
            const Vec3 outwards{std::cos(u), std::sin(u), 0};
            const Vec3 normal = std::cos(v) * outwards + Vec3{0, 0, std::sin(v)};
            mesh.vertices.normals.push_back(normal);
            mesh.vertices.positions.push_back(outwards + 0.4f * normal);
            mesh.vertices.texCoords.push_back({u, v});
            mesh.vertices.colours.push_back({200, 150, 100});
            const int nextI = (i + 1) % around, nextJ = (j + 1) % across;
            for (const auto& [a, b] :
                 {std::pair{i, j}, {nextI, j}, {nextI, nextJ}, {i, j}, {nextI, nextJ}, {i, nextJ}})
                mesh.submeshes[0].indices.push_back(a * across + b);
        }
    }
    return mesh;
}

struct Stage {
    Stage() {
        setDataFolder(std::filesystem::temp_directory_path() / "rustpike-no-data");
        platform::setCurrent(&system);
        managers = std::make_unique<EngineManagers>();
        managers->renderer->init("", 320, 200, 32, false);
        for (int i = 0; i < unitCount; ++i) {
            meshes.push_back(std::make_unique<Mesh>(ring()));
            units.push_back(std::make_unique<Unit>(*meshes.back(), i));
        }
        managers->renderer->applyCamera({});
        glDisable(GL_LIGHTING);
        glTranslatef(0, 0, -40);
    }
    platform::SdlPlatform system{{.headless = true}};
    std::unique_ptr<EngineManagers> managers;
    std::vector<std::unique_ptr<Mesh>> meshes;
    std::vector<std::unique_ptr<Unit>> units;
};

void fromArrays(Stage& stage) {
    auto& gl = static_cast<GlRenderer&>(*stage.managers->renderer);
    for (const auto& unit : stage.units)
        gl.drawItem(unit->items.front(), unit->mesh->vertices);
    glFinish();
}

void oneByOne(Stage& stage) {
    for (const auto& unit : stage.units) {
        const VertexData& vertices = unit->mesh->vertices;
        glBegin(GL_TRIANGLES);
        for (const int32_t index : unit->items.front().submesh->indices) {
            const auto i = static_cast<std::size_t>(index);
            glNormal3fv(&vertices.normals[i].x);
            glTexCoord2fv(&vertices.texCoords[i].x);
            glColor3ubv(vertices.colours[i].data());
            glVertex3fv(&vertices.positions[i].x);
        }
        glEnd();
    }
    glFinish();
}

Stage& stage() {
    static Stage instance;
    return instance;
}

template <void (*draw)(Stage&)>
void drawing(benchmark::State& state) {
    for (auto _ : state)
        draw(stage());
}

BENCHMARK(drawing<fromArrays>)->Name("fromArrays")->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);
BENCHMARK(drawing<oneByOne>)->Name("oneByOne")->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

// Of the whole process, in seconds.
double cpuTime(void (*draw)(Stage&)) {
    const std::clock_t start = std::clock();
    draw(stage());
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

// The best of many rounds in turn, so that neither side has the busier machine.
void printRatio(const char* what) {
    double arrays = 1e9, immediate = 1e9;
    for (int i = 0; i < rounds; ++i) {
        arrays = std::min(arrays, cpuTime(fromArrays));
        immediate = std::min(immediate, cpuTime(oneByOne));
    }
    std::printf("draw %d x 500 triangles: one by one %.2f ms, from arrays %.2f ms, ratio %.2f %s\n",
                unitCount, immediate * 1e3, arrays * 1e3, immediate / arrays, what);
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    stage();
    printRatio("with rasterising");
    if (!GLEW_VERSION_3_0) return 0;
    glEnable(GL_RASTERIZER_DISCARD);
    printRatio("without (goal at least 4)");
    glDisable(GL_RASTERIZER_DISCARD);
    return 0;
}
