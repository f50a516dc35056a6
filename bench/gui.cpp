// A list of 1,000 interface items, listed, sorted, gathered and drawn, against the same quads drawn from one
// array that stands ready. Counted is the processor time of the whole process, the driver's threads included,
// up to the finished picture; the ratio is given with rasterising and without, as in bench/draw.cpp.
#include "core/EngineManagers.h"
#include "gui/GuiWorkspace.h"
#include "io/DataFiles.h"
#include "render/GlApi.h"
#include "render/GlRenderer.h"
#include "render/GuiDrawing.h"
#include "sdl/SdlPlatform.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <memory>
#include <vector>

namespace {

using namespace Zelkor;

constexpr int across = 40, down = 25; // 1,000 pictures
constexpr int rounds = 60;

struct Screen {
    Screen() {
        setDataFolder(std::filesystem::temp_directory_path() / "rustpike-no-data");
        platform::setCurrent(&system);
        managers = std::make_unique<EngineManagers>();
        managers->renderer->init("", 320, 200, 32, false);
        workspace = std::make_unique<GuiScreenWorkspace>(false);
        for (int i = 0; i < across * down; ++i) {
            GuiObject& picture = *workspace->root.createChild(
                GuiKind::bitmap, static_cast<float>(i % across) / across,
                static_cast<float>(i / across) / down, static_cast<float>(i * 37 % 100), 0.02f, 0.03f);
            picture.colour = {0.5f, 0.3f, 0.2f, 0.8f};
        }
        workspace->begin();
        drawGuiWorkspace(*workspace, 1, false);
        const auto drawn = managers->renderer->guiList.vertices();
        vertices.assign(drawn.begin(), drawn.end());
    }
    platform::SdlPlatform system{{.headless = true}};
    std::unique_ptr<EngineManagers> managers;
    std::unique_ptr<GuiScreenWorkspace> workspace;
    std::vector<GuiVertex> vertices;
};

Screen& screen() {
    static Screen instance;
    return instance;
}

void fromTree() {
    screen().workspace->begin();
    drawGuiWorkspace(*screen().workspace, 1, false);
    glFinish();
}

void oneArray() {
    screen().workspace->begin();
    auto& gl = static_cast<GlRenderer&>(*screen().managers->renderer);
    gl.useShader(-1);
    gl.disableTexturing();
    gl.applyBlendState(BlendMode::alphaBlend, false, 0);
    const std::vector<GuiVertex>& vertices = screen().vertices;
    const GuiVertex& first = vertices.front();
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    glVertexPointer(3, GL_FLOAT, sizeof first, &first.x);
    glColorPointer(4, GL_UNSIGNED_BYTE, sizeof first, first.colour);
    glDrawArrays(GL_QUADS, 0, static_cast<GLsizei>(vertices.size()));
    glDisableClientState(GL_VERTEX_ARRAY);
    glDisableClientState(GL_COLOR_ARRAY);
    glFinish();
}

template <void (*draw)()>
void drawing(benchmark::State& state) {
    screen();
    for (auto _ : state)
        draw();
}

BENCHMARK(drawing<fromTree>)->Name("fromTree")->MeasureProcessCPUTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(drawing<oneArray>)->Name("oneArray")->MeasureProcessCPUTime()->Unit(benchmark::kMicrosecond);

double cpuTime(void (*draw)()) {
    const std::clock_t start = std::clock();
    draw();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

// The best of many rounds in turn, so that neither side has the busier machine.
void printRatio(const char* what) {
    double tree = 1e9, array = 1e9;
    for (int i = 0; i < rounds; ++i) {
        tree = std::min(tree, cpuTime(fromTree));
        array = std::min(array, cpuTime(oneArray));
    }
    std::printf("gui %d items, %zu batches: listed and drawn %.0f us, one array %.0f us, ratio %.2f %s\n",
                across * down, screen().managers->renderer->guiList.batches().size(), tree * 1e6, array * 1e6,
                tree / array, what);
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    screen();
    printRatio("with rasterising (goal at most 3)");
    if (!GLEW_VERSION_3_0) return 0;
    glEnable(GL_RASTERIZER_DISCARD);
    printRatio("without");
    glDisable(GL_RASTERIZER_DISCARD);
    return 0;
}
