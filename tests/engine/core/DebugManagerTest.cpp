#include "core/DebugManager.h"

#include "fake/FakePlatform.h"
#include "render/Renderer.h"

#include <gtest/gtest.h>

namespace {

using Zelkor::DebugManager;
using Zelkor::ProfileId;

// Two ticks a microsecond; a section that is opened and closed takes what spend says.
class Profiler : public ::testing::Test {
  protected:
    Profiler() {
        fake.ticksPerSecond = 2'000'000;
        manager.startUp();
    }

    void spend(int microseconds) { fake.ticks += 2 * microseconds; }
    void measure(ProfileId id, int microseconds) {
        manager.beginSection(id);
        spend(microseconds);
        manager.endSection();
    }
    // A frame as the game has it: update, drawing and debug lines at the top, then the GUI inside "Frame".
    void frame() {
        measure(ProfileId::renderGui, 7);
        manager.endSection();
        measure(ProfileId::update, 3);
    }

    platform::FakePlatform fake;
    DebugManager manager;
};

TEST_F(Profiler, SectionsNestAndAddUp) {
    manager.beginSection(ProfileId::renderGui);
    measure(ProfileId::renderMesh, 10);
    measure(ProfileId::renderMesh, 5);
    measure(ProfileId::setMaterial, 1);
    manager.endSection();
    measure(ProfileId::updateGuiList, 4);
    manager.endFrame();

    const auto rows = manager.finishedFrame();
    ASSERT_EQ(rows.size(), 5u);
    const int ids[] = {11, 5, 12, 34, 15}, parents[] = {-1, 0, 1, 1, 0}, depths[] = {0, 1, 2, 2, 1},
              calls[] = {1, 1, 2, 1, 1}, spent[] = {20, 16, 15, 1, 4};
    for (std::size_t row = 0; row < rows.size(); ++row) {
        EXPECT_EQ(rows[row].id, ids[row]);
        EXPECT_EQ(rows[row].parent, parents[row]);
        EXPECT_EQ(rows[row].depth, depths[row]);
        EXPECT_EQ(rows[row].calls, calls[row]);
        EXPECT_DOUBLE_EQ(manager.microseconds(rows[row].accumulated), spent[row]);
    }
    // The next frame starts clean, inside "Frame".
    ASSERT_EQ(manager.rows().size(), 1u);
    EXPECT_EQ(manager.rows()[0].id, 11);
    EXPECT_EQ(manager.rows()[0].accumulated, 0);
}

TEST_F(Profiler, FrameClosesBeforeTheTopLevelSections) {
    frame();
    manager.endFrame();
    const auto rows = manager.finishedFrame();
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[1].parent, 0);
    EXPECT_EQ(rows[2].id, 19);
    EXPECT_EQ(rows[2].parent, -1);
    EXPECT_DOUBLE_EQ(manager.microseconds(rows[0].accumulated), 7);
    // Ends without a section are harmless.
    manager.endSection();
    manager.endSection();
    manager.endSection();
    measure(ProfileId::update, 1);
    EXPECT_EQ(manager.rows().back().parent, -1);
}

TEST_F(Profiler, FullTableIgnoresWhatDoesNotFit) {
    // Two ids in turn, each inside the one before: every begin needs a new row.
    for (int depth = 1; depth < DebugManager::maxRows; ++depth)
        manager.beginSection(depth % 2 ? ProfileId::renderUnit : ProfileId::renderMesh);
    EXPECT_EQ(manager.rows().size(), 100u);
    manager.beginSection(ProfileId::setMaterial); // below the last row
    manager.endSection();                         // closes the last row instead
    manager.beginSection(ProfileId::setMaterial); // the only row left has another id
    EXPECT_EQ(manager.rows().size(), 100u);
    for (const auto& row : manager.rows())
        EXPECT_NE(row.id, static_cast<int>(ProfileId::setMaterial));
    manager.endFrame();
    EXPECT_EQ(manager.finishedFrame().size(), 100u);
    EXPECT_EQ(manager.finishedFrame().back().depth, 99);
}

TEST_F(Profiler, OverlayChangesEveryTenthFrame) {
    for (int count = 0; count < 30; ++count) {
        frame();
        manager.endFrame();
    }
    EXPECT_EQ(manager.overlayColumns().names, ""); // not shown
    manager.showProfiler = true;
    for (int count = 1; count < 10; ++count) {
        frame();
        manager.endFrame();
        EXPECT_EQ(manager.overlayColumns().names, "") << count;
    }
    measure(ProfileId::renderGui, 7);
    measure(ProfileId::renderGui, 4);
    manager.endFrame();
    EXPECT_EQ(manager.overlayColumns().names, "Frame\n_render_gui\n");
    EXPECT_EQ(manager.overlayColumns().calls, "1\n2\n");
    EXPECT_EQ(manager.overlayColumns().microseconds, "11\n11\n");
    EXPECT_EQ(manager.overlayColumns().microsecondsPerCall, "11\n5\n"); // 5.5 is cut off
    frame();
    manager.endFrame();
    EXPECT_EQ(manager.overlayColumns().calls, "1\n2\n");
}

TEST_F(Profiler, DebugLinesLastOneFrame) {
    manager.addDebugLine({1, 2, 3}, {4, 5, 6}, {0, 1, 0});
    ASSERT_EQ(manager.lines().size(), 1u);
    EXPECT_EQ(manager.lines()[0].to, (Zelkor::Vec3{4, 5, 6}));
    manager.endFrame();
    EXPECT_TRUE(manager.lines().empty());
    manager.drawingEnabled = false;
    manager.addDebugLine({}, {}, {});
    manager.renderDebug();
    EXPECT_TRUE(manager.lines().empty());
    EXPECT_EQ(manager.rows().size(), 1u); // no "render_debug"
}

} // namespace
