// Updating a particle set and building its quads, each against a copy over the bytes that it touches.
#include "fx/Billboards.h"
#include "fx/ParticleSystem.h"
#include "io/TokenReader.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

using namespace Zelkor;

namespace {

constexpr int particles = 4096;
constexpr int rounds = 400;
constexpr float dt = 1.0f / 60;
constexpr std::size_t poolBytes = particles * sizeof(float) * ParticleSystem::rows;

// Smoke as the game's effects have it. Nothing dies within a run.
constexpr std::string_view text =
    "Effect{ ParticleSet{ num_particles 4096 size 1 1 2 2 Emitter{ init_spawn 4096 speed 2 9 dir 0 1 0 spread 90 } "
    "Affector{ lin_force 0 4 0 } Affector{ lin_size 0.001 0.001 } Affector{ start_time 1000 lin_alpha -1 } "
    "Affector{ lin_speed_change -0.01 } } }";

EffectDesc describe(bool aligned) {
    TokenReader reader(std::vector<char>(text.begin(), text.end()));
    EffectDesc effect = readEffect(reader, [](const std::string&) { return 0; });
    effect.sets[0].speedAligned = aligned;
    return effect;
}

double seconds(const auto& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

struct Times {
    double work = 1e9, copy = 1e9; // the best of many rounds, in turn, so that neither has the busier machine
};

Times against(std::size_t bytes, const auto& work) {
    std::vector<char> from(bytes, 1), to(bytes);
    Times best;
    for (int i = 0; i < rounds; ++i) {
        best.work = std::min(best.work, seconds(work));
        best.copy = std::min(best.copy, seconds([&] {
                                 std::memcpy(to.data(), from.data(), bytes);
                                 benchmark::DoNotOptimize(to.data());
                                 benchmark::ClobberMemory();
                             }));
    }
    return best;
}

void print(const char* what, std::size_t bytes, const Times& times, bool whole) {
    std::printf("%s: %.1f ns a particle; %zu KiB at %.2f of the rate of a copy (goal at least 0.25)%s\n", what,
                times.work / particles * 1e9, bytes / 1024, times.copy / times.work,
                whole ? "" : " BUT PARTICLES ARE MISSING");
}

void printRatios(bool aligned) {
    const EffectDesc effect = describe(aligned);
    ParticleSystem system(effect.sets[0], nullptr, {}, {}, 0);
    double time = 0;
    const Times update = against(poolBytes, [&] { system.update(time += dt, dt, nullptr); });
    print(aligned ? "update, speed-aligned" : "update, spinning", poolBytes, update, system.live() == particles);
    std::vector<BillboardVertex> vertices;
    int built = 0;
    const std::size_t bytes = particles * 4 * sizeof(BillboardVertex);
    const Times build =
        against(bytes, [&] { built = buildBillboards(system, {1, 0, 0}, {0, 1, 0}, vertices); });
    print(aligned ? "quads, speed-aligned" : "quads, spinning", bytes, build, built == particles);
}

void updating(benchmark::State& state) {
    const EffectDesc effect = describe(true);
    ParticleSystem system(effect.sets[0], nullptr, {}, {}, 0);
    double time = 0;
    for (auto _ : state)
        system.update(time += dt, dt, nullptr);
    state.SetItemsProcessed(state.iterations() * particles);
}
BENCHMARK(updating);

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    printRatios(true);
    printRatios(false);
    return 0;
}
