// The hero among what the stage holds: his spawn event, exit zones, platforms.
#include "actors/platforms/Platform.h"
#include "actors/player/PlayerStandard.h"
#include "game/WorldTest.h"

using namespace Zelkor;

namespace {

constexpr int raftType = 170, bounceShroom = 45;

// Carries from above: 20 wide, its top 5 above its place.
class Raft : public Platform {
  public:
    using Platform::Platform;
    void update(float, float) override { unit->position += move; }
    Vec3 carry() const override { return move; }
    PlatformContact pushOut(Vec3& centre, const Vec3& half, const Vec3&) override {
        const float into = unit->position.y + 5 - (centre.y - half.y);
        if (absolute(centre.x - unit->position.x) > 10 + half.x || into < 0 || into > 10) return {};
        centre.y += into;
        return {true, {0, 1, 0}};
    }
    bool containsPoint(float, float) const override { return false; }
    Vec3 move;
};
const SpawnRow raftRow{raftType, createActor<Raft>};

class HeroInStage : public WorldTest {
  protected:
    // Spawned by his event, one below the given feet.
    PlayerStandard& start(const std::string& feet, const std::string& events) {
        startStage("0 0 1 1 ", "{ StartupTriggers 1 0 SpawnPlayer{ pos " + feet +
                                   " rot 0 0 1 0 mesh none } " + events + " }");
        return dynamic_cast<PlayerStandard&>(*game->thingyManager->nearest(GROUP_PLAYER, {}));
    }
    Raft& raft(const Vec3& place) {
        return dynamic_cast<Raft&>(*game->thingyManager->spawn(raftType, "none", place));
    }
};

} // namespace

TEST_F(HeroInStage, RidesAPlatformAndBouncesOffAShroom) {
    PlayerStandard& hero = start("3 6 0", "");
    EXPECT_EQ(hero.position(), (Vec3{3, 5, 0}));
    Raft& under = raft({0, 0, 0});
    step(3);
    under.move = {1, 0.5f, 0};
    step(20);
    EXPECT_EQ(hero.standingOn, &under);
    EXPECT_NEAR(hero.position().x, 23, 1e-4f);
    EXPECT_NEAR(hero.position().y, 14.99f, 1e-4f);
    under.spawnType = bounceShroom;
    step(14);
    EXPECT_EQ(hero.state, PlayerState::onGround);
    step(3); // past a quarter of a second
    EXPECT_NEAR(hero.velocity.y, 119, 10.1f);
    under.move = {};
    under.removeMe = true;
    step(60);
    EXPECT_EQ(hero.standingOn, nullptr);
}

TEST_F(HeroInStage, LeavesTheAreaOnlyThroughItsExitZones) {
    PlayerStandard& hero = start("20 21 0", "CameraBounds{ min 0 0 max 100 100 instant 1 } "
                                            "CameraEdge{ min 90 10 max 110 40 dir 0 triggers 1 3 } "
                                            "Counter{ pos 0 0 0 numTriggers 100 } "
                                            "CameraEdge{ min 0 -50 max 50 0 dir 3 triggers 1 3 }");
    for (int event : {1, 2, 4})
        game->eventList()->poke(event);
    // Where he ends, and how often an exit has fired by then.
    const auto at = [&](float x, float y) {
        hero.teleport({x, y, 0});
        hero.velocity.x = x < 50 ? -9 : 9;
        hero.keepInView();
        return std::pair(hero.position().x, game->eventList()->at(3)->hitCount);
    };
    EXPECT_EQ(at(2, 20), std::pair(5.0f, 0)); // no exit on the left
    EXPECT_EQ(hero.velocity.x, 0);
    EXPECT_EQ(at(99, 50), std::pair(95.0f, 0)); // none at this height
    EXPECT_EQ(at(99, 20), std::pair(99.0f, 0));
    EXPECT_EQ(at(101, 20), std::pair(101.0f, 1));
    EXPECT_EQ(hero.velocity.x, 9);
    EXPECT_EQ(at(20, -11), std::pair(20.0f, 2)); // below the area, over the exit there
    at(60, -20);
    EXPECT_FALSE(hero.dead);
    at(60, -20.5f);
    EXPECT_TRUE(hero.dead);
}
