#include "Options.h"

#include <gtest/gtest.h>

namespace {

std::optional<Options> parse(std::vector<const char*> words, int& exitCode) {
    words.insert(words.begin(), "rustpike");
    return parseCommandLine(static_cast<int>(words.size()), words.data(), exitCode);
}

TEST(Options, EverythingAtOnce) {
    int exitCode = -1;
    const auto options = parse({"--data",     "d",
                                "--headless", "--size",
                                "320x200",    "--stage",
                                "3",          "--frames",
                                "9",          "--step",
                                "0.0166667",  "--seed",
                                "7",          "--input",
                                "in",         "--record",
                                "out",        "--screenshot",
                                "a.png@0",    "--screenshot",
                                "b@c.png@12", "--trace",
                                "t",          "--trace-every",
                                "5",          "--profile",
                                "p",          "--windowed",
                                "--post",     "off",
                                "--fade",     "0.4"},
                               exitCode);
    ASSERT_TRUE(options);
    EXPECT_EQ(options->data, "d");
    EXPECT_TRUE(options->headless);
    EXPECT_EQ(options->size->width, 320);
    EXPECT_EQ(options->size->height, 200);
    EXPECT_EQ(options->stage, 3);
    EXPECT_EQ(options->frames, 9);
    EXPECT_FLOAT_EQ(options->step, 0.0166667f);
    EXPECT_EQ(options->seed, 7u);
    ASSERT_EQ(options->screenshots.size(), 2u);
    EXPECT_EQ(options->screenshots[1].file, "b@c.png");
    EXPECT_EQ(options->screenshots[1].frame, 12);
    EXPECT_EQ(options->traceEvery, 5);
    EXPECT_EQ(options->fullscreen, false);
    EXPECT_FALSE(options->checkData);
    EXPECT_EQ(options->postProcessing, false);
    EXPECT_FLOAT_EQ(*options->fade, 0.4f);
}

TEST(Options, NothingGivenLeavesEverythingOpen) {
    int exitCode = -1;
    const auto options = parse({}, exitCode);
    ASSERT_TRUE(options);
    EXPECT_FALSE(options->stage);
    EXPECT_FALSE(options->frames);
    EXPECT_FALSE(options->seed);
    EXPECT_FALSE(options->fullscreen);
    EXPECT_EQ(options->step, 0);
}

TEST(Options, AStageMayHaveAName) {
    int exitCode = -1;
    const auto options = parse({"--stage", "proving/ladders"}, exitCode);
    ASSERT_TRUE(options);
    EXPECT_EQ(options->stageName, "proving/ladders");
    EXPECT_FALSE(options->stage);
}

TEST(Options, HelpAndVersionEndWell) {
    for (const char* word : {"--help", "--version"}) {
        int exitCode = -1;
        EXPECT_FALSE(parse({word}, exitCode)) << word;
        EXPECT_EQ(exitCode, 0) << word;
    }
}

TEST(Options, BadLinesEndWithOne) {
    const std::vector<std::vector<const char*>> lines = {{"--size", "640"},
                                                         {"--size", "0x200"},
                                                         {"--size", "640x4o0"},
                                                         {"--stage", "20"},
                                                         {"--stage", "-1"},
                                                         {"--stage", "../secret"},
                                                         {"--stage", "proving/"},
                                                         {"--frames", "-1"},
                                                         {"--step", "0"},
                                                         {"--screenshot", "a.png"},
                                                         {"--screenshot", "a.png@"},
                                                         {"--trace-every", "0"},
                                                         {"--nonsense"},
                                                         {"--flicker", "maybe"},
                                                         {"--super-sample", "3"},
                                                         {"--windowed", "--fullscreen"}};
    for (const auto& line : lines) {
        int exitCode = -1;
        EXPECT_FALSE(parse(line, exitCode)) << line[0] << ' ' << (line.size() > 1 ? line[1] : "");
        EXPECT_EQ(exitCode, 1) << line[0];
    }
}

} // namespace
