// A lamp on legs that crawls around whatever it clings to, on floors, walls and ceilings alike. Shots stop on
// it.
#include "actors/ThingyManager.h"
#include "actors/enemies/Enemy.h"
#include "animation/SkeletonInstance.h"
#include "game/Game.h"
#include "resources/Unit.h"
#include "world/TileGrid.h"

#include <cmath>

using namespace Zelkor;

namespace {

constexpr struct {
    float speed = 20;     // units per second
    float wheelSpeed = 7; // radians per second
    Vec3 touch{3, 3, 14}, body{4, 4, 14};
    int clingsTo = TileType::solid | TileType::ladderTop;
} scanner;

constexpr Vec3 sides[] = {{0, 1, 0}, {-1, 0, 0}, {0, -1, 0}, {1, 0, 0}};

class PlatformScanner : public Enemy {
  public:
    explicit PlatformScanner(Unit& ownUnit) : Enemy(ownUnit, 0) {
        aimOffset = {};
        if (const TileGrid* grid = Game::get().tileGrid()) {
            const Vec3 middle = grid->cellCentre(ownUnit.position);
            ownUnit.position = {middle.x, middle.y, ownUnit.position.z};
        }
        // On what is below it, else on whatever is beside it.
        for (const Vec3& side : sides)
            if (!clings_ && holds(ownUnit.position - side * tileSize)) {
                up_ = side;
                clings_ = true;
            }
        ownUnit.orientation = upright();
    }

    int onHit(const Attack& attack) override { return hitBox().overlaps(attack) ? 1 : 0; }

    void setParameter(int index, float value) override {
        if (index == 0) speed_ = clamp(value, 0, fastest);
    }

    void update(float time, float dt) override {
        if (clings_) crawl(dt);
        quatSlerp(unit->orientation, unit->orientation, upright(), clamp(turnRate * dt, 0, 1), true);
        turnWheel(time);
        touchHero(boxAround(position(), -scanner.touch, scanner.touch));
        updateFlash(time, dt);
    }

  protected:
    Box hitBox() const override { return boxAround(position(), -scanner.body, scanner.body); }

  private:
    static constexpr float fastest = 200; // units per second
    static constexpr int mostCorners = 4; // in one step: walled in on all sides it stays

    static bool holds(const Vec3& point) {
        const TileGrid* grid = Game::get().tileGrid();
        return grid && grid->tileAt(point, scanner.clingsTo);
    }

    Vec3 ahead() const { return Vec3{up_.y, -up_.x, 0} * static_cast<float>(facing); }

    // From middle to middle of the cells along the surface; it turns only there.
    void crawl(float dt) {
        int corners = 0;
        for (float rest = speed_ * dt; rest > 0 && corners < mostCorners;) {
            velocity = ahead() * speed_;
            if (way_ == 0 && holds(position() + ahead() * tileSize)) {
                up_ = -ahead(); // up what is in the way
                ++corners;
                continue;
            }
            const float left = tileSize - way_;
            const bool arrives = rest >= left;
            const float step = arrives ? left : rest;
            unit->position += ahead() * step;
            way_ = arrives ? 0 : way_ + step;
            rest -= step;
            if (arrives && !holds(position() - up_ * tileSize)) up_ = ahead(); // around what it clung to
        }
    }

    Quat upright() const {
        Quat out;
        return quatMultiply(out, quatFromAxisAngle(std::atan2(-up_.x, up_.y), {0, 0, 1}),
                            facingRotation(static_cast<float>(facing)));
    }

    void turnWheel(float time) {
        if (!unit->skeleton || unit->skeleton->jointCount() == 0) return;
        auto& overrides = unit->skeleton->overrides;
        overrides.resize(1);
        overrides[0].joint = 0;
        overrides[0].overrideRotation = true;
        overrides[0].rotation = quatFromAxisAngle(-scanner.wheelSpeed * time, {0, 0, 1});
    }

    Vec3 up_{0, 1, 0}; // away from the surface
    float way_ = 0;    // from the middle of the cell behind it
    float speed_ = scanner.speed;
    bool clings_ = false; // to anything
};

const SpawnRow row{10, createActor<PlatformScanner>};

} // namespace
