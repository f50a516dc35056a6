// From stage to stage: what the dark between two stages costs the processor, for every stage of the journey
// in turn. Counted is the time of the whole process. A stage's first start reads from disk what no stage
// before it has used; the second one finds it in memory.
#include "core/EngineManagers.h"
#include "core/TimerManager.h"
#include "game/Game.h"
#include "game/Session.h"
#include "game/Settings.h"
#include "io/DataFiles.h"
#include "render/GlApi.h"
#include "render/GlRenderer.h"
#include "resources/Scene.h"
#include "sdl/SdlPlatform.h"
#include "world/TileGrid.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

using namespace Zelkor;

namespace {

constexpr double allowed = 0.2; // seconds

template <class Work>
double seconds(Work work) {
    const std::clock_t start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

} // namespace

int main(int argc, char** argv) {
    setDataFolder(argc > 1 ? argv[1] : RUSTPIKE_DATA);
    if (!dataFileExists("levels/level000.level")) {
        std::fprintf(stderr, "no stages in the data folder\n");
        return 1;
    }
    platform::SdlPlatform system({.headless = true});
    platform::setCurrent(&system);
    EngineManagers managers;
    auto& gl = static_cast<GlRenderer&>(*managers.renderer);
    if (!gl.init("", 64, 36, 32, false)) return 1;
    TimerManager::instance().fixedFrameSeconds = 1.0f / 60;
    Game game;
    *game.settings = Settings();
    game.currentStage = 0;
    std::printf("everything every stage needs: %.3f s\n", seconds([&] { game.startWithoutMenus(); }));

    double slowest = 0;
    std::printf("stage   first start   again   of it: tile sets, level\n");
    for (int stage = 0; stage < Game::stageCount; ++stage) {
        game.currentStage = stage;
        const auto start = [&game] {
            game.startSession();
            game.runFrame(); // what is seen first is made ready now
            glFinish();
        };
        const double first = seconds(start), again = seconds(start);
        Scene scene;
        std::vector<Unit*> units;
        TileGrid grid(scene, units);
        const double sets = seconds([&] { grid.loadTileSets(); });
        const double level = seconds([&] { grid.loadLevel(stageFileName(stage), true); });
        std::printf("%5d   %9.3f s   %.3f s        %.3f s, %.3f s\n", stage, first, again, sets, level);
        slowest = std::max(slowest, std::max(first, again));
    }
    std::printf("slowest %.3f s, allowed %.3f s\n", slowest, allowed);
    return slowest <= allowed ? 0 : 1;
}
