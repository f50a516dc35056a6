// The music's ring against plain decoding of the same samples, and what an update costs between two segments.
#include "audio/AudioManager.h"
#include "audio/OggPlayer.h"
#include "fake/FakePlatform.h"
#include "io/DataFiles.h"
#include "sdl/SdlPlatform.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>

using namespace Zelkor;

namespace {

const std::string track = "sound/title.ogg";
constexpr const char* builtData = "build/release/data"; // or what RUSTPIKE_DATA says
constexpr int rounds = 24; // segments
constexpr int updates = 20'000;

template <class Work>
double seconds(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Vorbisfile by itself.
void decodePlainly(OggVorbis_File& file, char* to) {
    std::size_t filled = 0;
    int section = 0;
    while (filled < OggPlayer::segmentBytes) {
        const long got =
            ov_read(&file, to + filled, static_cast<int>(OggPlayer::segmentBytes - filled), 0, 2, 1, &section);
        if (got == 0) ov_pcm_seek(&file, 0);
        if (got < 0) return;
        filled += static_cast<std::size_t>(got);
    }
}

// Both sides decode the same segments of the same file in turn; the quickest round of each counts.
void printRefill() {
    platform::FakePlatform platform;
    platform.sound.present = true;
    const auto device = platform.createSoundDevice(nullptr);
    OggPlayer player(*device);
    OggVorbis_File plain;
    std::vector<char> segment(OggPlayer::segmentBytes);
    const auto path = dataPath(track);
    if (!player.open(track) || !path || ov_fopen(path->string().c_str(), &plain) != 0) {
        std::printf("refill: no %s; RUSTPIKE_DATA names the data folder\n", track.c_str());
        return;
    }
    player.play();
    decodePlainly(plain, segment.data()); // what open() has decoded
    platform::FakeSound& ring = *platform.sound.sounds.back();
    double ours = 1e9, theirs = 1e9;
    bool equal = true;
    for (int i = 1; i < rounds; ++i) {
        const std::size_t filled = static_cast<std::size_t>(i % OggPlayer::segmentCount) * OggPlayer::segmentBytes;
        ring.cursor = (filled + OggPlayer::segmentBytes) % ring.bytes.size();
        ours = std::min(ours, seconds([&] { player.refill(); }));
        theirs = std::min(theirs, seconds([&] { decodePlainly(plain, segment.data()); }));
        equal &= std::memcmp(&ring.bytes[filled], segment.data(), segment.size()) == 0;
    }
    ov_clear(&plain);
    std::printf("refill of a segment: %.2f ms, %.2f times vorbisfile alone (goal at most 1.2)%s\n", ours * 1e3,
                ours / theirs, equal ? "" : " BUT THE SAMPLES DIFFER");
}

double updateNanoseconds(AudioManager& audio) {
    double best = 1e9;
    for (int round = 0; round < 10; ++round)
        best = std::min(best, seconds([&] {
                            for (int i = 0; i < updates; ++i)
                                audio.updateAudio(1e-7f);
                        }));
    return best / updates * 1e9;
}

// With the real mixer, its driver silent.
void printUpdate() {
    platform::SdlPlatform platform({.headless = true});
    platform::setCurrent(&platform);
    {
        AudioManager empty, playing;
        const double without = updateNanoseconds(empty);
        playing.initAudio();
        playing.playMusic("title");
        playing.updateAudio(1);
        for (int i = 0; i < 10; ++i) // the ring is full
            playing.updateAudio(0);
        const double with = updateNanoseconds(playing);
        std::printf("updateAudio: %.0f ns with music playing (goal at most 2000), %.0f ns without a device, "
                    "%.1f times\n",
                    with, without, with / without);
    }
    platform::setCurrent(nullptr);
}

void refillCheck(benchmark::State& state) {
    platform::FakePlatform platform;
    platform.sound.present = true;
    const auto device = platform.createSoundDevice(nullptr);
    OggPlayer player(*device);
    if (player.open(track)) player.play();
    player.refill();
    player.refill();
    for (auto _ : state)
        player.refill();
}
BENCHMARK(refillCheck)->Name("refill with nothing to fill");

} // namespace

int main(int argc, char** argv) {
    const char* data = std::getenv("RUSTPIKE_DATA");
    setDataFolder(data ? data : builtData);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    printRefill();
    printUpdate();
    return 0;
}
