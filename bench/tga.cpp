// Decoding Targa pictures against stb_image, on the same uncompressed file in memory.
#include "render/Tga.h"

#include <benchmark/benchmark.h>

#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_TGA
#include <stb/stb_image.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <vector>

namespace {

constexpr int size = 1024; // pixels a side
constexpr int rounds = 40;

std::vector<uint8_t> picture(int bits) {
    std::vector<uint8_t> file(18 + static_cast<std::size_t>(size * size * bits / 8));
    file[2] = bits == 8 ? 3 : 2;
    file[13] = file[15] = size >> 8;
    file[16] = static_cast<uint8_t>(bits);
    file[17] = bits == 32 ? 8 : 0;
    for (std::size_t i = 18; i < file.size(); ++i)
        file[i] = static_cast<uint8_t>(i * 2654435761u >> 13);
    return file;
}

void decodeOurs(const std::vector<uint8_t>& file) {
    auto image = Zelkor::decodeTga(file);
    benchmark::DoNotOptimize(image->pixels.data());
}

void decodeTheirs(const std::vector<uint8_t>& file) {
    int width, height, components;
    stbi_uc* pixels =
        stbi_load_from_memory(file.data(), static_cast<int>(file.size()), &width, &height, &components, 0);
    benchmark::DoNotOptimize(pixels);
    stbi_image_free(pixels);
}

template <void (*decode)(const std::vector<uint8_t>&)>
void decoding(benchmark::State& state) {
    const auto file = picture(static_cast<int>(state.range(0)));
    for (auto _ : state)
        decode(file);
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(file.size()));
}

BENCHMARK(decoding<decodeOurs>)->Name("decodeTga")->Arg(8)->Arg(24)->Arg(32);
BENCHMARK(decoding<decodeTheirs>)->Name("stb_image")->Arg(8)->Arg(24)->Arg(32);

double seconds(void (*decode)(const std::vector<uint8_t>&), const std::vector<uint8_t>& file) {
    const auto start = std::chrono::steady_clock::now();
    decode(file);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// The best of many rounds in turn, so that neither side has the busier machine.
void printRatio(int bits) {
    const auto file = picture(bits);
    int width, height, components;
    stbi_uc* theirs =
        stbi_load_from_memory(file.data(), static_cast<int>(file.size()), &width, &height, &components, 0);
    const auto ours = Zelkor::decodeTga(file);
    // stb_image puts the last row of the file first too.
    const bool equal = theirs && ours && std::memcmp(theirs, ours->pixels.data(), ours->pixels.size()) == 0;
    stbi_image_free(theirs);
    double oursBest = 1e9, theirsBest = 1e9;
    for (int i = 0; i < rounds; ++i) {
        oursBest = std::min(oursBest, seconds(decodeOurs, file));
        theirsBest = std::min(theirsBest, seconds(decodeTheirs, file));
    }
    std::printf("tga %d bits: stb_image / decodeTga = %.2f (goal at least 1.0)%s\n", bits,
                theirsBest / oursBest, equal ? "" : " BUT THE PICTURES DIFFER");
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    for (const int bits : {8, 24, 32})
        printRatio(bits);
    return 0;
}
