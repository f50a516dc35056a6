// A door two cells high that slides up when it opens.
#include "actors/ThingyManager.h"
#include "game/Game.h"
#include "resources/Unit.h"
#include "world/TileGrid.h"

using namespace Zelkor;

namespace {

constexpr float openHeight = 18, speed = 45; // world units, and per second
constexpr float cells[] = {5, 15};           // above its base

class Door : public Thingy {
  public:
    explicit Door(Unit& ownUnit) : Thingy(ownUnit, GROUP_SCENERY), base_(ownUnit.position) { block(); }
    ~Door() override { unblock(); }

    void update(float time, float dt) override {
        unit->position.y = moveTowards(position().y, wantedHeight(), speed * dt);
        updateFlash(time, dt);
    }
    int onHit(const Attack&) override { return 0; }
    // 0: open (not 0) or closed, at once.
    void setParameter(int index, float value) override {
        if (index != 0) return;
        setOpen(value != 0);
        unit->position.y = wantedHeight();
    }
    void activate() override { setOpen(!open_); }

  private:
    float wantedHeight() const { return base_.y + (open_ ? openHeight : 0); }

    void setOpen(bool open) {
        if (open == open_) return;
        open_ = open;
        open ? unblock() : block();
    }
    void block() const {
        if (TileGrid* grid = Game::get().tileGrid())
            for (const float height : cells)
                grid->addSolidCell(base_.x, base_.y + height);
    }
    void unblock() const {
        if (TileGrid* grid = Game::get().tileGrid())
            for (const float height : cells)
                grid->removeSolidCell(base_.x, base_.y + height);
    }

    Vec3 base_;
    bool open_ = false;
};

const SpawnRow row{70, createActor<Door>};

} // namespace
