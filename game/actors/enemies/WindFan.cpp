// A fan that blows the hero along.
#include "actors/ThingyManager.h"
#include "actors/enemies/Enemy.h"
#include "actors/player/Player.h"
#include "animation/SkeletonInstance.h"
#include "game/Game.h"
#include "game/Session.h"
#include "resources/Scene.h"
#include "resources/Unit.h"

#include <vector>

using namespace Zelkor;

namespace {

constexpr struct {
    float bladeSpeed = 20; // radians per second
    float strength = 25;   // units per second that it carries the hero
    float shortest = 1, longest = 500;
    float reach = 60;              // of the wind; also the length of the unit "wind"
    float fullUntil = 0.9f;        // of the reach: no weaker up to here,
    float fade = 0.05f;            // and nothing left after so much more of it
    float below = -16, above = 10; // of the wind box, from the fan's middle; the hero's feet are in it
} fan;

class WindFan : public Enemy {
  public:
    explicit WindFan(Unit& ownUnit) : Enemy(ownUnit, 0), scene_(Game::get().session->scene) {
        ownUnit.orientation = facingRotation(static_cast<float>(facing));
        wind_ = scene_.createUnit("wind", ownUnit.position, ownUnit.orientation);
    }
    ~WindFan() override { scene_.removeUnit(wind_); }

    int onHit(const Attack&) override { return 0; }

    void setParameter(int index, float value) override {
        if (index != 0) return;
        reach_ = clamp(value, fan.shortest, fan.longest);
        wind_->scale.x = reach_ / fan.reach;
    }

    void update(float time, float dt) override {
        turnBlades(time);
        std::vector<Thingy*> heroes;
        Game::get().thingyManager->collectAll(GROUP_PLAYER, heroes);
        for (Thingy* actor : heroes)
            if (auto* hero = dynamic_cast<Player*>(actor)) blow(*hero);
        updateFlash(time, dt);
    }

  protected:
    Box hitBox() const override { return {}; }

  private:
    void blow(Player& hero) const {
        const Vec3 way = hero.position() - position();
        const float side = static_cast<float>(facing), along = way.x * side;
        if (along < 0 || along > reach_ || way.y < fan.below || way.y > fan.above) return;
        const float lost = clamp((along - fan.fullUntil * reach_) / (fan.fade * reach_), 0, 1);
        hero.carryVelocity.x = fan.strength * side * (1 - lost);
    }

    void turnBlades(float time) const {
        if (!unit->skeleton || unit->skeleton->jointCount() == 0) return;
        auto& overrides = unit->skeleton->overrides;
        overrides.resize(1);
        overrides[0].joint = 0;
        overrides[0].overrideRotation = true;
        overrides[0].rotation = quatFromAxisAngle(fan.bladeSpeed * time, {1, 0, 0});
    }

    Scene& scene_;
    Unit* wind_;
    float reach_ = fan.reach;
};

const SpawnRow row{17, createActor<WindFan>};

} // namespace
