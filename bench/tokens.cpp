// Reading the numbers of a text file: TokenReader against std::from_chars over the same bytes, whitespace
// skipped alike.
#include "io/TokenReader.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

using namespace Zelkor;

namespace {

constexpr int numberCount = 100000;

// As levels and effects write them: with a point and digits behind it.
std::vector<char> levelText(int decimals) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> number(-500, 500);
    std::vector<char> text;
    for (int i = 0; i < numberCount; ++i) {
        char buffer[64];
        const int length = std::snprintf(buffer, sizeof buffer, "%.*f%s", decimals, number(random),
                                         i % 3 == 2 ? "\r\n" : " ");
        text.insert(text.end(), buffer, buffer + length);
    }
    return text;
}

float sumByReader(TokenReader& reader) {
    float sum = 0;
    for (int i = 0; i < numberCount; ++i)
        sum += reader.readFloat();
    return sum;
}

float sumByFromChars(const std::vector<char>& text) {
    const auto isWhitespace = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    const char* at = text.data();
    const char* const end = at + text.size();
    float sum = 0;
    for (int i = 0; i < numberCount; ++i) {
        while (at < end && isWhitespace(*at))
            ++at;
        float value = 0;
        at = std::from_chars(at, end, value).ptr;
        sum += value;
    }
    return sum;
}

double seconds(auto&& work) {
    const auto start = std::chrono::steady_clock::now();
    benchmark::DoNotOptimize(work());
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Both sides by turns, so that a busy machine slows both; the best turn of each counts.
void readFloatAgainstFromChars(benchmark::State& state) {
    const auto text = levelText(static_cast<int>(state.range(0)));
    double ours = 1e9, theirs = 1e9;
    for (auto unused : state) {
        (void)unused;
        TokenReader reader(text); // copies the text outside of what is measured
        ours = std::min(ours, seconds([&] { return sumByReader(reader); }));
        theirs = std::min(theirs, seconds([&] { return sumByFromChars(text); }));
    }
    state.counters["readFloat ns"] = ours / numberCount * 1e9;
    state.counters["from_chars ns"] = theirs / numberCount * 1e9;
    state.counters["ratio"] = theirs / ours;
}

BENCHMARK(readFloatAgainstFromChars)->Arg(1)->Arg(3)->Arg(6)->MinTime(1);

} // namespace

BENCHMARK_MAIN();
