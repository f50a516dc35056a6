// A full stage of play against its own clock: platforms of all kinds, bullets, pickups and the hero. Nothing is drawn;
// the goal is 300 times as fast as they live.
#include "actors/ThingyManager.h"
#include "actors/player/PlayerStandard.h"
#include "actors/weapons/Bullet.h"
#include "core/EngineManagers.h"
#include "core/TimerManager.h"
#include "fake/FakePlatform.h"
#include "game/Game.h"
#include "game/GameCamera.h"
#include "game/Session.h"
#include "io/DataFiles.h"
#include "world/TileGrid.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

using namespace Zelkor;

namespace {

constexpr float stepSeconds = 1.0f / 60;
constexpr int columns = 80;
constexpr int platformCount = 30, bulletCount = 30, pickupCount = 40;
constexpr int platformTypes[] = {18, 23, 25, 26, 37, 45, 46}, bulletTypes[] = {2, 72, 73, 74, 75, 76};
constexpr int stepsATurn = 600; // ten seconds of play

// A floor with a wall at each end, and the hero on it.
class Stage {
  public:
    Stage() : before_(dataFolder()) {
        std::filesystem::create_directories(folder_ / "levels");
        setDataFolder(folder_);
        std::ofstream level(folder_ / "levels/bench.level");
        level << "0 0 " << columns << " 12 ";
        for (int column = 0; column < columns; ++column)
            level << "floor " << 10 * column << " 0 0 ";
        for (const int column : {0, columns - 1})
            for (int row = 1; row < 12; ++row)
                level << "floor " << 10 * column << ' ' << 10 * row << " 0 ";
        level.close();
        std::ofstream(folder_ / "levels/bench.event")
            << "{ SpawnPlayer{ pos 60 6 0 rot 0 0 1 0 mesh none } StartupTriggers 1 0 }";
        game.session = std::make_unique<Session>(*game.thingyManager);
        game.session->start(0, "bench");
        for (int i = 0; i < platformCount; ++i)
            game.thingyManager->spawn(platformTypes[static_cast<std::size_t>(i) % std::size(platformTypes)], "none",
                                      {40 + 23.0f * static_cast<float>(i), 40 + 8.0f * static_cast<float>(i % 5), 0});
        for (int i = 0; i < pickupCount; ++i)
            game.thingyManager
                ->spawn(SpawnType::pickup, "pickups/cake1", {100 + 15.0f * static_cast<float>(i), 100, 0})
                ->setParameter(1, 0);
    }
    ~Stage() {
        game.session.reset();
        setDataFolder(before_);
        std::filesystem::remove_all(folder_);
    }
    Stage(const Stage&) = delete;

    void play(int steps) {
        auto& hero = dynamic_cast<PlayerStandard&>(*game.thingyManager->nearest(GROUP_PLAYER, {}));
        hero.input.overridden = true;
        TimerManager& timers = TimerManager::instance();
        timers.stepSeconds = stepSeconds;
        for (int i = 0; i < steps; ++i) {
            keepBullets();
            hero.input.overrideStick = {i / 120 % 2 ? -1.0f : 1.0f, 0, 0};
            hero.input.overridePreviousButtons = hero.input.overrideButtons;
            hero.input.overrideButtons = i % 60 < 20 ? PlayerInput::jumpMask : 0;
            timers.stepTimers();
            game.session->update(timers.findTimer("game")->delta);
        }
    }

    platform::FakePlatform platform;
    EngineManagers managers{};
    Game game;

  private:
    // As many as there shall be, whatever became of those before.
    void keepBullets() {
        bullets_.clear();
        game.thingyManager->collectAll(GROUP_BULLETS, bullets_);
        for (std::size_t i = bullets_.size(); i < bulletCount; ++i) {
            const int type = bulletTypes[i % std::size(bulletTypes)];
            auto* bullet = dynamic_cast<Bullet*>(game.thingyManager->spawn(
                type, "bullet", game.camera()->position + Vec3{-60 + 4.0f * static_cast<float>(i), 40, -180}));
            bullet->targetGroup = GROUP_ENEMIES;
            bullet->setSpeed(110);
        }
    }

    std::filesystem::path before_;
    std::filesystem::path folder_ = std::filesystem::temp_directory_path() / "rustpike-bench-actors";
    std::vector<Thingy*> bullets_;
};

void playAgainstItsClock(benchmark::State& state) {
    Stage stage;
    stage.game.session->camera->snap = true;
    stage.play(60);
    double best = 1e9;
    for (auto unused : state) {
        (void)unused;
        const auto start = std::chrono::steady_clock::now();
        stage.play(stepsATurn);
        best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    state.counters["times real time"] = stepsATurn * static_cast<double>(stepSeconds) / best;
    state.counters["microseconds a step"] = best / stepsATurn * 1e6;
}

BENCHMARK(playAgainstItsClock)->Unit(benchmark::kMillisecond)->MinTime(1);

} // namespace

BENCHMARK_MAIN();
