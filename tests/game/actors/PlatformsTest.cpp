#include "actors/platforms/MovingPlatform.h"
#include "actors/platforms/RailPath.h"
#include "game/WorldTest.h"

#include <algorithm>

using namespace Zelkor;

namespace {

class PlatformsTest : public WorldTest {
  protected:
    PlatformsTest() {
        startStage("0 0 1 1 ", "");
        game->camera()->position = {0, 0, 180}; // all of it is on the screen
    }
    Platform& platform(int type, const Vec3& place, const std::vector<SpawnParameter>& params = {}) {
        auto& spawned = dynamic_cast<Platform&>(*game->thingyManager->spawn(type, "none", place));
        for (const auto& [number, value] : params)
            spawned.setParameter(number, value);
        return spawned;
    }
    // Lets a box of 9 x 18 push itself out from above, in each of some steps.
    PlatformContact ride(Platform& under, Vec3& feet, int steps, float fall = 0) {
        PlatformContact contact;
        for (int i = 0; i < steps; ++i) {
            step();
            feet += under.carry() - Vec3{0, 0.01f, 0};
            Vec3 centre = feet + Vec3{0, 9, 0};
            contact = under.pushOut(centre, {4.5f, 9, 0}, {0, fall, 0});
            feet = centre - Vec3{0, 9, 0};
        }
        return contact;
    }
};

} // namespace

TEST_F(PlatformsTest, PathsEaseAtBothEnds) {
    // e = 2 x 0.4 / 4 = 0.2 of a leg of 2 s; a leg's first fifth covers 0.7 x 0.2 of it.
    Platform& eased = platform(18, {});
    const auto xAfter = [&](Platform& moved, int steps) {
        step(steps);
        return moved.position().x;
    };
    EXPECT_NEAR(xAfter(eased, 12), 60 * 0.7f * 0.01f / 0.2f, 1e-3f); // t = 0.1
    EXPECT_NEAR(xAfter(eased, 12), 60 * 0.14f, 1e-3f);               // t = 0.2
    EXPECT_NEAR(xAfter(eased, 36), 30, 1e-3f);
    EXPECT_NEAR(xAfter(eased, 60), 60, 1e-3f);
    EXPECT_NEAR(xAfter(eased, 60), 30, 1e-3f);
    // Without ease, at a speed of 30 from half way back.
    Platform& even = platform(18, {0, 50, 0}, {{0, 90}, {3, 0}, {4, 30}, {2, 1.5f}});
    EXPECT_NEAR(even.position().x, 45, 1e-3f);
    EXPECT_NEAR(xAfter(even, 60), 15, 1e-3f);
    EXPECT_NEAR(xAfter(even, 60), 15, 1e-3f); // turned at the start
    EXPECT_NEAR(even.carry().x, 0.5f, 1e-4f);
}

TEST_F(PlatformsTest, CirclesAndSwings) {
    // The box of a platform begins 5 to the left of it and 5 below.
    Platform& wheel = platform(37, {100, 0, 0}, {{7, 20}, {4, 90}});
    EXPECT_EQ(wheel.position(), (Vec3{95, 15, 0}));
    step(60);
    EXPECT_NEAR(wheel.position().x, 115, 1e-3f);
    EXPECT_NEAR(wheel.position().y, -5, 1e-3f);
    Platform& swing = platform(37, {}, {{2, 1}, {3, 0}, {5, -90}, {6, 90}, {8, 0.5f}, {7, 10}, {4, 180}});
    EXPECT_NEAR(swing.position().x, -15, 1e-3f);
    step(61); // half a turn in a second
    EXPECT_NEAR(swing.position().x, 5, 0.1f);
    step(28); // it waits
    EXPECT_NEAR(swing.position().x, 5, 0.1f);
    step(33);
    EXPECT_NEAR(swing.position().y, 5, 0.1f); // straight up, half way back
}

TEST_F(PlatformsTest, PushesOutTheNearestWay) {
    auto& block = dynamic_cast<MovingPlatform&>(platform(18, {}, {{0, 0}})); // -5..15 by -5..5
    struct Case {
        Vec3 centre, pushed, normal;
    };
    const Case cases[] = {{{5, 12, 0}, {5, 14, 0}, {0, 1, 0}},      {{5, -12, 0}, {5, -14, 0}, {0, -1, 0}},
                          {{-8, 0, 0}, {-9.5f, 0, 0}, {-1, 0, 0}},  {{18, 0, 0}, {19.5f, 0, 0}, {1, 0, 0}},
                          {{-9.5f, 0, 0}, {-9.5f, 0, 0}, {-1, 0, 0}}, {{19.5f, 0, 0}, {19.5f, 0, 0}, {}},
                          {{5, 14, 0}, {5, 14, 0}, {}},             {{-7.5f, 12, 0}, {-7.5f, 14, 0}, {0, 1, 0}}};
    for (const Case& c : cases) {
        Vec3 centre = c.centre;
        const PlatformContact contact = block.pushOut(centre, {4.5f, 9, 0}, {});
        EXPECT_EQ(centre, c.pushed);
        EXPECT_EQ(contact.normal, c.normal);
        EXPECT_EQ(contact.pushed, c.normal != Vec3{});
    }
    EXPECT_TRUE(game->thingyManager->solidPlatformAt({14.9f, 4.9f, 0}));
    EXPECT_FALSE(game->thingyManager->solidPlatformAt({15, 0, 0}));
}

TEST_F(PlatformsTest, FallsOnceItHasBeenSteppedOn) {
    Platform& ledge = platform(46, {});
    Vec3 feet{5, 5, 0};
    step(60);
    EXPECT_EQ(ledge.position(), (Vec3{}));
    Vec3 start = feet - Vec3{0, 0.1f, 0};
    ride(ledge, start, 1);
    step(21); // shakes for 0.35 s
    EXPECT_EQ(ledge.position().y, 0);
    EXPECT_NE(ledge.position().x, 0);
    step(30);
    EXPECT_NEAR(ledge.carry().y, -65.0f / 60, 1e-3f);
}

TEST_F(PlatformsTest, AShroomWobblesUnderItsRiderWithoutLosingHim) {
    Platform& shroom = platform(45, {}, {{0, 0}});
    Vec3 feet{5, 4.9f, 0};
    ride(shroom, feet, 1, -110);
    float lowest = feet.y;
    for (int i = 0; i < 20; ++i) {
        EXPECT_TRUE(ride(shroom, feet, 1).pushed) << i;
        lowest = std::min(lowest, feet.y);
    }
    EXPECT_LT(lowest, 3);
}

TEST_F(PlatformsTest, ASeesawTipsUnderItsRiderAndComesBack) {
    Platform& plank = platform(25, {});
    Vec3 feet{15, 9.9f, 0};
    ride(plank, feet, 60);
    EXPECT_LT(plank.unit->orientation.z, -0.02f); // down on the right
    EXPECT_LT(feet.y, 9);
    EXPECT_TRUE(plank.containsPoint(feet.x, feet.y - 0.1f));
    EXPECT_FALSE(plank.containsPoint(feet.x, feet.y + 0.1f));
    step(300);
    EXPECT_NEAR(plank.unit->orientation.z, 0, 0.03f);
    Platform& heavy = platform(25, {200, 0, 0});
    feet = {215, 9.9f, 0};
    ride(heavy, feet, 10, -100); // as if landing again and again
    EXPECT_LT(heavy.unit->orientation.z, -0.1f);
    // Walking downhill he stays on it, whether it tips or rolls away.
    for (Platform* slope : {&platform(25, {600, 0, 0}), &platform(26, {800, 0, 0})}) {
        feet = slope->position() + Vec3{3, 9.4f, 0};
        ride(*slope, feet, 1);
        for (int i = 0; i < 6; ++i) {
            feet.x += 0.75f;
            EXPECT_TRUE(ride(*slope, feet, 1).pushed) << i;
        }
        feet.y += 1;
        EXPECT_FALSE(ride(*slope, feet, 1, 85).pushed); // up and away
    }
    Platform& mill = platform(25, {400, 0, 0}, {{0, 1}});
    step(60);
    EXPECT_NEAR(mill.unit->orientation.z, sine(0.5f), 1e-3f);
}

TEST_F(PlatformsTest, ALogRollsUnderItsRiderCrushesAndStopsAtAWall) {
    startStage("0 0 1 1 wall 60 0 0 ", "");
    Platform& log = platform(26, {0, 5, 0});
    spawn(GROUP_ENEMIES, {30, 5, 0}, "none").hitPadding = {3, 3, 3};
    Vec3 beside{-6, 14.5f, 0}; // only the corner of his box is in it
    EXPECT_FALSE(ride(log, beside, 1).pushed);
    Vec3 feet{6, 12.9f, 0};
    const PlatformContact contact = ride(log, feet, 40);
    EXPECT_EQ(contact.normal, (Vec3{0, 1, 0}));
    EXPECT_GT(log.position().x, 3);
    EXPECT_NEAR(distance(feet, log.position()), 10, 1e-3f); // on the circle
    log.setParameter(0, -3);
    for (int i = 0; i < 4; ++i, log.setParameter(0, -3))
        step(30);
    EXPECT_EQ(dynamic_cast<TestActor&>(*actors(GROUP_ENEMIES)[0]).hits > 0, true);
    EXPECT_NEAR(log.position().x, 45, 1e-3f); // its side on the wall's
}

TEST_F(PlatformsTest, RailsLeadFromTheirRightEnd) {
    writeData("units/tiles/area1/tiledef.txt", "rail type 8 ;");
    startStage("0 0 1 1 tiles/area1/rail 0 0 0 tiles/area1/rail 10 0 0 tiles/area1/rail 20 10 0 "
               "tiles/area1/rail 30 10 0 ",
               "");
    const RailPath path(game->tileGrid(), {12, 3, 4});
    EXPECT_FALSE(path.closed());
    EXPECT_NEAR(path.length(), 20 + 14.1421f, 1e-3f);
    EXPECT_EQ(path.at(-5), (Vec3{30, 10, 4}));
    EXPECT_EQ(path.at(5), (Vec3{25, 10, 4}));
    EXPECT_EQ(path.at(100), (Vec3{0, 0, 4}));
    Platform& trolley = platform(23, {10, 0, 0}, {{0, 5}});
    Vec3 feet = trolley.position() + Vec3{9, 4.9f, 0};
    ride(trolley, feet, 2);
    EXPECT_GT(trolley.carry().x, 0); // he stands right of it: back to the start
    ride(trolley, feet, 120);
    EXPECT_EQ(trolley.position(), (Vec3{30, 10, 0}));
}

TEST_F(PlatformsTest, DoorsAndBlocksComeAndGo) {
    const auto solid = [&](float x, float y) {
        return game->tileGrid()->tileAt({x, y, 0}, TileType::solid) != nullptr;
    };
    Thingy& door = *game->thingyManager->spawn(70, "none", {50, 5, 0});
    EXPECT_TRUE(solid(50, 10) && solid(50, 20));
    door.activate();
    EXPECT_FALSE(solid(50, 10) || solid(50, 20));
    step(60);
    EXPECT_EQ(door.position().y, 23);
    door.setParameter(0, 0);
    EXPECT_TRUE(solid(50, 10));
    EXPECT_EQ(door.position().y, 5);

    Thingy& tile = *game->thingyManager->spawn(34, "none", {100, 0, 0});
    for (const auto& [number, value] : {SpawnParameter{0, 2}, {1, 1}, {2, 1.5f}})
        tile.setParameter(number, value);
    TestActor& hero = spawn(GROUP_PLAYER, {100, -5, 0});
    step(45); // shown for a quarter of a second, around the hero
    EXPECT_EQ(tile.position().z, 0);
    EXPECT_FALSE(solid(100, 0));
    hero.unit->position.x = 110;
    step();
    EXPECT_TRUE(solid(100, 0));
    step(60);
    EXPECT_FALSE(solid(100, 0));
    EXPECT_EQ(tile.position().z, -10);
    door.removeMe = true;
    step();
    EXPECT_FALSE(solid(50, 10));
}
