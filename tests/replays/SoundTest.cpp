// The sounds that the build made of assets/sounds: what the game asks for is there, and is fit to be played.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

struct Expected {
    const char* name;
    int takes;
    double shortest, longest; // seconds, of what the game does meanwhile
};

constexpr Expected expected[] = {
    {"shot1", 5, 0.2, 0.35},       {"bullethit", 5, 0.1, 0.25},     {"hit", 5, 0.1, 0.25},
    {"land1", 5, 0.1, 0.25},       {"horse", 4, 0.35, 0.54},        {"explosion1", 3, 1, 1.8},
    {"boss1fireup", 1, 1.6, 2},    {"boss1firedown", 1, 0.45, 0.8}, {"boss1land", 2, 0.5, 1},
    {"boss2fire", 1, 1.5, 2},      {"boss2punch", 1, 0.4, 1},       {"boss2punchload", 1, 0.4, 0.6},
    {"boss3grapple", 1, 0.3, 0.7}, {"boss3linkclaw", 1, 0.2, 0.5},  {"boss3rope", 1, 0.4, 0.8},
    {"boss3punch", 1, 0.3, 0.6},   {"cartjump", 1, 0.2, 0.5},       {"cartland", 1, 0.3, 0.6},
    {"dropballoon", 1, 0.2, 0.5},  {"dropBalloon", 1, 0.2, 0.5},    {"fullballoon", 2, 0.1, 0.2},
    {"duck", 3, 0.15, 0.4},        {"elecbeam", 1, 1.2, 1.2},       {"firebomb", 2, 0.6, 1.2},
    {"laser", 3, 0.2, 0.4},        {"pickup", 1, 0.3, 0.6},         {"playerdie", 1, 1, 1.6},
    {"playerhurt", 3, 0.2, 0.4},
};

fs::path pathOf(const std::string& name, int take) {
    return fs::path(RUSTPIKE_DATA) / "sound" / (name + (take > 1 ? "_" + std::to_string(take) : "") + ".wav");
}

// Its samples; none when it is no WAV of 16 bits, mono, 44.1 kHz with nothing but a format and the samples.
std::vector<int16_t> samplesOf(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(in), {});
    const char start[] = "WAVEfmt \x10\0\0\0\1\0\1\0\x44\xac\0\0\x88\x58\1\0\2\0\x10\0data";
    constexpr size_t startsAt = 8, headSize = 44;
    if (bytes.size() < headSize || bytes.compare(startsAt, sizeof start - 1, start, sizeof start - 1) != 0)
        return {};
    std::vector<int16_t> samples((bytes.size() - headSize) / sizeof(int16_t));
    std::memcpy(samples.data(), bytes.data() + headSize, samples.size() * sizeof(int16_t));
    return samples;
}

double decibels(double amplitude) {
    return 20 * std::log10(amplitude / 32768);
}

} // namespace

TEST(Sounds, AreAllThereAndFitToBePlayed) {
    for (const Expected& sound : expected) {
        std::vector<std::vector<int16_t>> takes;
        for (int take = 1; take <= sound.takes; ++take) {
            SCOPED_TRACE(pathOf(sound.name, take));
            const std::vector<int16_t> samples = samplesOf(pathOf(sound.name, take));
            ASSERT_FALSE(samples.empty());
            EXPECT_GE(samples.size() / 44100.0, sound.shortest);
            EXPECT_LE(samples.size() / 44100.0, sound.longest);
            double peak = 0, sum = 0, squares = 0;
            for (const double sample : samples) {
                peak = std::max(peak, std::abs(sample));
                sum += sample;
                squares += sample * sample;
            }
            EXPECT_GE(decibels(peak), -10);
            EXPECT_LE(decibels(peak), -2.9);
            EXPECT_GT(decibels(std::sqrt(squares / samples.size())), -30) << "hardly audible";
            EXPECT_LT(std::abs(sum / samples.size()), 33) << "off centre by over a thousandth";
            EXPECT_LE(std::abs(samples.front()), 16) << "starts with a click";
            EXPECT_LE(std::abs(samples.back()), 16) << "ends with a click";
            EXPECT_EQ(std::ranges::count(takes, samples), 0) << "the same as another take";
            takes.push_back(samples);
        }
        EXPECT_FALSE(fs::exists(pathOf(sound.name, sound.takes + 1)));
    }
}
