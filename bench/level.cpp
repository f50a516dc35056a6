// Loading a long level against one a quarter as long, and playing the first stage against its own clock.
#include "core/EngineManagers.h"
#include "core/TimerManager.h"
#include "fake/FakePlatform.h"
#include "game/Game.h"
#include "game/Session.h"
#include "io/DataFiles.h"
#include "io/TokenReader.h"
#include "resources/Scene.h"
#include "resources/UnitManager.h"
#include "world/EventList.h"
#include "world/TileGrid.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

using namespace Zelkor;

namespace {

// Of the processor: on a busy machine the longer work loses more of the wall time to others.
double seconds(auto&& work) {
    const std::clock_t start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

// The engine without a window.
struct Engine {
    platform::FakePlatform platform;
    EngineManagers managers{};
};

// Four kinds of tiles with a mesh of one material: floors, pillars, rocks and, behind the play plane, grass.
class TileData {
  public:
    TileData()
        : folder_(std::filesystem::temp_directory_path() / "rustpike-bench-level"), before_(dataFolder()) {
        std::filesystem::create_directories(folder_ / "units/tiles/area1");
        std::ofstream(folder_ / "units/tiles/area1/tiledef.txt") << "floor scaleX ; pillar scaleY ; rock ;";
        setDataFolder(folder_);
        for (const char* tile : {"floor", "pillar", "rock", "grass"}) {
            Mesh& mesh = *engineManagers()->unitManager->getMesh(std::string("tiles/area1/") + tile);
            mesh.submeshes.resize(1);
            mesh.submeshes[0].materialName = "paint";
        }
    }
    ~TileData() {
        setDataFolder(before_);
        std::filesystem::remove_all(folder_);
    }
    TileData(const TileData&) = delete;

  private:
    std::filesystem::path folder_, before_;
};

// Sections of 40 columns one after the other: a floor three deep with a pit, steps, pillars, grass.
std::string levelText(int tiles) {
    std::vector<std::string> lines;
    const auto add = [&](const char* tile, int column, int row, int z) {
        if (static_cast<int>(lines.size()) < tiles)
            lines.push_back(std::string("tiles/area1/") + tile + " " + std::to_string(10 * column) + " " +
                            std::to_string(10 * row) + " " + std::to_string(z) + "\n");
    };
    int column = 0;
    for (; static_cast<int>(lines.size()) < tiles; ++column) {
        const int place = column % 40;
        for (int row = 0; row < 3 && place >= 4; ++row)
            add("floor", column, row, 0);
        for (int row = 3; row < 7 && place % 10 == 9; ++row)
            add("pillar", column, row, 0);
        if (place % 5 == 0) add("rock", column, 3 + place / 5, 0);
        add("grass", column, 3, -20);
    }
    std::string text = "0 0 " + std::to_string(column) + " 20\n";
    for (const std::string& line : lines)
        text += line;
    return text;
}

// Both lengths by turns, so that a busy machine slows both; the best turn of each counts.
void loading20000TilesAgainst5000(benchmark::State& state) {
    Engine engine;
    TileData data;
    const std::string texts[] = {levelText(5000), levelText(20000)};
    double best[] = {1e9, 1e9};
    std::size_t units = 0;
    for (auto unused : state) {
        (void)unused;
        for (int length = 0; length < 2; ++length) {
            Scene scene;
            std::vector<Unit*> levelUnits;
            TileGrid grid(scene, levelUnits);
            grid.loadTileSets();
            TokenReader reader(std::vector<char>(texts[length].begin(), texts[length].end()));
            best[length] = std::min(best[length], seconds([&] { grid.readLevel(reader, true); }));
            units = levelUnits.size();
        }
    }
    state.counters["5000 ms"] = best[0] * 1e3;
    state.counters["20000 ms"] = best[1] * 1e3;
    state.counters["units of 20000"] = static_cast<double>(units);
    state.counters["ratio"] = best[1] / best[0];
}
BENCHMARK(loading20000TilesAgainst5000)->MinTime(2);

// Needs the built data in the working directory.
void firstStageAgainstRealTime(benchmark::State& state) {
    constexpr float step = 1.0f / 60;
    Engine engine;
    Game game;
    game.startSession();
    if (game.session->levelUnits.empty()) {
        state.SkipWithError("no data/levels/level000.level here");
        return;
    }
    TimerManager& timers = TimerManager::instance();
    timers.stepSeconds = step;
    const GameTimer& clock = *timers.findTimer("game");
    double spent = 0;
    std::int64_t steps = 0;
    constexpr int stepsAtOnce = 60;
    for (auto unused : state) {
        (void)unused;
        spent += seconds([&] {
            for (int i = 0; i < stepsAtOnce; ++i) {
                timers.stepTimers();
                game.session->update(clock.delta);
            }
        });
        steps += stepsAtOnce;
    }
    state.counters["microseconds"] = spent / static_cast<double>(steps) * 1e6;
    state.counters["ratio"] = step / (spent / static_cast<double>(steps));
    state.counters["level units"] = static_cast<double>(game.session->levelUnits.size());
}
BENCHMARK(firstStageAgainstRealTime)->MinTime(1);

} // namespace

BENCHMARK_MAIN();
