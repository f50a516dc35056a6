// The hero without ground: in flight with his boiler, and in fields that turn his gravity.
#include "actors/player/PlayerRocket.h"
#include "actors/player/PlayerStandard.h"
#include "frontend/MenuManager.h"
#include "fx/ParticleManager.h"
#include "game/WorldTest.h"

using namespace Zelkor;

namespace {

class FlightTest : public WorldTest {
  protected:
    PlayerRocket& takeOff(const std::string& level = "") {
        startStage("0 0 1 1 " + level, "{ CameraBounds{ min -200 -100 max 200 100 instant 1 } "
                                       "SpawnThingy{ pos 0 0 0 rot 0 0 1 0 mesh none type 27 triggers 1 2 } "
                                       "NonReset{ pos 0 0 0 } StartupTriggers 2 0 1 }");
        auto& hero = dynamic_cast<PlayerRocket&>(*game->thingyManager->nearest(GROUP_PLAYER, {}));
        hero.input.overridden = true;
        return hero;
    }
    static Attack blow(const Vec3& from, const Vec3& at) {
        Attack attack;
        attack.boxMin = at - Vec3{0.1f, 0.1f, 0};
        attack.boxMax = at + Vec3{0.1f, 0.1f, 0};
        attack.direction = from;
        return attack;
    }
};

} // namespace

TEST_F(FlightTest, FollowsTheStickAndStopsAtWhatItMeets) {
    PlayerRocket& hero = takeOff("floor 100 10 0 ");
    const float diagonal = 45 * squareRoot(0.5f), gain = 200.0f / 60, loss = 180.0f / 60;
    struct Case {
        Vec3 stick;
        int steps;
        float x, y; // speeds after them
    };
    for (const Case& c : {Case{{1, 0, 0}, 3, 3 * gain, 0}, {{1, 0, 0}, 30, 45, 0}, {{0.09f, 0, 0}, 2, 45 - 2 * loss, 0},
                          {{-1, -1, 0}, 60, -diagonal, -diagonal}, {{0, 0.5f, 0}, 60, 0, 22.5f}}) {
        hero.input.overrideStick = c.stick;
        step(c.steps);
        EXPECT_NEAR(distance(hero.velocity, {c.x, c.y, 0}), 0, 1e-3f) << c.stick.x << ' ' << c.stick.y;
    }
    hero.teleport({0, 0, 0});
    hero.input.overrideStick = {1, 0, 0};
    step(240);
    EXPECT_NEAR(hero.feet().x, 100 - 5 - 4.5f, 0.8f); // at the wall
    hero.input.overridden = false;
    hero.bodyCentre = {-300, 300, 0};
    step();
    EXPECT_NEAR(distance(hero.feet(), {-195, 90, 0}), 0, 1e-3f); // held in the camera's area
}

TEST_F(FlightTest, IsHitInTwoBoxesAndBursts) {
    PlayerRocket& hero = takeOff();
    hero.setWeapon(WeaponIndex::rocketGun);
    step(20);
    const Vec3 at = hero.position();
    for (const Vec3& miss : {Vec3{6, 12, 0}, {-3, 11.5f, 0}, {-5.3f, 0, 0}, {8.2f, 5, 0}, {2, 13.7f, 0}, {2, -2.2f, 0}})
        EXPECT_EQ(hero.onHit(blow({1, 0, 0}, at + miss)), 0) << miss.x << ' ' << miss.y;
    int left = 4;
    for (const Vec3& hit : {Vec3{7, -1, 0}, {-4, 9, 0}, {2, 13, 0}, {2, 11, 0}}) {
        EXPECT_EQ(hero.onHit(blow({left % 2 ? 1.0f : -1.0f, 0, 0}, at + hit)), 1);
        EXPECT_EQ(hero.onHit(blow({1, 0, 0}, at + hit)), 0); // while it blinks
        EXPECT_EQ(hero.health, --left);
        if (left == 0) break;
        EXPECT_EQ(hero.velocity, (Vec3{left % 2 ? -30.0f : 30.0f, 10, 0}));
        EXPECT_EQ(hero.weapon->index, WeaponIndex::mainGun);
        hero.flash = 0;
    }
    EXPECT_TRUE(game->eventList()->at(2)->fired);
    EXPECT_TRUE(game->menuManager->isOpen(MenuKind::death));
}

TEST_F(FlightTest, FieldsTurnWhoIsInThemAndStreamWhereTheyPull) {
    startStage("0 0 1 1 ", "{ Field{ min 0 0 max 40 20 type 0 } Field{ min 0 0 max 40 20 type 1 } "
                           "Field{ min 0 0 max 40 20 type 2 } Field{ min 0 0 max 40 20 type 3 } "
                           "Field{ min 0 0 max 40 20 type 4 } SpawnPlayer{ pos 20 1 0 rot 0 0 1 0 mesh none } "
                           "StartupTriggers 1 5 }");
    auto& hero = dynamic_cast<PlayerStandard&>(*game->thingyManager->nearest(GROUP_PLAYER, {}));
    hero.input.overridden = true;
    const SpriteLists& sprites = managers->particleManager->sprites();
    const int others = sprites.count();
    const Vec3 ups[] = {{0, 1, 0}, {0, -1, 0}, {1, 0, 0}, {-1, 0, 0}};
    for (int type = 0; type < 5; ++type) {
        game->eventList()->poke(type);
        EXPECT_EQ(sprites.count(), others + (type < 4));
        hero.bodyCentre = {20, 10, 0};
        hero.velocity = {};
        step();
        const Vec3 turned = type < 4 ? ups[type] : Vec3{0, 1, 0};
        EXPECT_EQ(hero.up, turned) << type;
        EXPECT_EQ(hero.right, turned.y != 0 ? (Vec3{1, 0, 0}) : (Vec3{0, 1, 0}));
        step(2);
        EXPECT_LT(dot(hero.worldVelocity(), hero.up), -4); // he falls to its side
        hero.bodyCentre = {-1, 10, 0};                     // his middle is out of it
        step(2);
        EXPECT_EQ(hero.up, (Vec3{0, 1, 0}));
        game->eventList()->at(type)->reset();
        EXPECT_EQ(sprites.count(), others);
    }
}
