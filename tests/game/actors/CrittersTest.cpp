// Enemies that are not bandits, by what they do in tiny stages. '#' solid, '=' bridge, '-' rail; the lowest
// row's middle is y 0, so its surface y 5.
#include "actors/enemies/Enemy.h"
#include "actors/player/Player.h"
#include "game/WorldTest.h"

#include <algorithm>
#include <cmath>

using namespace Zelkor;

namespace {

constexpr float second = 60; // steps

Attack attackAt(const Vec3& point, float damage = 1, float half = 0.5f) {
    Attack attack;
    attack.boxMin = point - Vec3{half, half, half};
    attack.boxMax = point + Vec3{half, half, half};
    attack.damage = damage;
    attack.direction = {1, 0, 0};
    return attack;
}

class CrittersTest : public WorldTest {
  protected:
    void stage(const std::string& rows, const std::string& events = "") {
        writeData("units/tiles/tiles6/tiledef.txt", "bridge type 257 ;");
        writeData("units/tiles/tiles1/tiledef.txt", "platformrails type 8 ;");
        const auto height = std::count(rows.begin(), rows.end(), '/');
        std::string text = "0 0 12 " + std::to_string(height + 1);
        std::size_t column = 0, row = static_cast<std::size_t>(height);
        for (const char tile : rows) {
            const char* name = tile == '#'   ? "wall"
                               : tile == '=' ? "tiles/tiles6/bridge"
                                             : "tiles/tiles1/platformrails";
            const std::string place = std::to_string(10 * column) + " " + std::to_string(10 * row) + " 0";
            if (tile != '.' && tile != '/') text += std::string(" ") + name + " " + place;
            column = tile == '/' ? 0 : column + 1;
            row -= tile == '/';
        }
        startStage(text + " ", events);
        lookAt({50, 0, 180});
    }
    void lookAt(const Vec3& place) {
        game->camera()->position = place;
        game->camera()->update();
    }
    Enemy& enemy(int type, const Vec3& place, const std::vector<SpawnParameter>& params = {},
                 const Quat& rot = {}) {
        auto& spawned = dynamic_cast<Enemy&>(*game->thingyManager->spawn(type, "none", place, rot));
        for (const auto& [number, value] : params)
            spawned.setParameter(number, value);
        return spawned;
    }
    // Steps until the condition holds; how many, or -1 after four seconds.
    int stepsUntil(const std::function<bool()>& condition) {
        for (int steps = 1; steps <= 4 * second; ++steps) {
            step();
            if (condition()) return steps;
        }
        return -1;
    }
    bool alive(const Thingy& actor) { return game->thingyManager->contains(GROUP_ENEMIES, &actor); }

    const Quat left = facingRotation(-1);
    const char* flat = "############";
};

} // namespace

TEST_F(CrittersTest, DieOfEnoughHitsLeaveLootAndTellTheirEvent) {
    struct Case {
        int type, hits;
        bool loot;
    };
    const Case cases[] = {{13, 3, true},  {30, 1, true},  {35, 1, false}, {44, 1, false},
                          {31, 2, false}, {6, 2, true},   {33, 1, false}, {9, 2, true},
                          {19, 3, true},  {29, 3, false}, {11, 4, true},  {4, 2, false}};
    for (const auto& [type, hits, loot] : cases) {
        SCOPED_TRACE(type);
        stage(flat, "SpawnThingy{ pos 50 20 0 rot 0 0 1 0 mesh none type " + std::to_string(type) +
                        " triggers 1 1 } SpawnThingy{ pos 0 0 0 rot 0 0 1 0 mesh none type 184 }");
        TestActor& hero = spawn(GROUP_PLAYER, {1000, 5, 0});
        hero.health = -2.2f; // as weak as this he is always left a cake
        hero.maxHealth = 1;
        game->eventList()->at(0)->activate();
        Thingy& foe = *actors(GROUP_ENEMIES).at(0);
        for (int hit = 1; hit <= hits; ++hit) {
            EXPECT_EQ(actors(GROUP_SCENERY).size(), 0u) << "before hit " << hit;
            EXPECT_EQ(foe.onHit(attackAt(foe.position() + Vec3{100, 0, 0})), 0);
            EXPECT_EQ(foe.onHit(attackAt(foe.position() + Vec3{1, 4, 0})), 1);
        }
        EXPECT_GT(stepsUntil([&] { return actors(GROUP_ENEMIES).empty(); }), 0);
        EXPECT_EQ(actors(GROUP_PICKUPS).size(), loot ? 1u : 0u);
        EXPECT_GT(actors(GROUP_SCENERY).size(), 0u); // what the event triggers; a duck bleeds too
    }
}

TEST_F(CrittersTest, WalkersFallWalkAndStandForAFrameWhereTheyTurn) {
    stage("............/............/#..........#/############");
    for (const int type : {13, 30}) {
        Enemy& walker = enemy(type, {60, 80, 0}, {}, left);
        EXPECT_EQ(walker.facing, -1);
        step(30);
        EXPECT_NEAR(walker.velocity.x, -20, 1e-3f); // 40 x 0.5 s
        EXPECT_NEAR(walker.velocity.y, -100, 0.1f); // 200 x 0.5 s
        step(60);
        EXPECT_EQ(walker.position().y, 5);
        EXPECT_GT(stepsUntil([&] { return walker.facing > 0; }), 0);
        EXPECT_EQ(walker.velocity.x, 0);
        EXPECT_NEAR(walker.position().x, 5 + 4, 0.4f); // the wall's face, 4 ahead
        step(60);
        EXPECT_NEAR(walker.velocity.x, 20, 1e-3f);
        walker.unit->position = {50, 400, 0};
        step(60);
        EXPECT_EQ(walker.velocity.y, -150);
        game->thingyManager->spawn(18, "none", {80, 10, 0})->setParameter(0, 0); // 75..95 by 5..15
        walker.unit->position = {60, 5, 0};
        EXPECT_GT(stepsUntil([&] { return walker.facing < 0; }), 0);
        EXPECT_NEAR(walker.position().x, 75 - 4, 0.4f);
        game->thingyManager->clear();
    }
}

TEST_F(CrittersTest, TheBatWakesSteersAndKeepsOutOfCells) {
    stage("############/............/............/....##....../....##....../############");
    TestActor& hero = spawn(GROUP_PLAYER, {-60.5f, 40, 0});
    Enemy& bat = enemy(35, {20, 40, 0});
    step(10);
    EXPECT_EQ(bat.velocity, Vec3{}); // 80.5 away
    hero.unit->position.x = -59.5f;
    step();
    // Awake, and one step of steering: aim 79.5 to the left and 5 up.
    const float far = std::hypot(79.5f, 5.0f), dt = 1.0f / 60;
    EXPECT_NEAR(bat.velocity.x, -79.5f / far * 50 * dt, 1e-3f);
    EXPECT_NEAR(bat.velocity.y, -23 * (1 - dt) + 5 / far * 50 * dt, 1e-3f);
    hero.unit->position = bat.position() + Vec3{0, -14, 0}; // his aim 9 away: it flies straight on
    const Vec3 before = bat.velocity;
    step();
    EXPECT_EQ(bat.velocity, before);
    hero.unit->position = {80, 15, 0}; // behind the block
    for (int i = 0; i < 600; ++i) {
        step();
        ASSERT_FALSE(game->tileGrid()->tileAt(bat.position(), TileType::solid)) << i;
    }
    EXPECT_GT(hero.hits, 0); // it has found a way around
}

TEST_F(CrittersTest, TheBunnyHopsByItsNumbers) {
    stage(".............../#............../#............../#............../#............../###############");
    Enemy& bunny = enemy(44, {45, 5, 0});
    TestActor& hero = spawn(GROUP_PLAYER, {-43, 5, 0});
    step(30);
    EXPECT_EQ(bunny.velocity.y, 0); // 88 away
    hero.unit->position.x = -41;
    EXPECT_NEAR(stepsUntil([&] { return bunny.velocity.y > 0; }), 1 + 0.1f * second, 1);
    EXPECT_EQ(bunny.velocity, (Vec3{-46, 150, 0}));
    float top = 0;
    stepsUntil([&] {
        top = std::max(top, bunny.position().y);
        return bunny.velocity.x >= 0;
    });
    EXPECT_NEAR(top, 5 + 150 * 150 / 600.0f, 1.5f);
    EXPECT_EQ(bunny.velocity.x, 23); // the wall: back, half as fast
    EXPECT_NEAR(bunny.position().x, 9, 1);
    EXPECT_GT(stepsUntil([&] { return bunny.velocity.y == 0 && bunny.position().y == 5; }), 0);
    EXPECT_EQ(bunny.velocity.x, 0);
    EXPECT_NEAR(stepsUntil([&] { return bunny.velocity.y > 0; }), 0.25f * second, 1);
    EXPECT_EQ(bunny.velocity.x, 46); // on the way it was turned to
}

TEST_F(CrittersTest, TheWolfLeapsClimbsHopsDownOrTurns) {
    struct Case {
        const char* what;
        const char* rows;
        float cameraX, heroX; // heroX 0: none
        Vec3 jump;            // none: it stands
        int facing;           // afterwards
    };
    const char* wall4 = "......#/......#/......#/......#/############";
    const float rise25 = 300 * std::sqrt(2 * 25 / 300.0f), rise15 = 300 * std::sqrt(2 * 15 / 300.0f);
    const Case cases[] = {
        {"gap of two", "######..####", 50, 0, {80, 0.5f * 300 * 4.5f * 10 / 80, 0}, 1},
        {"gap of one", "######.#####", 50, 0, {80, 70, 0}, 1},
        {"two up", ".......#####/.......#####/######.#####", 50, 0, {20 / (rise25 / 300), rise25, 0}, 1},
        {"down", "######......///############", 50, 0, {56, 60, 0}, 1},
        {"step", "......######/############", 50, 0, {48, rise15, 0}, 1},
        {"two steps", "......######/......######/############", 50, 0, {48, rise25, 0}, 1},
        {"under a roof", "...####...../......#...../......#...../############", 50, 0, {}, -1},
        {"wall", wall4, 50, 0, {}, -1},
        {"wall, never seen", wall4, 900, 0, {}, 1},
        {"narrow floor", "....##......", 50, 0, {}, 1},
        {"hero behind", "######..####", 50, 12, {}, -1},
        {"hero behind, narrow", "....##......", 50, 12, {}, -1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        stage(c.rows);
        lookAt({c.cameraX, 0, 180});
        if (c.heroX > 0) spawn(GROUP_PLAYER, {c.heroX, 5, 0});
        const bool high = std::string(c.what) == "down";
        Enemy& wolf = enemy(31, {45, high ? 35.0f : 5.0f, 0});
        const int steps = stepsUntil([&] { return wolf.velocity.y > 0 || wolf.facing < 0; });
        EXPECT_EQ(steps > 0, c.jump.y > 0 || c.facing < 0);
        EXPECT_EQ(wolf.facing, c.facing);
        EXPECT_NEAR(wolf.velocity.x, c.jump.x, 1e-2f);
        EXPECT_NEAR(wolf.velocity.y, c.jump.y, 1e-2f);
        if (!(c.jump.y > 0)) continue;
        const float height = wolf.position().y;
        step(5);
        EXPECT_EQ(wolf.position().y, height); // crouches for 0.1 s
        EXPECT_GT(stepsUntil([&] { return wolf.velocity.y == 0; }), 0);
        EXPECT_GT(wolf.position().x, 55);
        EXPECT_NEAR(wolf.velocity.x, 0.4f * c.jump.x, 1e-2f);
    }
}

TEST_F(CrittersTest, TurretsShootFiveWaysOnTimeAndOnScreen) {
    stage(flat);
    const Quat onRightWall = quatFromAxisAngle(pi / 2, {0, 0, 1}); // its up points left
    Enemy& turret = enemy(6, {90, 40, 0}, {{0, 1.5f}}, onRightWall);
    const Vec3 tip{78.2f, 40, 0}; // 11.8 from the wall
    EXPECT_EQ(turret.onHit(attackAt(tip, 0)), 0);
    step(115);
    EXPECT_EQ(turret.onHit(attackAt(tip, 0)), 1); // out for the shot
    EXPECT_TRUE(actors(GROUP_BULLETS).empty());
    EXPECT_NEAR(stepsUntil([&] { return !actors(GROUP_BULLETS).empty(); }), 2 * second - 115, 1);
    const auto bullets = actors(GROUP_BULLETS);
    ASSERT_EQ(bullets.size(), 5u);
    for (int i = 0; i < 5; ++i) {
        const float angle = pi / 2 + static_cast<float>(i) * pi / 4;
        EXPECT_NEAR(distance(bullets[i]->velocity, 85 * Vec3{std::cos(angle), std::sin(angle), 0}), 0, 1e-2f)
            << i;
    }
    step(36);
    EXPECT_EQ(turret.onHit(attackAt(tip, 0)), 0); // back in its sleeve
    lookAt({900, 0, 180});
    step(1.5f * second);
    EXPECT_EQ(actors(GROUP_BULLETS).size(), 0u); // those shot before have left, and no others came
}

TEST_F(CrittersTest, BarrelsRollAndBlowUpBridgesAndEachOther) {
    stage("..................../..................../..................../#####===========####");
    writeMesh("keg", {-5, -5, -4}, {5, 5, 4}, {});
    Enemy& still = enemy(33, {100, 10, 0}, {{0, 0}});
    TestActor& hero = spawn(GROUP_PLAYER, {104.5f, 10, 0});
    step(10);
    EXPECT_EQ(still.position(), (Vec3{100, 10, 0}));
    TestActor& foe = spawn(GROUP_ENEMIES, {102, 10, 0});
    foe.hitResult = 0;
    step();
    EXPECT_TRUE(alive(still)); // nothing there that can be hit
    foe.hitResult = 1;
    step();
    EXPECT_FALSE(alive(still));
    EXPECT_EQ(foe.hits, 1);
    EXPECT_EQ(hero.hits, 1); // only the blast reaches so far
    for (int column = 5; column < 16; ++column)
        EXPECT_EQ(game->tileGrid()->tileAt({10.0f * static_cast<float>(column), 0, 0}, TileType::any) ==
                      nullptr,
                  column >= 9 && column <= 11)
            << column;
    EXPECT_GT(game->camera()->shakeAmplitude, 0.5f);
    foe.removeMe = true;
    Enemy& roller = enemy(33, {60, 10, 0}, {{0, 30}});
    step(30);
    EXPECT_NEAR(roller.position().x, 75, 0.1f);
    EXPECT_NEAR(roller.unit->orientation.z, sine(-0.1f * 15 / 2), 1e-3f);
    EXPECT_EQ(roller.onHit(attackAt(roller.position() + Vec3{7.6f, 0, 0})), 0);
    EXPECT_EQ(roller.onHit(attackAt(roller.position() + Vec3{7.4f, 0, 0})), 1);
    step();
    for (const float apart : {10.0f, 12.0f}) {
        for (const float x : {20.0f, 20 + apart})
            game->thingyManager->spawn(33, "keg", {x, 10, 0})->setParameter(0, 0);
        step(3);
        EXPECT_EQ(actors(GROUP_ENEMIES).size(), apart > 11 ? 2u : 0u);
    }
}

TEST_F(CrittersTest, SawsFollowTheirPathsAndStopShots) {
    stage("............/..-----...../..-...-...../..-----...../............/...----...../............");
    TestActor& hero = spawn(GROUP_PLAYER, {22, 80, 0});
    Enemy& saw = enemy(24, {0, 80, 0}, {{0, 50}, {1, 4}, {3, 0}});
    step(60); // half way out
    EXPECT_NEAR(saw.position().x, 25, 1e-3f);
    EXPECT_NEAR(absolute(saw.unit->orientation.z), absolute(sine(5 * pi * 0.5f / 2)), 1e-3f);
    EXPECT_GT(hero.hits, 0);
    step(120); // there, and half way back
    EXPECT_NEAR(saw.position().x, 25, 1e-3f);
    EXPECT_EQ(saw.onHit(attackAt(saw.position() + Vec3{4.4f, 0, 0}, 100)), 1);
    EXPECT_EQ(saw.onHit(attackAt(saw.position() + Vec3{4.6f, 0, 0}, 100)), 0);
    Enemy& shuttle = enemy(47, {40, 10, 0}); // rails from 60 to 30; 20 from their start
    step(30);
    EXPECT_NEAR(shuttle.position().x, 40, 0.1f); // 10 to the end and back
    step(45);
    EXPECT_NEAR(shuttle.position().x, 50, 0.1f);     // 20 back to the start, and 10 again
    Enemy& ring = enemy(47, {20, 30, 0}, {{0, 60}}); // 120 units around
    step(120);
    EXPECT_NEAR(distance(ring.position(), {20, 30, 0}), 0, 0.5f);
    step(60);
    EXPECT_NEAR(distance(ring.position(), {60, 50, 0}), 0, 12); // about opposite
    EXPECT_TRUE(alive(ring));
    Enemy& lost = enemy(47, {110, 60, 0}); // no rails
    step(10);
    EXPECT_EQ(lost.position(), (Vec3{110, 60, 0}));
}

TEST_F(CrittersTest, TheFanFadesOverTheLastTenthOfItsReach) {
    stage(flat);
    auto& hero = dynamic_cast<Player&>(*game->thingyManager->spawn(SpawnType::player, "none", {}));
    for (const float side : {1.0f, -1.0f}) {
        Enemy& fan = enemy(17, {50, 15, 0}, {{0, 100}}, facingRotation(side));
        // The hero's feet from the fan, downwind and upwards, and what carries him.
        const Vec3 cases[] = {{10, -10, 25}, {90, -10, 25}, {92.5f, -10, 12.5f}, {95, -10, 0},
                              {-1, -10, 0},  {50, 11, 0},   {50, -17, 0}};
        for (const auto& [along, above, strength] : cases) {
            hero.unit->position = fan.position() + Vec3{along * side, above, 0};
            hero.carryVelocity = {};
            fan.update(0, 0.016f);
            EXPECT_NEAR(hero.carryVelocity.x, strength * side, 1e-2f) << along;
        }
        EXPECT_EQ(fan.onHit(attackAt(fan.position())), 0);
        fan.removeMe = true;
        step();
    }
}

TEST_F(CrittersTest, MachinesKeepTheirTimes) {
    stage("............/............/...###....../............/............/............");
    // A gun that is upright for its first shot: a shot up and one down, 10 from the middle.
    Enemy& gun = enemy(19, {50, 30, 0});
    EXPECT_NEAR(stepsUntil([&] { return !actors(GROUP_BULLETS).empty(); }), 1.7f * second, 1);
    ASSERT_EQ(actors(GROUP_BULLETS).size(), 2u);
    EXPECT_NEAR(actors(GROUP_BULLETS)[0]->velocity.y, 85, 1e-2f);
    EXPECT_NEAR(actors(GROUP_BULLETS)[1]->velocity.y, -85, 1e-2f);
    gun.removeMe = true;
    Enemy& ball = enemy(15, {0, 0, 0}, {{0, pi / 2}, {1, 40}, {2, pi}});
    EXPECT_NEAR(distance(ball.position(), {0, 40, 0}), 0, 1e-3f);
    step(30);
    EXPECT_NEAR(distance(ball.position(), {-40, 0, 0}), 0, 0.1f);
    EXPECT_EQ(ball.onHit(attackAt(ball.position() + Vec3{8.4f, 0, 0})), 1);
    // Around a block of three cells: 12 cells of way at 20 a second, six seconds.
    Enemy& crawler = enemy(10, {40, 40, 0});
    bool below = false;
    for (int i = 0; i < 12 * 30; ++i) {
        step();
        below |= distance(crawler.position(), {40, 20, 0}) < 1;
        ASSERT_FALSE(game->tileGrid()->tileAt(crawler.position(), TileType::solid)) << i;
    }
    EXPECT_TRUE(below);
    EXPECT_NEAR(distance(crawler.position(), {40, 40, 0}), 0, 2);
    // Two seconds into its cycle: on after half a second, for 1.2 s, deadly until it has faded to a half.
    TestActor& hero = spawn(GROUP_PLAYER, {100, 0, 0});
    Enemy& fence = enemy(16, {80, 0, 0}, {{0, 2}, {1, 40}});
    EXPECT_NEAR(stepsUntil([&] { return hero.hits > 0; }), 0.5f * second, 1);
    hero.hits = 0;
    step(1.2f * second);
    EXPECT_NEAR(hero.hits, (1.2f - 0.125f) * second - 1, 2);
    fence.removeMe = true;
    hero.hits = 0;
    enemy(14, {100, 50, 0}, {{0, -45}, {1, -pi / 2}, {2, 52}}); // points down after half a second
    EXPECT_NEAR(stepsUntil([&] { return hero.hits > 0; }), 0.5f * second, 2);
}

TEST_F(CrittersTest, WhatFliesDriftsWavesAndBursts) {
    stage("........#.../........#.../........#.../........#.../........#...");
    Enemy& lamp = enemy(9, {110, 20, 0}, {{0, 40}, {1, 15}, {2, pi}}, left);
    step(30);
    EXPECT_NEAR(lamp.position().x, 90, 0.1f);
    EXPECT_NEAR(lamp.position().y, 35, 0.1f); // a quarter of its wave
    EXPECT_NEAR(lamp.position().z, 4, 0.9f);
    step(18);
    EXPECT_NEAR(lamp.position().z, 12, 1); // before the wall
    step(30);
    EXPECT_NEAR(lamp.position().z, 4, 1);
    lamp.removeMe = true;
    // The gull bombs whom it sees below it, and only him.
    TestActor& hero = spawn(GROUP_PLAYER, {20, -60, 0});
    Enemy& gull = enemy(4, {-60, 30, 0}, {{0, 30}});
    for (const float seconds : {35 / 30.0f + 0.4f, 1.5f}) {
        EXPECT_NEAR(stepsUntil([&] { return actors(GROUP_ENEMIES).size() > 1; }), seconds * second, 2);
        actors(GROUP_ENEMIES).back()->removeMe = true;
    }
    hero.unit->position.x = 500;
    EXPECT_LT(stepsUntil([&] { return actors(GROUP_ENEMIES).size() > 1 || gull.position().x > 80; }), 120);
    EXPECT_EQ(actors(GROUP_ENEMIES).size(), 1u);
    EXPECT_NEAR(gull.position().z, 8, 0.6f); // inside the wall
    game->thingyManager->clear();
    const Vec4 hits[] = {
        {2, 10.4f, 0, 1}, {2, 10.6f, 0, 0}, {1, 4, 4, 1}, {1, 4.3f, 4.3f, 0}}; // size, where, result
    for (const auto& [size, x, y, result] : hits) {
        Enemy& rock = enemy(29, {20, 20, 0}, {{0, size}, {1, 0}});
        EXPECT_EQ(rock.health, size > 1 ? 3 : 2);
        EXPECT_EQ(rock.onHit(attackAt(rock.position() + Vec3{x, y, 0})), static_cast<int>(result)) << x;
        rock.removeMe = true;
    }
    Enemy& rock = enemy(29, {20, 20, 0}, {{0, 1}, {1, 60}, {2, 0}});
    EXPECT_NEAR(stepsUntil([&] { return !alive(rock); }), (75 - 5 - 20) / 60.0f * second, 2);
}

TEST_F(CrittersTest, TheMortarFiresThreeTimesAndThenWhileTheHeroStays) {
    stage(std::string(40, '#'));
    TestActor& hero = spawn(GROUP_PLAYER, {151, 5, 0});
    enemy(11, {200, 5, 0});
    std::vector<int> shots; // the steps at which they leave
    for (int i = 1; i <= 6 * second; ++i) {
        step();
        if (i == 2.3f * second) hero.unit->position.x = 143; // still near enough
        if (i == 4 * second) hero.unit->position.x = 139;
        for (Thingy* shot : actors(GROUP_BULLETS)) {
            if (shots.size() < 4) {
                shots.push_back(i);
                EXPECT_NEAR(shot->velocity.x, 0, 130 * std::sin(0.51f));
                shot->removeMe = shots.size() < 4; // the last may fly
            }
            EXPECT_GE(shot->velocity.y, -100);
        }
    }
    ASSERT_EQ(shots.size(), 4u); // at 1.1, 1.9, 2.7 and 3.5 s
    for (int shot = 0; shot < 4; ++shot)
        EXPECT_NEAR(shots[static_cast<std::size_t>(shot)], (1.1f + 0.8f * static_cast<float>(shot)) * second,
                    2);
    EXPECT_TRUE(actors(GROUP_BULLETS).empty()); // burst on the ground
}

TEST_F(CrittersTest, WildParametersDoNoHarm) {
    stage("#.........--#/############");
    spawn(GROUP_PLAYER, {50, 5, 0});
    for (const float value : {std::nanf(""), INFINITY, -INFINITY, -1e30f, 1e30f, 0.0f}) {
        for (const int type : {6, 9, 10, 14, 15, 16, 17, 19, 24, 29, 33, 47})
            for (int index = -1; index < 6; ++index)
                enemy(type, {60, 15, 0}, {{index, value}});
        step(20);
        EXPECT_LT(actors(GROUP_BULLETS).size(), 500u); // no endless volleys
        game->thingyManager->clear();
    }
}
