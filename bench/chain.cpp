// The first stage drawn through the whole chain of passes, with and without, against its scene alone. Counted
// is the processor time of the whole process, the driver's threads included, up to the finished picture:
// where the driver draws in software that is the cost of the picture.
#include "core/EngineManagers.h"
#include "core/TimerManager.h"
#include "game/Game.h"
#include "game/GameCamera.h"
#include "game/Session.h"
#include "game/Settings.h"
#include "io/DataFiles.h"
#include "render/GlApi.h"
#include "render/GlRenderer.h"
#include "render/SceneDrawing.h"
#include "sdl/SdlPlatform.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <memory>

namespace {

using namespace Zelkor;

constexpr int width = 640, height = 360;
constexpr int rounds = 15;
constexpr int framesToSettle = 60;

struct Way {
    const char* name;
    int postProcessing, superSample;
    double best; // seconds
};

void drawSceneAlone(Game& game, GlRenderer& gl) {
    gl.bindRenderTarget(0, true);
    gl.setViewport(0, 0, 1, 1);
    renderScene(game.session->scene, game.camera()->view);
    glFinish();
}

template <class Draw>
double seconds(Draw draw) {
    const std::clock_t start = std::clock();
    draw();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

} // namespace

int main(int argc, char** argv) {
    setDataFolder(argc > 1 ? argv[1] : RUSTPIKE_DATA);
    platform::SdlPlatform system({.headless = true});
    platform::setCurrent(&system);
    EngineManagers managers;
    auto& gl = static_cast<GlRenderer&>(*managers.renderer);
    if (!gl.init("", width, height, 32, false)) return 1;
    Game game;
    *game.settings = Settings();
    game.currentStage = 0;
    game.startWithoutMenus();
    TimerManager::instance().fixedFrameSeconds = 1.0f / 60;
    for (int i = 0; i < framesToSettle; ++i)
        game.runFrame();

    Way ways[] = {{"direct", 0, 0, 1e9},
                  {"processed, super-sampling off", 1, 0, 1e9},
                  {"processed, twice the height", 1, 1, 1e9},
                  {"processed, twice both", 1, 2, 1e9}};
    double alone = 1e9;
    // The best of many rounds in turn, so that no way has the busier machine.
    for (int i = 0; i < rounds; ++i) {
        alone = std::min(alone, seconds([&] { drawSceneAlone(game, gl); }));
        for (Way& way : ways) {
            game.settings->postProcessing = way.postProcessing;
            game.settings->superSample = way.superSample;
            way.best = std::min(way.best, seconds([&] {
                                    game.postChain.draw(*game.camera(), *game.settings);
                                    glFinish();
                                }));
        }
    }
    std::printf("chain %d x %d: scene alone %.2f ms\n", width, height, alone * 1e3);
    for (const Way& way : ways)
        std::printf("  %-30s %.2f ms, ratio %.2f\n", way.name, way.best * 1e3, way.best / alone);
    return 0;
}
