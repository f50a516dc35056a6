// A block that comes and goes.
#include "actors/ActorSound.h"
#include "actors/ThingyManager.h"
#include "game/Game.h"
#include "resources/Unit.h"
#include "world/TileGrid.h"

#include <cmath>
#include <vector>

using namespace Zelkor;

namespace {

constexpr float hiddenDepth = -10, slideSpeed = 700;
constexpr float hiddenScale = 0.2f, growth = 10; // per second
// Where a hero's feet are, from the tile, while he stands in its cell.
constexpr float heroAside = 7, heroBelow = 18, heroAbove = 3;
constexpr float heroReach = 40;

class DisappearingTile : public Thingy {
  public:
    explicit DisappearingTile(Unit& ownUnit) : Thingy(ownUnit, GROUP_SCENERY), place_(ownUnit.position) {}
    ~DisappearingTile() override { setSolid(false); }

    void update(float time, float dt) override {
        age_ += dt;
        const float cycle = std::fmod(age_ + phase_, period_);
        const bool inSpan = cycle < shownTime_;
        if (inSpan && !shown_)
            playSoundAt("bullethit", place_);
        shown_ = inSpan;
        if (!shown_)
            setSolid(false);
        else if (!solid_ && !heroInside())
            setSolid(true);
        slide(dt);
        updateFlash(time, dt);
    }
    int onHit(const Attack&) override { return 0; }
    // Seconds: 0 the period, 1 how long it is shown in each, 2 where in its period it starts.
    void setParameter(int index, float value) override {
        if (index == 0 && value > 0) period_ = value;
        if (index == 1) shownTime_ = value;
        if (index == 2) phase_ = value < 0 ? 0 : value;
    }

  private:
    void slide(float dt) {
        Vec3& p = unit->position;
        p.z = moveTowards(p.z, place_.z + (shown_ ? 0 : hiddenDepth), slideSpeed * dt);
        const float scale = moveTowards(unit->scale.x, shown_ ? 1 : hiddenScale, growth * dt);
        unit->scale = {scale, scale, scale};
    }

    bool heroInside() const {
        std::vector<Thingy*> heroes;
        Game::get().thingyManager->collectInRadius(GROUP_PLAYER, place_, heroReach, heroes);
        for (const Thingy* hero : heroes) {
            const Vec3 d = hero->position() - place_;
            if (absolute(d.x) < heroAside && d.y > -heroBelow && d.y < heroAbove) return true;
        }
        return false;
    }

    void setSolid(bool solid) {
        TileGrid* grid = Game::get().tileGrid();
        if (solid == solid_ || !grid) return;
        solid_ = solid;
        if (solid)
            grid->addSolidCell(place_.x, place_.y);
        else
            grid->removeSolidCell(place_.x, place_.y);
    }

    Vec3 place_;
    float period_ = 4, shownTime_ = 2, phase_ = 0;
    float age_ = 0;
    bool shown_ = false, solid_ = false;
};

const SpawnRow row{34, createActor<DisappearingTile>};

} // namespace
