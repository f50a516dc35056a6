// A hero among thirty enemies, all awake, against the clock of the game.
#include "actors/ThingyManager.h"
#include "core/EngineManagers.h"
#include "core/TimerManager.h"
#include "fake/FakePlatform.h"
#include "game/Game.h"
#include "game/Session.h"
#include "resources/Unit.h"

#include <benchmark/benchmark.h>

#include <ctime>
#include <vector>

using namespace Zelkor;

namespace {

constexpr float secondsAStep = 1.0f / 60;
constexpr int stepsAtOnce = 120;                      // from a fresh start, in which nobody has left yet
constexpr const char* stageName = "proving/critters"; // its first 60 columns are even ground

struct Foe {
    int type;
    const char* unit;
    float height; // of its place above the ground
};
constexpr Foe foes[] = {
    {13, "enemies/goomba", 0},
    {30, "enemies/duck", 0},
    {35, "enemies/bat", 45},
    {44, "enemies/bunny", 0},
    {31, "enemies/wolf", 0},
    {6, "enemies/turret", 0},
    {33, "enemies/barrel", 5},
    {24, "enemies/sawblade", 50},
    {47, "enemies/sawblade", 55},
    {17, "fan_b", 10},
    {9, "enemies/medusa", 30},
    {19, "enemies/rotturret", 50},
    {15, "enemies/spikeball", 50},
    {16, "elecbeam", 60},
    {14, "elecbeam", 70},
    {10, "enemies/scanner", 5},
    {20, "bandit1", 0},
    {21, "bandit1", 0},
    {22, "bandit1", 10},
    {36, "carrierbird", 50},
    {11, "enemies/toad", 0},
    {4, "enemies/gullhead", 55},
};
constexpr int foeCount = 30;
constexpr float firstX = 60, spacing = 4, groundY = 5; // around the hero, who stands at 20

// Until so many stand there; classes that the game has.
void gather(ThingyManager& actors) {
    int placed = 0;
    for (std::size_t i = 0; placed < foeCount; i = (i + 1) % std::size(foes)) {
        const Foe& foe = foes[i];
        if (!ThingyManager::canSpawn(foe.type)) continue;
        const float x = firstX + spacing * static_cast<float>(placed++);
        actors.spawn(foe.type, foe.unit, {x, groundY + foe.height, 0}, facingRotation(i % 2 ? 1.0f : -1.0f));
    }
}

// Needs the built data in the working directory.
void thirtyEnemiesAgainstRealTime(benchmark::State& state) {
    platform::FakePlatform platform;
    EngineManagers managers{};
    Game game;
    TimerManager& timers = TimerManager::instance();
    timers.stepSeconds = secondsAStep;
    const GameTimer& clock = *timers.findTimer("game");
    double spent = 0;
    std::int64_t steps = 0;
    std::vector<Thingy*> left;
    for (auto unused : state) {
        (void)unused;
        game.session.reset();
        game.session = std::make_unique<Session>(*game.thingyManager);
        game.session->start(0, stageName);
        if (game.session->levelUnits.empty()) {
            state.SkipWithError("no data/levels/proving/critters.level here");
            return;
        }
        gather(*game.thingyManager);
        const std::clock_t start = std::clock();
        for (int i = 0; i < stepsAtOnce; ++i) {
            timers.stepTimers();
            game.session->update(clock.delta);
        }
        spent += static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
        steps += stepsAtOnce;
        left.clear();
        game.thingyManager->collectAll(GROUP_ENEMIES, left);
    }
    state.counters["microseconds"] = spent / static_cast<double>(steps) * 1e6;
    state.counters["ratio"] = secondsAStep / (spent / static_cast<double>(steps));
    state.counters["left of them"] = static_cast<double>(left.size());
}
BENCHMARK(thirtyEnemiesAgainstRealTime)->MinTime(0.5);

} // namespace

BENCHMARK_MAIN();
