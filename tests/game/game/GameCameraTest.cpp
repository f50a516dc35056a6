#include "game/GameCamera.h"

#include "game/WorldTest.h"
#include "world/events/AreaEvents.h"

#include <cmath>

using namespace Zelkor;

namespace {

class GameCameraTest : public WorldTest {
  protected:
    GameCameraTest() {
        startStage("0 0 1 1 ", "{ CameraBounds{ min 0 0 max 300 200 instant 1 triggers 1 1 }"
                               "  NonReset{ pos 0 0 0 }"
                               "  CameraEdge{ min 0 10 max 5 40 dir 0 triggers 1 5 }"
                               "  CameraEdge{ min -5 0 max 50 9 dir 2 triggers 1 5 }"
                               "  CameraBounds{ min 300 0 max 900 200 instant 0 }"
                               "  Counter{ pos 0 0 0 numTriggers 100 } }");
        hero = &spawn(GROUP_PLAYER, {100, 90, 0});
        camera().target = hero;
        camera().targetOffset = {0, 10};
    }
    GameCamera& camera() { return *game->camera(); }
    EventList& events() { return *game->eventList(); }
    static float halfHeight(float z, float fov = 30) { return z * std::tan(fov / 2 * pi / 180); }

    TestActor* hero;
};

void expectNear(const Vec3& a, const Vec3& b, float tolerance = 1e-3f) {
    EXPECT_NEAR(a.x, b.x, tolerance);
    EXPECT_NEAR(a.y, b.y, tolerance);
    EXPECT_NEAR(a.z, b.z, tolerance);
}

} // namespace

TEST_F(GameCameraTest, FollowsSmoothly) {
    step();
    expectNear(camera().view.position, {100, 100, 180});
    hero->unit->position.x = 160;
    step();
    expectNear(camera().view.position, {110, 100, 180}); // a sixth of the way
    step(2, 0.1f);
    expectNear(camera().view.position, {160, 100, 180});
}

TEST_F(GameCameraTest, StaysInsideItsAreaAtAnyAspect) {
    const auto lookAt = [&](const Vec3& areaMax) {
        camera().setArea({0, 0, 0}, areaMax, true, nullptr);
        camera().snap = true;
        step();
        return camera().view.position;
    };
    hero->unit->position = {-50, 500, 0};
    expectNear(lookAt({300, 200, 0}), {halfHeight(180) * 16 / 9, 200 - halfHeight(180), 180});
    // Narrower, then lower than the view: the camera comes as near as it takes to fill the view.
    Vec3 view = lookAt({100, 200, 0});
    EXPECT_NEAR(halfHeight(view.z) * 16 / 9, 50, 1e-3f);
    EXPECT_NEAR(view.x, 50, 1e-3f);
    view = lookAt({300, 30, 0});
    EXPECT_NEAR(halfHeight(view.z), 15, 1e-3f);
    EXPECT_NEAR(view.y, 15, 1e-3f);
    for (const auto& [aspect, fov] :
         {std::pair{1024.0f / 768, 35.0f}, {1280.0f / 720, 30.0f}, {0.0f, 30.0f}}) {
        renderer().aspect = aspect;
        step();
        EXPECT_NEAR(camera().view.fieldOfView, fov, 1e-4f);
    }
}

TEST_F(GameCameraTest, PansFreezeTheGameAndArrive) {
    events().poke(0);
    step(30);
    const int updates = hero->updates;
    hero->unit->position = {400, 150, 0};
    const Vec3 start = camera().view.position;
    events().poke(4);
    EXPECT_EQ(timer("game").paused, 1);
    step(10);
    EXPECT_EQ(camera().view.position.y, start.y); // the longer way first
    EXPECT_GT(camera().view.position.x, start.x);
    for (int i = 0; camera().panActive && i < 290; ++i)
        step();
    EXPECT_FALSE(camera().panActive);
    EXPECT_EQ(hero->updates, updates);
    EXPECT_EQ(timer("game").paused, 0);
    const Vec3 goal{400, 160 - (160 - (200 - halfHeight(180))), 180};
    EXPECT_LT(distance(camera().view.position, goal), 1.5f);
    step();
    EXPECT_EQ(hero->updates, updates + 1);

    camera().setArea({370, 120, 0}, {470, 170, 0}, false, nullptr); // much nearer
    float fastest = 0;
    for (int i = 0; i < 40; ++i) {
        step();
        fastest = std::min(fastest, camera().panVelocity.z);
    }
    EXPECT_EQ(fastest, -80);
    EXPECT_EQ(timer("game").paused, 1);
    game->startSession(); // ends what the pan has begun
    EXPECT_EQ(timer("game").paused, 0);
}

TEST_F(GameCameraTest, ExitsOpenWithinTheirZonesAndAreForgottenWithTheArea) {
    events().poke(0);
    EXPECT_EQ(events().at(1)->hitCount, 1); // the area's own triggers
    for (const int edge : {2, 3})
        events().poke(edge);
    const auto allowed = [&](int direction, float x, float y) {
        return camera().exitAllowed(direction, {x, y, 0});
    };
    for (const float y : {10, 40})
        EXPECT_FALSE(allowed(GameCamera::right, 200, y));
    EXPECT_FALSE(allowed(GameCamera::left, -1, 20));
    EXPECT_FALSE(allowed(GameCamera::up, 50, 300));
    EXPECT_TRUE(allowed(GameCamera::right, 200, 20) && allowed(GameCamera::up, 20, 195));
    EXPECT_EQ(events().at(5)->hitCount, 0);
    EXPECT_TRUE(allowed(GameCamera::right, 301, 20) && allowed(GameCamera::up, 20, 196));
    EXPECT_EQ(events().at(5)->hitCount, 2);
    // Another area forgets them and lets the last event apply again.
    camera().setArea({0, 0, 0}, {1, 1, 0}, true, nullptr);
    EXPECT_FALSE(camera().exitAllowed(GameCamera::right, {200, 20, 0}));
    EXPECT_FALSE(events().at(0)->fired || camera().boundsEvent);
}

TEST_F(GameCameraTest, LocksAtItsRateAndShakes) {
    step();
    camera().setLock({300, 300, 100}, 0);
    step();
    expectNear(camera().view.position, {300, 300, 100});
    camera().setLock({0, 0, 0}, -1); // eases back; the point stays
    step(30);
    expectNear(camera().view.position, {200, 200, 140}, 0.1f);
    camera().setLock({0, 0, 0}, -1000);
    step();
    expectNear(camera().view.position, {100, 100, 180});

    camera().shakeAmplitude = 1.5f;
    camera().shakeDecay = 4;
    step();
    const float left = 1.5f - 4.0f / 60;
    EXPECT_NEAR(camera().view.position.x - camera().position.x, left * std::sin(300 * timer("main").total),
                1e-3);
    step(25);
    EXPECT_EQ(camera().shakeAmplitude, 0);
    expectNear(camera().view.position, {100, 100, 180});
}
