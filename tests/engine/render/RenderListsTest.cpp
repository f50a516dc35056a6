#include "render/RenderLists.h"

#include "RenderTest.h"
#include "render/LightChoice.h"
#include "resources/UnitManager.h"

namespace Zelkor {

namespace {

class RenderListsTest : public RenderTest {
  protected:
    // A unit of a mesh with no faces and the bounds of a cube of half size 1.
    Unit* add(const Vec3& position) {
        Unit* unit = scene.createUnit("nothing", position);
        bound(*unit);
        return unit;
    }
    static void bound(Unit& unit) {
        unit.mesh->boxMin = {-1, -1, -1};
        unit.mesh->boxMax = {1, 1, 1};
        unit.boundingCentre = {0, 0, 0};
        unit.boundingRadius = std::sqrt(3.0f);
        unit.inMainList = true;
    }
    const std::vector<Unit*>& seen() {
        lists.update(scene, view, ++frame);
        return lists.main;
    }

    Scene scene;
    Camera view = camera();
    RenderLists lists;
    int frame = 0;
};

TEST_F(RenderListsTest, SphereConeDepthAndScreenCull) {
    Unit* unit = add({0, 0, 0});
    EXPECT_EQ(seen(), std::vector<Unit*>{unit});
    EXPECT_FLOAT_EQ(unit->viewDepth, -view.position.z);

    const ViewVolume volume = ViewVolume::of(view);
    // Straight ahead, its sphere just touching that of the frustum, then just inside it.
    const float touching =
        volume.sphereCentre.z - volume.sphereRadius - length(unit->scale) * unit->boundingRadius;
    unit->position.z = touching;
    EXPECT_TRUE(seen().empty());

    for (const Vec3& away : {Vec3{0, 0, view.position.z + 3},    // behind
                             Vec3{0, 0, view.position.z - 1.5f}, // nearer than the near distance
                             Vec3{0, 0, view.position.z - 204},  // beyond the far one
                             Vec3{0, 12, 0}, Vec3{0, -12, 0}, Vec3{17, 0, 0}, Vec3{-17, 0, 0}}) {
        unit->position = away;
        EXPECT_TRUE(seen().empty()) << away.x << " " << away.y << " " << away.z;
    }
    for (const Vec3& rim : {Vec3{0, 10.5f, 0}, Vec3{15.5f, 0, 0}, Vec3{0, 0, view.position.z - 4}}) {
        unit->position = rim;
        EXPECT_EQ(seen().size(), 1u) << rim.x << " " << rim.y << " " << rim.z;
    }
}

TEST_F(RenderListsTest, OrdersByDepthAndKeepsTheOrderOfEquals) {
    Unit *a = add({0, 0, 0}), *close = add({0, 0, 5}), *b = add({2, 0, 0}), *far = add({0, 0, -5});
    Unit* c = add({-2, 0, 0});
    for (const auto& unit : scene.units())
        unit->inSpecialList = true;
    b->inMainList = false;
    lists.update(scene, view, 1);
    EXPECT_EQ(lists.main, (std::vector<Unit*>{close, a, c, far}));
    EXPECT_EQ(lists.special, (std::vector<Unit*>{far, a, b, c, close}));
}

TEST_F(RenderListsTest, ChildrenGoWithTheirParent) {
    Unit* parent = add({0, 0, 0});
    const auto child = managers->unitManager->createUnit("nothing");
    bound(*child);
    child->position = {0, 500, 3}; // outside the view by itself
    parent->attach(child.get());
    EXPECT_EQ(seen(), (std::vector<Unit*>{child.get(), parent}));
    child->visible = false;
    EXPECT_EQ(seen(), std::vector<Unit*>{parent});
    parent->position.y = 500;
    child->visible = true;
    EXPECT_TRUE(seen().empty());
    parent->detach(child.get());
}

TEST_F(RenderListsTest, ProjectsToTheScreen) {
    const auto expectAt = [this](const Vec3& point, float x, float y) {
        const Vec3 screen = view.project(point);
        EXPECT_NEAR(screen.x, x, 1e-4f);
        EXPECT_NEAR(screen.y, y, 1e-4f);
    };
    expectAt({0, 0, 0}, 0.5f, 0.5f);
    expectAt({-15, 10, 0}, 0, 0);
    expectAt({15, -10, 0}, 1, 1);
    const Vec3 onPlane = view.project({1, 1, view.position.z});
    EXPECT_TRUE(std::isfinite(onPlane.x) && std::isfinite(onPlane.y));
    EXPECT_GT(std::fabs(onPlane.x), 10);
    // Turned by a quarter to the left, what was on the left is in the middle.
    view.orientation = quatFromAxisAngle(pi / 2, {0, 1, 0});
    expectAt({-50, 0, view.position.z}, 0.5f, 0.5f);
}

TEST(LightChoiceTest, ShadowCastersFirstThenByInfluence) {
    Scene scene;
    const auto light = [&scene](int type, float x, float constant, int shadow) {
        Light& added = scene.lights.emplace_back();
        added.type = type;
        added.position = {x, 0, 0};
        added.constantAttenuation = constant;
        added.linearAttenuation = 1;
        added.castsShadows = shadow >= 0;
        added.shadowIndex = shadow;
    };
    light(Light::point, 0, 1, -1);          // 0: inside the box, influence 3
    light(Light::point, 11, 1, 4);          // 1: 10 away, 3 / 11 > 0.15625: casts
    light(Light::point, 31, 1, 5);          // 2: 30 away, too weak to cast, strong enough to shine
    light(Light::point, 101, 1, 6);         // 3: 100 away: nothing
    light(Light::directional, 0, 1000, -1); // 4: shines everywhere
    light(Light::directional, 0, 1000, 7);  // 5: casts everywhere
    const LightChoice choice = chooseLights(scene, {-1, -1, -1}, {1, 1, 1});
    ASSERT_EQ(choice.count, 5);
    const int expected[] = {1, 5, 0, 2, 4};
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(choice.lights[i], &scene.lights[expected[i]]) << i;
    EXPECT_EQ(choice.shadowCasters, 2);
    EXPECT_EQ(choice.shadowIndices[1], 7);

    for (int i = 0; i < 8; ++i)
        light(Light::directional, 0, 1, 10 + i);
    const LightChoice full = chooseLights(scene, {-1, -1, -1}, {1, 1, 1});
    EXPECT_EQ(full.count, 8);
    EXPECT_EQ(full.shadowCasters, 4);
}

} // namespace

} // namespace Zelkor
