#include "core/TimerManager.h"

#include "fake/FakePlatform.h"

#include <gtest/gtest.h>

namespace {

using Zelkor::TimerManager;

class Timers : public ::testing::Test {
  protected:
    Timers() {
        fake.clock = 1000;
        TimerManager::reset();
    }
    ~Timers() override { TimerManager::reset(); }

    void frame(int milliseconds) {
        fake.clock += milliseconds;
        manager().beginFrame();
    }
    TimerManager& manager() { return TimerManager::instance(); }

    platform::FakePlatform fake;
};

TEST_F(Timers, FramesAreCutIntoSubsteps) {
    struct Case {
        int milliseconds, substeps;
        float stepSeconds;
    };
    manager();
    for (const Case& expected :
         {Case{0, 1, 0.001f}, Case{16, 1, 0.016f}, Case{33, 1, 0.033f}, Case{34, 2, 0.017f},
          Case{40, 2, 0.02f}, Case{50, 2, 0.025f}, Case{51, 3, 0.017f}, Case{200, 3, 0.033333335f},
          Case{60000, 3, 0.033333335f}}) {
        frame(expected.milliseconds);
        EXPECT_EQ(manager().substepsLeft, expected.substeps) << expected.milliseconds;
        EXPECT_FLOAT_EQ(manager().stepSeconds, expected.stepSeconds) << expected.milliseconds;
        // Within one tick of the clock a frame lasts a millisecond, not taken from the next.
        EXPECT_FLOAT_EQ(manager().frameSeconds,
                        static_cast<float>(std::max(1, expected.milliseconds)) / 1000);
    }
    manager().stepTimers();
    EXPECT_EQ(manager().substepsLeft, 2);
}

TEST_F(Timers, TimersScalePauseAndAreCapped) {
    auto& scaled = manager().addTimer("scaled");
    auto& paused = manager().addTimer("paused");
    auto& capped = manager().addTimer("capped");
    scaled.scale = 2;
    paused.paused = 0.5f;
    paused.delta = 1;
    capped.scale = 100;
    frame(16);
    manager().stepTimers();
    manager().stepTimers();
    EXPECT_FLOAT_EQ(scaled.delta, 0.032f);
    EXPECT_EQ(paused.delta, 0);
    EXPECT_FLOAT_EQ(capped.delta, 0.3f);
    EXPECT_NEAR(manager().findTimer("main")->total, 0.032, 1e-7);
}

TEST_F(Timers, AreFoundByExactNameFirstOneFirst) {
    auto& first = manager().addTimer("game");
    for (int i = 0; i < 100; ++i)
        manager().addTimer("game");
    EXPECT_EQ(manager().findTimer("game"), &first);
}

} // namespace
