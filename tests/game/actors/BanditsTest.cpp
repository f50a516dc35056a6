// Bandits in tiny stages: what they see, when they shoot, where they turn and leap, how they die, whom they
// tell.
#include "actors/enemies/Bandit1.h"
#include "actors/enemies/CarrierBird.h"
#include "actors/weapons/Bullet.h"
#include "animation/SkeletonInstance.h"
#include "game/WorldTest.h"
#include "resources/UnitManager.h"

#include <cmath>

using namespace Zelkor;

namespace {

Attack attackAt(const Vec3& point, float way) {
    Attack attack;
    attack.boxMin = point - Vec3{0.5f, 0.5f, 0.5f};
    attack.boxMax = point + Vec3{0.5f, 0.5f, 0.5f};
    attack.damage = 1;
    attack.direction = {way, 0, 0};
    return attack;
}

// A body of the bandit's size, with one joint and clips that move nothing.
SkeletonData bones() {
    SkeletonData data;
    data.bindPose.resize(1);
    data.parents = {-1};
    data.jointNames = {"bandit_rig"};
    for (const char* clip :
         {"idle", "idle_up", "idle_down", "fire", "fire_up", "fire_down", "die", "die2", "crouch", "idle_aim",
          "fire_aim", "fire_aim_up", "up", "down", "run", "jump", "fall", "land"})
        data.clips.push_back({clip, {{{0, {}, {}}, {1, {}, {}}}}});
    return data;
}

class BanditsTest : public WorldTest {
  protected:
    // Floors at y 0, their surface at 5. The camera looks at x 50; a hero stands far off to the left.
    void stage(const std::vector<std::pair<int, int>>& floors, const std::string& more = "",
               const std::string& events = "") {
        std::string level = "0 0 1 1 ";
        for (const auto& [from, to] : floors)
            for (int x = from; x <= to; x += 10)
                level += "floor " + std::to_string(x) + " 0 0 ";
        startStage(level + more, events);
        writeMesh("man", {-3, 0, -1}, {3, 20, 1}, {});
        managers->unitManager->getMesh("man")->skeleton = &skeleton;
        lookAt(50);
        hero = &spawn(GROUP_PLAYER, {-500, 5, 0}, "man");
    }
    void lookAt(float x) {
        game->camera()->position = {x, 20, GameCamera::viewDistance};
        game->camera()->update();
    }
    Thingy& put(int type, const Vec3& place, const std::vector<SpawnParameter>& params = {},
                float facing = -1) {
        Thingy& spawned = *game->thingyManager->spawn(type, "man", place, facingRotation(facing));
        for (const auto& [number, value] : params)
            spawned.setParameter(number, value);
        return spawned;
    }
    Bandit1& bandit(const Vec3& place, const std::vector<SpawnParameter>& params = {}, float facing = -1) {
        return dynamic_cast<Bandit1&>(put(SpawnType::bandit1, place, params, facing));
    }
    // Those that have been shot since the last call, out of the way.
    std::vector<Vec3> shots() {
        std::vector<Vec3> ways;
        for (Thingy* actor : actors(GROUP_BULLETS)) {
            if (actor->removeMe) continue;
            ways.push_back(actor->velocity);
            actor->removeMe = true;
            actor->unit->position.y = 1000;
        }
        return ways;
    }
    // Runs so many steps; the numbers of those in which a shot left.
    std::vector<int> shotSteps(int steps) {
        std::vector<int> found;
        for (int i = 1; i <= steps; ++i) {
            step();
            if (!shots().empty()) found.push_back(i);
        }
        return found;
    }
    int stepsUntil(const std::function<bool()>& condition, int most = 300) {
        for (int steps = 1; steps <= most; ++steps) {
            step();
            if (condition()) return steps;
        }
        return -1;
    }
    static std::string clip(const Thingy& actor) {
        const auto& playing = actor.unit->skeleton->animations;
        return playing.empty() ? "" : playing.back()->clip->name;
    }
    bool alive(const Thingy& actor) { return game->thingyManager->contains(GROUP_ENEMIES, &actor); }
    static void expectNear(const std::vector<int>& seen, const std::vector<int>& wanted) {
        ASSERT_EQ(seen.size(), wanted.size());
        for (std::size_t i = 0; i < seen.size(); ++i)
            EXPECT_NEAR(seen[i], wanted[i], 2) << i;
    }

    SkeletonData skeleton = bones();
    TestActor* hero = nullptr;
};

} // namespace

TEST_F(BanditsTest, TheGuardTurnsAimsAndShootsInPairs) {
    struct Case {
        Vec3 hero;
        int facing;
        const char* fire;
        int first; // step of the first shot
    };
    // Aiming down he turns only near the end of his floor, which for the last one is near.
    for (const Case& c : {Case{{0, 5, 0}, -1, "fire", 1},
                          {{100, 5, 0}, 1, "fire", 46},
                          {{46, 5, 0}, 1, "fire", 46},
                          {{44, 5, 0}, -1, "fire", 1},
                          {{10, 26, 0}, -1, "fire_up", 1},
                          {{10, 24, 0}, -1, "fire", 1},
                          {{90, 26, 0}, 1, "fire_up", 46},
                          {{90, -20, 0}, -1, "fire_down", 1},
                          {{90, -2, 0}, 1, "fire", 46},
                          {{130, -60, 0}, 1, "fire_down", 46}}) {
        SCOPED_TRACE(::testing::Message() << c.hero.x << ' ' << c.hero.y);
        const float x = c.hero.y < -50 ? 95 : 50;
        stage({{-100, 100}});
        Bandit1& guard = bandit({x, 5, 0});
        hero->unit->position = c.hero;
        hero->hitResult = 0; // shots pass through him
        expectNear(shotSteps(c.first + 1), {c.first});
        EXPECT_EQ(clip(guard), c.fire);
        EXPECT_EQ(guard.facing, c.facing);
        expectNear(shotSteps(184), {35, 143, 179}); // 0.6, 1.8 and 0.6 seconds on
    }
}

TEST_F(BanditsTest, TheGuardShootsOnlyOnScreenAndOnlyAfterHisDelay) {
    for (const float x :
         {-45.0f, 145.0f, -43.0f, 143.0f}) { // 0.55 of a screen of 170 units from its middle at 50
        stage({{-100, 200}});
        bandit({x, 5, 0});
        hero->unit->position = {50, 5, 0};
        hero->hitResult = 0;
        EXPECT_EQ(shotSteps(120).empty(), std::abs(x - 50) > 94.5f) << x;
    }
    stage({{-100, 200}});
    Bandit1& late = bandit({50, 5, 0}, {{2, 1}});
    hero->unit->position = {51, 5, 0};
    EXPECT_TRUE(shotSteps(59).empty());
    EXPECT_EQ(late.facing, -1);
    EXPECT_GE(hero->hits, 58); // by touch
    expectNear(shotSteps(60), {47});
    EXPECT_EQ(late.facing, 1);
}

TEST_F(BanditsTest, TheMobileOneWalksBetweenShotsButNotOffHisFloor) {
    struct Case {
        int floorFrom, floorTo;
        float heroX, x; // x: where he is after his walk
        const char* more;
    };
    for (const Case& c : {Case{0, 100, 300, 100, ""},
                          {0, 100, -300, 0, ""},
                          {0, 100, 55, 0, ""},
                          {40, 50, 55, 50, ""},
                          {0, 200, 300, 100, "wall 110 10 0 wall -50 10 0 "}}) {
        SCOPED_TRACE(::testing::Message() << c.floorFrom << ' ' << c.heroX << c.more);
        stage({{c.floorFrom, c.floorTo}}, c.more);
        Bandit1& pacer = bandit({50, 5, 0}, {{1, 1}});
        hero->unit->position = {c.heroX, 5, 0};
        step(198);
        EXPECT_NEAR(pacer.position().x, c.x, 1.2f);
    }
}

TEST_F(BanditsTest, OnAPlatformHeRidesAndWithoutFloorHeFalls) {
    stage({{0, 100}});
    Thingy& lift = *game->thingyManager->spawn(18, "none", {50, 40, 0});
    Bandit1& rider = bandit({55, 45, 0});
    step(60);
    const Vec3 way = lift.position() - Vec3{50, 40, 0};
    EXPECT_GT(way.x, 20);
    EXPECT_NEAR(rider.position().x, 55 + way.x, 0.01f);
    lift.removeMe = true;
    EXPECT_GT(stepsUntil([&] { return rider.mode == Bandit1::run; }), 0);
    EXPECT_NEAR(rider.position().y, 5, 1e-3f);
}

TEST_F(BanditsTest, DuckingAndCoverAreCyclesOfShots) {
    struct Case {
        float mode;
        std::vector<int> shots, crouches; // the steps, and those in which he ducks or rises
    };
    for (const Case& c : {Case{1, {16, 52, 214 + 16, 214 + 52}, {1, 94, 214}}, {2, {31, 46, 226 + 31}, {}}}) {
        stage({{-100, 200}});
        Bandit1& ducker = bandit({50, 5, 0}, {{0, c.mode}});
        hero->unit->position = {0, 5, 0};
        EXPECT_TRUE(ducker.crouched);
        EXPECT_EQ(ducker.onHit(attackAt({50, 5 + 9.6f, 0}, -1)), 0);
        std::vector<int> shotAt, changedAt;
        for (int i = 1; i <= 270; ++i) {
            const bool before = ducker.crouched;
            step();
            if (!shots().empty()) shotAt.push_back(i);
            if (ducker.crouched != before) changedAt.push_back(i);
        }
        expectNear(shotAt, c.shots);
        expectNear(changedAt, c.crouches);
    }
    lookAt(250);
    stage({{-100, 200}});
    bandit({150, 5, 0}, {{0, 1}});
    EXPECT_TRUE(shotSteps(200).empty()); // off screen
}

TEST_F(BanditsTest, HitsThatMissAndHitsThatKill) {
    struct Case {
        float mode, x, height, way;
        const char* clip; // none: a miss
    };
    for (const Case& c : {Case{0, 0, 10, 1, "die2"},
                          {0, 0, 15.1f, 1, "die"},
                          {0, 0, 14.9f, 1, "die2"},
                          {0, 0, 10, -1, "die"},
                          {0, 2, 10, 0, "die"},
                          {0, -2, 10, 0, "die2"},
                          {0, 3.6f, 10, 1, nullptr},
                          {0, -3.4f, 10, 1, "die2"},
                          {0, 0, 20.6f, 1, nullptr},
                          {1, 0, 9.6f, 1, nullptr},
                          {1, 0, 9.4f, 1, "die2"},
                          {2, 0, 9.6f, 1, nullptr}}) {
        SCOPED_TRACE(::testing::Message() << c.mode << ' ' << c.x << ' ' << c.height << ' ' << c.way);
        stage({{-100, 200}}, "",
              "SpawnThingy{ pos 50 5 0 rot 180 0 1 0 mesh man type 20 param 0 " + std::to_string(c.mode) +
                  " triggers 1 1 } SpawnThingy{ pos 0 0 0 rot 0 0 1 0 mesh none type 184 }");
        hero->maxHealth = 1;
        hero->health = -2.2f; // as weak as this he is always left a cake
        game->eventList()->at(0)->activate();
        auto& target = dynamic_cast<Bandit1&>(*actors(GROUP_ENEMIES).at(0));
        const Attack attack = attackAt({50 + c.x, 5 + c.height, 0}, c.way);
        EXPECT_EQ(target.onHit(attack), c.clip ? 1 : 0);
        if (!c.clip) continue;
        EXPECT_EQ(clip(target), c.clip);
        EXPECT_EQ(target.onHit(attack), 0);
        EXPECT_EQ(actors(GROUP_PICKUPS).size(), 1u);
        EXPECT_EQ(actors(GROUP_SCENERY).size(), 1u); // blood
        hero->unit->position = target.position();
        EXPECT_NEAR(stepsUntil([&] { return actors(GROUP_ENEMIES).empty(); }), 46, 1);
        EXPECT_EQ(hero->hits, 0);
        EXPECT_EQ(game->eventList()->at(1)->hitCount, 1);
    }
}

TEST_F(BanditsTest, TheRunnerShootsLeapsAndRunsOutOfThePicture) {
    struct Case {
        std::vector<std::pair<int, int>> floors;
        const char* more;
        float speed;  // upwards, of his first leap
        int from, to; // steps in which it may come
    };
    for (const Case& c : {Case{{{-200, 200}}, "", 90, 96, 98},
                          {{{-200, 0}, {40, 200}}, "", 60, 13, 95},
                          {{{-200, 200}}, "wall 30 10 0 ", 90, 13, 95}}) {
        stage(c.floors, c.more);
        Bandit1& runner = bandit({90, 5, 0}, {{0, 5}}, 1);
        EXPECT_EQ(runner.facing, -1); // where the hero is
        const int leap = stepsUntil([&] { return runner.mode == Bandit1::fall; });
        EXPECT_GE(leap, c.from);
        EXPECT_LE(leap, c.to);
        EXPECT_NEAR(runner.velocity.y, c.speed, 0.01f);
        if (c.from == 96) {
            EXPECT_NEAR(runner.velocity.x, -50, 1e-3f);
            EXPECT_EQ(shots().size(), 1u); // after 1.2 seconds
        }
        shots();
        step(17);
        EXPECT_NEAR(runner.velocity.y, c.speed - 17, 0.1f);
        EXPECT_GT(stepsUntil([&] { return runner.velocity.y < -20 || runner.mode == Bandit1::run; }), 0);
        EXPECT_EQ(shots().size(), 1u);
        EXPECT_GT(stepsUntil([&] { return runner.mode == Bandit1::run; }), 0);
        EXPECT_EQ(runner.velocity.x, 0);
        EXPECT_EQ(clip(runner), "land");
        EXPECT_LT(runner.position().x, 40);
    }
    stage({{-200, 200}}, "",
          "SpawnThingy{ pos -80 5 0 rot 0 0 1 0 mesh man type 20 param 0 5 triggers 1 1 } Music{ pos 0 0 0 x "
          "}");
    game->eventList()->at(0)->activate();
    Thingy& leaver = *actors(GROUP_ENEMIES).at(0);
    EXPECT_GT(stepsUntil([&] { return !alive(leaver); }), 0); // at x -103.7, 0.4 of a screen beside it
    EXPECT_EQ(game->eventList()->at(1)->hitCount, 1);
    stage({});
    Bandit1& faller = bandit({50, 0, 0}, {{0, 6}});
    EXPECT_GT(stepsUntil([&] { return !alive(faller); }), 0);
}

TEST_F(BanditsTest, ABirdCarriesHimUntilOneOfThemIsShot) {
    for (const bool birdDies : {true, false}) {
        stage({{-100, 200}});
        Bandit1& hanging = bandit({50, 40, 0}, {{0, 7}});
        auto& bird = dynamic_cast<CarrierBird&>(*actors(GROUP_ENEMIES).at(1));
        hero->unit->position = {50, 40, 0};
        EXPECT_TRUE(shotSteps(100).empty()); // the hero is not far enough below
        hero->unit->position = {20, 5, 0};
        EXPECT_GT(stepsUntil([&] { return !actors(GROUP_BULLETS).empty(); }, 72), 0);
        const auto shot = shots();
        ASSERT_EQ(shot.size(), 1u);
        EXPECT_LT(shot[0].x, -20);
        EXPECT_LT(shot[0].y, -20);
        EXPECT_LT(hanging.position().x, 45); // carried towards him
        EXPECT_NEAR(bird.position().y - hanging.position().y, CarrierBird::aboveRider.y, 1e-3f);
        Thingy& target = birdDies ? static_cast<Thingy&>(bird) : hanging;
        EXPECT_EQ(target.onHit(attackAt(target.position() + Vec3{0, 1, 0}, 1)), 1);
        if (birdDies) {
            EXPECT_GT(stepsUntil([&] { return hanging.mode == Bandit1::run; }), 0);
            EXPECT_FALSE(alive(bird));
        } else {
            EXPECT_LE(hanging.velocity.y, -5);
            step(10);
            EXPECT_GT(bird.velocity.y, 8); // off and away
            step(34);
            EXPECT_EQ(hanging.position().y, 5); // on the floor
            EXPECT_GT(stepsUntil([&] { return actors(GROUP_ENEMIES).empty(); }), 0);
        }
    }
}

TEST_F(BanditsTest, DynamiteGoesOffOnTheHeroOnTilesAndOnPlatforms) {
    stage({{-100, 200}});
    Bandit1& thrower = bandit({90, 5, 0}, {{0, 4}});
    hero->unit->position = {10, 5, 0};
    EXPECT_NEAR(stepsUntil([&] { return actors(GROUP_ENEMIES).size() == 2; }), 54 + 23, 2);
    Thingy& bomb = *actors(GROUP_ENEMIES).at(1);
    EXPECT_EQ(bomb.onHit(attackAt(bomb.position(), 1)), 0);
    EXPECT_GT(stepsUntil([&] { return !alive(bomb); }), 0);
    EXPECT_EQ(hero->hits, 1);
    EXPECT_TRUE(alive(thrower));
    for (const bool onPlatform : {false, true}) {
        stage({{0, 100}});
        if (onPlatform) game->thingyManager->spawn(46, "none", {50, 40, 0});
        Thingy& falling = put(SpawnType::bomb, {52, 80, 0});
        float y = 0;
        EXPECT_GT(stepsUntil([&] { return !alive(falling) || (y = falling.position().y, false); }), 0);
        EXPECT_NEAR(y, onPlatform ? 45 : 5, 2.6f);
    }
}

TEST_F(BanditsTest, TheHatchOpensForAHeroNearItAndOnlyThenHeIsHit) {
    struct Case {
        float x, y;
        bool opens;
    };
    for (const Case& c :
         {Case{39, 5, true}, {41, 5, false}, {39, 46, false}, {-20, 5, false}, {-6, 5, true}}) {
        stage({{-100, 200}});
        Thingy& sly = put(21, {50, 5, 0}); // faces left
        hero->unit->position = {50 - c.x, c.y, 0};
        EXPECT_EQ(sly.onHit(attackAt({50, 10, 0}, 1)), 0);
        expectNear(shotSteps(100), !c.opens  ? std::vector<int>{}
                                   : c.x < 0 ? std::vector{34, 70}
                                             : std::vector{56, 92});
        if (!c.opens) continue;
        EXPECT_EQ(sly.onHit(attackAt({50, 14.6f, 0}, 1)), 0);
        EXPECT_EQ(sly.onHit(attackAt({50, 10, 0}, 1)), 1);
        EXPECT_LT(sly.aimOffset.y, -900);
        EXPECT_NEAR(stepsUntil([&] { return !alive(sly); }), 46, 1);
    }
}

TEST_F(BanditsTest, TheOneInTheWindowFollowsWithHisGun) {
    stage({});
    Thingy& sitter = put(22, {50, 5, 0});
    hero->unit->position = {0, 5, 0};
    expectNear(shotSteps(100), {30, 90});
    EXPECT_EQ(clip(sitter), "fire_aim");
    hero->unit->position = {20, 100, 0};
    step(60);
    EXPECT_EQ(clip(sitter), "fire_up");
    shots();
    lookAt(50 - 92);
    EXPECT_TRUE(shotSteps(100).empty());
    EXPECT_EQ(sitter.onHit(attackAt({51.4f, 18, 0}, 1)), 0); // his body is 5 behind his place
    EXPECT_EQ(sitter.onHit(attackAt({55, 12.4f, 0}, 1)), 0);
    EXPECT_EQ(sitter.onHit(attackAt({55, 18, 0}, 1)), 1);
    EXPECT_NEAR(stepsUntil([&] { return !alive(sitter); }), 37, 1);
}

TEST_F(BanditsTest, TheOneInACartStaysBesideTheHeroAndJumpsWhereHisRailsEnd) {
    stage({}, "",
          "Rail{ pos 0 0 0 triggers 1 1 } Rail{ pos 300 0 0 } Rail{ pos 330 0 0 triggers 1 3 } Rail{ pos 900 "
          "0 0 } StartupTriggers 2 0 2");
    Thingy& rider = put(43, {60, 0, 0});
    step(60);
    EXPECT_EQ(rider.position(), (Vec3{60, 4, 0}));
    float highest = 0;
    for (int i = 0; i < 420; ++i) {
        hero->unit->position = {-60 + 50 * static_cast<float>(i) / 60, 4, 0};
        lookAt(hero->unit->position.x);
        step();
        highest = std::max(highest, rider.position().y);
    }
    EXPECT_NEAR(rider.position().x - hero->unit->position.x, 60, 15);
    EXPECT_EQ(rider.position().y, 4);
    EXPECT_GT(highest, 15);
    EXPECT_GT(hero->hits, 1);
    EXPECT_EQ(rider.onHit(attackAt(rider.position() + Vec3{0, 10, 0}, 1)), 1);
    EXPECT_NEAR(stepsUntil([&] { return !alive(rider); }), 46, 1);
}
