#include "resources/UnitManager.h"

#include "animation/SkeletonInstance.h"
#include "core/EngineManagers.h"
#include "core/TimerManager.h"
#include "render/MaterialManager.h"

#include "engine/resources/MeshBytes.h"
#include "fake/FakePlatform.h"
#include "support/TempData.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>

namespace {

using namespace Zelkor;

constexpr std::string_view materials = R"(
material skin { technique { pass { cast_shadows ambient 0.5 0.25 0.125 1 } } }
material glass { technique { pass { scene_blend specialalpha } } }
material collision { technique { pass { cast_shadows } } }
)";

class UnitTest : public ::testing::Test {
  protected:
    UnitTest() {
        TimerManager::reset();
        managers.emplace();
        folder.write("materials/all.material", materials);
        folder.write("units/figure.mesh", wholeMesh().bytes);
        folder.write("units/figure.skel", wholeSkeleton().bytes);
        managers->materialManager->loadMaterialFile("all");
    }
    ~UnitTest() override {
        managers.reset();
        TimerManager::reset();
    }
    UnitManager& units() { return *managers->unitManager; }

    TempData folder;
    platform::FakePlatform fake;
    std::optional<EngineManagers> managers;
};

TEST_F(UnitTest, MeshesAndSkeletonsAreReadOnce) {
    Mesh* mesh = units().getMesh("figure");
    EXPECT_EQ(mesh->refCount, 1);
    std::filesystem::remove_all(folder.folder());
    EXPECT_EQ(units().getMesh("figure"), mesh);
    EXPECT_EQ(mesh->refCount, 2);
    EXPECT_EQ(units().getSkeleton("figure.skel"), mesh->skeleton);
}

TEST_F(UnitTest, MissingAndBrokenFilesGiveEmptyRecords) {
    folder.write("units/broken.mesh", "not a mesh");
    folder.write("units/boneless.mesh", wholeMesh("missing.skel").bytes);
    folder.write("units/climbing.mesh", wholeMesh("../../figure.skel").bytes);
    for (const char* name : {"missing", "broken", "../units/figure"}) {
        const auto unit = units().createUnit(name);
        EXPECT_TRUE(unit->items.empty()) << name;
        EXPECT_FALSE(unit->skeleton);
        unit->frameUpdate(0);
    }
    for (const char* name : {"boneless", "climbing"}) {
        const auto unit = units().createUnit(name);
        ASSERT_TRUE(unit->skeleton) << name;
        EXPECT_EQ(unit->skeleton->jointCount(), 0);
        unit->frameUpdate(0);
        EXPECT_EQ(unit->items[0].skinnedPositions[1], (Vec3{1, 0, 0})); // at rest
    }
}

TEST_F(UnitTest, AUnitTakesItsFlagsAndSphereFromMeshAndMaterials) {
    const auto first = units().createUnit("figure");
    ASSERT_EQ(first->items.size(), 1u); // collision geometry is not drawn
    EXPECT_TRUE(first->inMainList);
    EXPECT_TRUE(first->castsShadows);
    EXPECT_EQ(first->boundingCentre, (Vec3{1, 1, 1}));
    EXPECT_FLOAT_EQ(first->boundingRadius, std::sqrt(9.0f + 16 + 25));

    folder.write("units/pane.mesh", MeshBytes().meshHead("", 1).i32(0).i32(0).string("glass").i32(0).bytes);
    const auto pane = units().createUnit("pane");
    EXPECT_TRUE(pane->inSpecialList);
    EXPECT_FALSE(pane->castsShadows);
    EXPECT_TRUE(pane->items[0].skinnedPositions.empty());
}

TEST_F(UnitTest, AColourOfItsOwnCopiesTheMaterialOnce) {
    auto one = units().createUnit("figure");
    const auto other = units().createUnit("figure");
    RenderItem& item = one->items[0];
    const Material* shared = &other->items[0].material();
    item.setColour({1, 0, 0, 1});
    const Material* own = &item.material();
    EXPECT_NE(own, shared);
    item.setColour({0, 1, 0, 1});
    EXPECT_EQ(&item.material(), own);
    EXPECT_EQ(own->ambient, (Vec4{0, 1, 0, 1}));
    EXPECT_EQ(shared->ambient, (Vec4{0.5f, 0.25f, 0.125f, 1}));
    // The copy moves with its item and outlives the place it came from.
    const RenderItem moved = std::move(item);
    one.reset();
    EXPECT_EQ(moved.material().ambient, (Vec4{0, 1, 0, 1}));
}

TEST_F(UnitTest, AFrameIsUpdatedOnceAndSkins) {
    const auto unit = units().createUnit("figure");
    GameTimer timer;
    timer.delta = 0.25f;
    unit->skeleton->timer = &timer;
    Animation* nod = unit->skeleton->play("nod");
    unit->frameUpdate(0);
    unit->frameUpdate(0);
    EXPECT_EQ(nod->time, 0.25f);
    unit->frameUpdate(1);
    EXPECT_EQ(nod->time, 0.5f);
    const auto& positions = unit->items[0].skinnedPositions;
    const Vec3 turned = mat4TransformPoint(unit->skeleton->skinMatrices[1], {0, 1, 0});
    EXPECT_LT(distance(positions[2], turned), 1e-6f);
    EXPECT_LT(distance(positions[1], 0.5f * (mat4TransformPoint(unit->skeleton->skinMatrices[1], {1, 0, 0}) +
                                             Vec3{1, 0, 0})),
              1e-6f);
}

TEST_F(UnitTest, TheWorldBoxEnclosesTheTurnedMeshBox) {
    const auto unit = units().createUnit("figure"); // (-2, -3, -4) to (4, 5, 6)
    unit->position = {10, 20, 30};
    unit->scale = {2, 1, 0.5f};
    unit->orientation = quatFromAxisAngle(pi / 2, {0, 0, 1}); // x to y, y to -x
    unit->updateWorldBox();
    EXPECT_LT(distance(unit->worldBoxMin, {5, 16, 28}), 1e-4f);
    EXPECT_LT(distance(unit->worldBoxMax, {13, 28, 33}), 1e-4f);
}

} // namespace
