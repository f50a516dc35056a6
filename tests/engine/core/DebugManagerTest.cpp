#include "core/DebugManager.h"

#include "fake/FakePlatform.h"

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
}

} // namespace
