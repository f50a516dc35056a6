// Electric beams: one that is switched on and off by the clock, one that turns about its base.
#include "actors/ActorSound.h"
#include "actors/ThingyManager.h"
#include "actors/enemies/Enemy.h"
#include "core/EngineManagers.h"
#include "core/Random.h"
#include "fx/ParticleManager.h"
#include "fx/SpriteLists.h"
#include "game/Game.h"
#include "game/Session.h"
#include "resources/Scene.h"
#include "resources/Unit.h"
#include "world/TileGrid.h"

#include <cmath>

using namespace Zelkor;

namespace {

constexpr int frames = 4; // of the spark's picture, one above the other

// A spark between two points: two pictures over one another, each takes another frame on its own beat.
class Spark {
  public:
    Spark() {
        for (Layer& layer : layers_)
            layer.sprite = engineManagers()->particleManager->sprites().add("sprites/elecbeam");
        layers_[0].period = 0.09f;
        layers_[0].halfWidth = 4;
        layers_[1].period = 0.05f;
        layers_[1].halfWidth = 2.5f;
    }

    void update(const Vec3& from, const Vec3& to, float broad, float narrow, float dt) {
        const float strengths[] = {broad, narrow};
        for (int i = 0; i < 2; ++i) {
            Layer& layer = layers_[i];
            layer.timer -= dt;
            if (layer.timer <= 0) {
                layer.timer = layer.period;
                const float frame = static_cast<float>(randomInt() % frames);
                layer.sprite->top = frame / frames;
                layer.sprite->bottom = (frame + 1) / frames;
            }
            Vec3 along = to - from;
            layer.sprite->middle = (from + to) * 0.5f;
            layer.sprite->halfRight = along * 0.5f;
            normalize(along);
            layer.sprite->halfUp = Vec3{-along.y, along.x, 0} * layer.halfWidth;
            layer.sprite->colour.w = strengths[i];
        }
    }

  private:
    struct Layer {
        SpriteLists::Handle sprite;
        float period = 0, timer = 0; // seconds
        float halfWidth = 0;
    };
    Layer layers_[2];
};

class Beam : public Enemy {
  public:
    explicit Beam(Unit& ownUnit) : Enemy(ownUnit, 0) { aimOffset = {}; }
    int onHit(const Attack&) override { return 0; }

  protected:
    Box hitBox() const override { return {}; }

    // Points along the beam, until one of them has hurt somebody.
    void hurtAlong(const Vec3& from, const Vec3& to) {
        Vec3 along = to - from;
        const float reach = normalize(along);
        for (float way = 0; way <= reach; way += step)
            if (touchHero(boxAround(from + along * way, -half, half))) return;
    }

    Spark spark_;

  private:
    static constexpr float step = 2.5f; // units between two points
    static constexpr Vec3 half{0.5f, 0.5f, 14};
};

// --- Switched by the clock --------------------------------------------------------------------------------

constexpr struct {
    float off = 2.5f, on = 1.2f;             // seconds
    float fadeIn[2] = {1 / 7.0f, 1 / 9.0f};  // the last seconds before it is on
    float fadeOut[2] = {1 / 4.0f, 1 / 6.0f}; // the last seconds it is on
    float hurtsAbove = 0.5f;                 // of its strength
    float longest = 200, shortest = 5;       // units
} clockwork;

class ElecBeam : public Beam {
  public:
    explicit ElecBeam(Unit& ownUnit) : Beam(ownUnit), scene_(Game::get().session->scene) {
        Vec3 axis;
        quatAxisX(axis, ownUnit.orientation);
        end_ = ownUnit.position + axis * clockwork.longest;
        if (const TileGrid* grid = Game::get().tileGrid()) {
            const RayHit wall = grid->castRay(ownUnit.position, end_);
            if (wall.hit) end_ = wall.point;
        }
        Quat back;
        farPole_ = scene_.createUnit(
            ownUnit.name(), end_, quatMultiply(back, ownUnit.orientation, quatFromAxisAngle(pi, {0, 0, 1})));
    }
    ~ElecBeam() override { scene_.removeUnit(farPole_); }

    void setParameter(int index, float value) override {
        const float period = clockwork.off + clockwork.on;
        if (index == 0 && std::isfinite(value)) cycle_ = value - period * std::floor(value / period);
        if (index == 1) {
            Vec3 axis;
            quatAxisX(axis, unit->orientation);
            end_ = position() + axis * clamp(value, clockwork.shortest, clockwork.longest);
            farPole_->position = end_;
        }
    }

    void update(float time, float dt) override {
        const bool wasOn = isOn();
        cycle_ += dt;
        if (cycle_ >= clockwork.off + clockwork.on) cycle_ -= clockwork.off + clockwork.on;
        if (isOn() && !wasOn) playSoundAt("elecbeam", position());
        if (isOn() && strength(0) > clockwork.hurtsAbove) hurtAlong(position(), end_);
        spark_.update(position(), end_, strength(0), strength(1), dt);
        updateFlash(time, dt);
    }

  private:
    bool isOn() const { return cycle_ >= clockwork.off; }

    float strength(int layer) const {
        if (!isOn()) return clamp(1 - (clockwork.off - cycle_) / clockwork.fadeIn[layer], 0, 1);
        return clamp((clockwork.off + clockwork.on - cycle_) / clockwork.fadeOut[layer], 0, 1);
    }

    Scene& scene_;
    Unit* farPole_;
    Vec3 end_;
    float cycle_ = 0; // seconds: off first, then on
};

// --- Turning ----------------------------------------------------------------------------------------------

class RotatingBeam : public Beam {
  public:
    explicit RotatingBeam(Unit& ownUnit) : Beam(ownUnit) {}

    void setParameter(int index, float value) override {
        if (index == 0) angle_ = value * pi / 180;
        if (index == 1) speed_ = value;
        if (index == 2) length_ = clamp(value, clockwork.shortest, clockwork.longest);
    }

    void update(float time, float dt) override {
        angle_ += speed_ * dt;
        unit->orientation = quatFromAxisAngle(angle_, {0, 0, 1});
        const Vec3 out{cosine(angle_), sine(angle_), 0};
        velocity = Vec3{-out.y, out.x, 0} * speed_; // who is hit is thrown the way it turns
        const Vec3 end = position() + out * length_;
        hurtAlong(position(), end);
        spark_.update(position(), end, 1, 1, dt);
        updateFlash(time, dt);
    }

  private:
    float angle_ = 0, speed_ = 1; // radians, to the left of right; radians per second
    float length_ = 60;
};

const SpawnRow rows[] = {{16, createActor<ElecBeam>}, {14, createActor<RotatingBeam>}};

} // namespace
