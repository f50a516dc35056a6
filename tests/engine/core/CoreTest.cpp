// Log and random numbers.
#include "core/Log.h"
#include "core/Random.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace {

using namespace Zelkor;

TEST(Log, WritesPlainLinesOverTheOldFile) {
    const auto file = std::filesystem::temp_directory_path() / "rustpike-lög-test.txt";
    std::ofstream(file) << "an older and longer log\n";
    ASSERT_TRUE(Log::instance().open(file));
    logLine("init");
    std::stringstream beforeClose; // what a crash would leave
    beforeClose << std::ifstream(file).rdbuf();
    EXPECT_EQ(beforeClose.str(), "init\n");
    logLine("load save file");
    Log::instance().close();
    logLine("lost");
    std::stringstream written;
    written << std::ifstream(file).rdbuf();
    EXPECT_EQ(written.str(), "init\nload save file\n");
    std::filesystem::remove(file);
}

TEST(Random, RepeatsItselfAndCoversItsRange) {
    seedRandom(1);
    const int first = randomInt(), second = randomInt();
    seedRandom(1);
    EXPECT_EQ(randomInt(), first);
    EXPECT_EQ(randomInt(), second);

    int lowest = randomMax, highest = 0;
    float highestFraction = 0, highestUniform = 0;
    for (int draw = 0; draw < 80000; ++draw) {
        const int value = randomInt();
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
        highestFraction = std::max(highestFraction, randomFraction());
        highestUniform = std::max(highestUniform, randomUniform());
    }
    EXPECT_LT(lowest, 8);
    EXPECT_GE(lowest, 0);
    EXPECT_GT(highest, randomMax - 8);
    EXPECT_LE(highest, randomMax);
    EXPECT_EQ(highestFraction, 1);
    EXPECT_LT(highestUniform, 1);
    EXPECT_GT(highestUniform, 0.999f);
}

} // namespace
