// Guns, bullets, what is picked up, and the bar that shows health.
#include "actors/player/PlayerStandard.h"
#include "actors/weapons/Bullet.h"
#include "fx/ParticleManager.h"
#include "game/WorldTest.h"
#include "gui/GuiWorkspace.h"
#include "gui/HealthBar.h"

#include <cmath>

using namespace Zelkor;

namespace {

class WeaponsTest : public WorldTest {
  protected:
    // The hero stands at the origin, facing right, on a screen around him.
    PlayerStandard& start(const std::string& level = "floor 0 0 0 ") {
        startStage("0 0 1 1 " + level, "{ SpawnPlayer{ pos 0 6 0 rot 0 0 1 0 mesh none } StartupTriggers 1 0 }");
        auto& hero = dynamic_cast<PlayerStandard&>(*game->thingyManager->nearest(GROUP_PLAYER, {}));
        hero.input.overridden = true;
        game->camera()->snap = true;
        step(60);
        return hero;
    }
    TestActor& enemy(const Vec3& place) {
        TestActor& target = spawn(GROUP_ENEMIES, place);
        target.hitPadding = {3, 3, 3};
        return target;
    }
    std::vector<Bullet*> bullets() {
        std::vector<Bullet*> found;
        for (Thingy* actor : actors(GROUP_BULLETS))
            found.push_back(dynamic_cast<Bullet*>(actor));
        return found;
    }
};

} // namespace

TEST_F(WeaponsTest, EachGunShootsAsOftenAsItMay) {
    PlayerStandard& hero = start();
    struct Case {
        int index, bulletType, atOnce, each; // atOnce: shots that leave in one moment
        float speed, again;                  // again: seconds until the first slot may shoot once more, 0: not asked
    };
    for (const Case& c : {Case{0, 76, 3, 1, 110, 0.9f}, {1, 2, 2, 3, 130, 0.7f}, {2, 72, 3, 1, 70, 0},
                          {3, 73, 1, 1, 40, 0.5f}, {4, 74, 3, 1, 150, 0.2f}, {5, 75, 10, 1, 60, 0}}) {
        hero.setWeapon(c.index);
        step(60);
        for (Bullet* old : bullets())
            old->removeMe = true;
        step();
        int shots = 0;
        while (shots < 10 && hero.fire(false))
            ++shots;
        EXPECT_EQ(shots, c.atOnce) << c.index;
        ASSERT_EQ(bullets().size(), static_cast<std::size_t>(c.atOnce * c.each));
        EXPECT_EQ(bullets()[0]->spawnType, c.bulletType);
        EXPECT_NEAR(length(bullets()[0]->velocity), c.speed, 1e-3f);
        EXPECT_EQ(bullets()[0]->targetGroup, GROUP_ENEMIES);
        if (c.again == 0) continue;
        for (Bullet* flying : bullets()) // far from every wall
            flying->unit->position = {0, 500, 0}, flying->velocity = {};
        step(static_cast<int>(c.again * 60) - 1);
        EXPECT_FALSE(hero.fire(false)) << c.index;
        step(3);
        EXPECT_TRUE(hero.fire(false)) << c.index;
    }
}

TEST_F(WeaponsTest, AShotThatIsGoneFreesItsSlot) {
    PlayerStandard& hero = start("floor 0 0 0 wall 60 10 0 wall 60 20 0 ");
    EXPECT_TRUE(hero.fire(false) && hero.fire(false) && hero.fire(false));
    EXPECT_FALSE(hero.fire(false));
    step(40); // all three end at the wall
    EXPECT_TRUE(bullets().empty());
    EXPECT_TRUE(hero.fire(false) && hero.fire(false) && hero.fire(false));
    EXPECT_FALSE(hero.fire(false));
}

TEST_F(WeaponsTest, ShotsFollowTheGravityOfTheHero) {
    PlayerStandard& hero = start();
    const auto shootsAlong = [&](const Vec3& up, const Vec3& right, float facing) {
        hero.weapon->fire(100, {}, facing, up, {1, 2, 0});
        Bullet& shot = *bullets().back();
        EXPECT_NEAR(distance(shot.position(), {1, 2, 0}), 0, 1e-4f);
        Vec3 way = shot.velocity;
        normalize(way);
        EXPECT_NEAR(dot(way, right) * facing, 1, 1e-4f) << up.x << ' ' << up.y << ' ' << facing;
        hero.setWeapon(hero.weapon->index == 3 ? 4 : 3);
    };
    for (const float facing : {1.0f, -1.0f}) {
        shootsAlong({0, 1, 0}, {1, 0, 0}, facing);
        shootsAlong({0, -1, 0}, {1, 0, 0}, facing);
        shootsAlong({1, 0, 0}, {0, 1, 0}, facing);
        shootsAlong({-1, 0, 0}, {0, 1, 0}, facing);
    }
}

TEST_F(WeaponsTest, RocketsHurtAllAroundAndLasersPassThrough) {
    PlayerStandard& hero = start();
    TestActor &first = enemy({30, 14, 0}), &beside = enemy({32, 18, 0}), &far = enemy({60, 14, 0});
    const auto shoot = [&](int weapon) {
        hero.setWeapon(weapon);
        hero.weapon->fire(100, {10, 14, 0}, 1, {0, 1, 0}, {});
        step(60);
    };
    shoot(3);
    EXPECT_EQ(first.hits, 2);  // the hit and the blast
    EXPECT_EQ(beside.hits, 1); // the blast only
    EXPECT_EQ(far.hits, 0);
    EXPECT_EQ(game->camera()->shakeDecay, 2);
    first.hits = 0;
    shoot(4);
    EXPECT_EQ(first.hits, 1);
    EXPECT_EQ(far.hits, 1);
    shoot(0);
    EXPECT_EQ(first.hits, 2);
    EXPECT_EQ(far.hits, 1); // the first has stopped it
}

TEST_F(WeaponsTest, HomingShotsSteerAndBouncingOnesComeInTrains) {
    std::string floor;
    for (int x = -100; x <= 200; x += 10)
        floor += "floor " + std::to_string(x) + " 0 0 ";
    PlayerStandard& hero = start(floor);
    TestActor& target = enemy({70, 40, 0});
    hero.setWeapon(2);
    for (int shot = 0; shot < 3; ++shot)
        hero.weapon->fire(100, {10, 20, 0}, 1, {0, 1, 0}, {});
    step(20);
    for (const Bullet* bullet : bullets())
        EXPECT_GT(bullet->velocity.y, 10);
    target.removeMe = true;
    hero.setWeapon(5);
    for (Bullet* old : bullets())
        old->removeMe = true;
    step();
    hero.weapon->fire(0, {10, 14, 0}, 1, {0, 1, 0}, {});
    step(13);
    EXPECT_EQ(bullets().size(), 4u);
    float highest = 0;
    for (int i = 0; i < 60; ++i, step())
        highest = std::max(highest, bullets().empty() ? 0 : bullets()[0]->position().y);
    EXPECT_GT(highest, 12); // off the floor
    step(60);
    EXPECT_TRUE(bullets().empty());
    EXPECT_EQ(managers->particleManager->sprites().count(), 0);
}

TEST_F(WeaponsTest, PickupsHealArmAndAHitTakesTheGunAway) {
    PlayerStandard& hero = start("floor 0 0 0 floor 30 0 0 ");
    const auto take = [&](const char* unitName) {
        game->thingyManager->spawn(SpawnType::pickup, unitName, {2, 5, 0})->setParameter(1, 0);
        step(2);
        EXPECT_TRUE(actors(GROUP_PICKUPS).empty()) << unitName;
    };
    hero.health = 1;
    take("pickups/cake1");
    EXPECT_EQ(hero.health, 2);
    take("pickups/cake2");
    take("pickups/cake1");
    EXPECT_EQ(hero.health, 4);
    take("bouncegun");
    EXPECT_EQ(hero.weapon->index, 5);
    take("lasergun");
    EXPECT_EQ(hero.weapon->index, 4);
    const PlayerWeapon* held = hero.weapon.get();
    take("lasergun");
    EXPECT_EQ(hero.weapon.get(), held);
    hero.onHit({nullptr, {-20, -20, 0}, {20, 20, 0}, 3, 0, {1, 0, 0}});
    EXPECT_EQ(hero.weapon->index, 0);
    EXPECT_EQ(hero.health, 3);
    // One that falls lies on the floor, and not for ever.
    game->thingyManager->spawn(SpawnType::pickup, "pickups/cake1", {30, 40, 0});
    step(60);
    ASSERT_EQ(actors(GROUP_PICKUPS).size(), 1u);
    EXPECT_NEAR(actors(GROUP_PICKUPS)[0]->position().y, 5, 0.01f);
    step(600);
    EXPECT_TRUE(actors(GROUP_PICKUPS).empty());
}

TEST_F(WeaponsTest, TheHealthBarFillsAndFollows) {
    GuiScreenWorkspace screen(false);
    HealthBar bar(screen.root);
    EXPECT_FALSE(bar.visible());
    bar.show(true);
    bar.update(0.5f, 0.5f);
    EXPECT_NEAR(bar.height(), 0.3f, 1e-5f);
    bar.update(0.5f, 0.5f);
    EXPECT_NEAR(bar.height(), 0.325f, 1e-5f);
    bar.update(0.25f, 0.1f); // eases by a tenth of the way
    EXPECT_NEAR(bar.height(), (0.5f - 0.025f) * 0.65f, 1e-5f);
}
