// Log, random numbers and the managers record.
#include "core/DebugManager.h"
#include "core/EngineManagers.h"
#include "core/Log.h"
#include "core/ProfileSections.h"
#include "core/Random.h"
#include "core/TimerManager.h"
#include "fake/FakePlatform.h"
#include "input/ControllerManager.h"

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

TEST(Log, StaysSilentWithoutAFile) {
    EXPECT_FALSE(Log::instance().open("/no such folder/log.txt"));
    std::vector<std::string> lines;
    Log::instance().captureInto(&lines);
    logLine("init");
    Log::instance().captureInto(nullptr);
    logLine("lost");
    EXPECT_EQ(lines, std::vector<std::string>{"init"});
}

TEST(Random, RepeatsItselfAndCoversItsRange) {
    seedRandom(1);
    const int first = randomInt(), second = randomInt();
    seedRandom(2);
    EXPECT_NE(randomInt(), first);
    seedRandom(1);
    EXPECT_EQ(randomInt(), first);
    EXPECT_EQ(randomInt(), second);

    int lowest = randomMax, highest = 0;
    std::array<int, 8> choices{};
    float highestFraction = 0, highestUniform = 0;
    for (int draw = 0; draw < 80000; ++draw) {
        const int value = randomInt();
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
        ++choices[static_cast<std::size_t>(value % 8)];
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
    for (const int count : choices)
        EXPECT_NEAR(count, 10000, 400); // more than four standard deviations
}

TEST(EngineManagers, AreCreatedInTheirOrder) {
    platform::FakePlatform fake;
    TimerManager::reset();
    TimerManager& timers = TimerManager::instance(); // before the record, which then takes the same one
    std::vector<std::string> lines;
    Log::instance().captureInto(&lines);
    {
        EngineManagers managers;
        EXPECT_EQ(engineManagers(), &managers);
        EXPECT_EQ(managers.timerManager, &timers);
        EXPECT_TRUE(managers.debugManager->drawingEnabled);
        EXPECT_FALSE(managers.debugManager->showProfiler);
        EXPECT_EQ(managers.controllerManager->players.size(), 1u);
        {
            const ProfileSection section(ProfileId::update);
            EXPECT_EQ(managers.debugManager->rows().size(), 1u);
        }
        managers.debugManager->endSection(); // nothing is open any more
        managers.debugManager->beginSection(ProfileId::renderMesh);
        EXPECT_EQ(managers.debugManager->rows()[1].parent, -1);
    }
    Log::instance().captureInto(nullptr);
    EXPECT_EQ(engineManagers(), nullptr);
    const ProfileSection withoutManagers(ProfileId::update);
    EXPECT_EQ(lines, (std::vector<std::string>{
                         "init managers", "init unitmanager", "init renderermanager", "init materialmanager",
                         "init overlaymanager", "init controllermanager", "init debugmanager",
                         "init timermanager", "init particlemanager", "init managers done"}));
    TimerManager::reset();
}

} // namespace
