// One running particle set: its pool, its emitters and what happens to its particles.
//
// The pool is a row of floats for each field of a particle, so that every affector is one straight walk over
// memory that the compiler turns into vector instructions. Dead slots are walked over too: they are marked by
// an age that no affector ever accepts.
#pragma once

#include "fx/EffectDesc.h"
#include "math/Math.h"

#include <cstddef>
#include <vector>

namespace Zelkor {

struct Material;

// A solid tile as particles see it.
struct SolidTile {
    Vec3 position;               // of the middle of its lowest and leftmost cell
    float width = 1, height = 1; // cells
};

// What particles bounce off; the game has the tiles.
class SolidTiles {
  public:
    virtual ~SolidTiles() = default;
    // False: the point is free.
    virtual bool solidTileAt(const Vec3& point, SolidTile& tile) const = 0;
};

// One slot of the pool, put together for looking at.
struct Particle {
    Vec3 position, velocity, colour, pivot;
    float width = 0, height = 0;
    float angle = 0, rotationSpeed = 0; // radians, radians per second
    float alpha = 0;
    float age = 0; // seconds
    bool alive = false;
};

class ParticleSystem {
  public:
    enum Row {
        x,
        y,
        z,
        velocityX,
        velocityY,
        velocityZ,
        width,
        height,
        red,
        green,
        blue,
        alpha,
        angle, // radians; unused when aligned to the speed
        spin,  // radians per second
        age,   // seconds; below 0 in a dead slot
        rows
    };

    // desc and material must outlive the system; time is that of the timer it will be updated with, seconds.
    // Emits what its emitters start with.
    ParticleSystem(const ParticleSetDesc& desc, Material* material, const Vec3& position, const Quat& rotation,
                   double time);

    // Particles start from there from now on; those that fly go on as they did.
    void setTransform(const Vec3& position, const Quat& rotation);
    // n > 0: emitters work; 0: they pause; below 0: they end for good.
    void setEmitting(int n);
    // False once it is spent: nothing lives, nothing will be emitted. Without tiles nothing bounces.
    bool update(double time, float dt, const SolidTiles* tiles);

    const ParticleSetDesc& desc() const { return desc_; }
    Material* material() const { return material_; }
    int live() const { return live_; }
    // Slots from 0 that may be alive; those behind are dead.
    int used() const { return used_; }
    int capacity() const { return desc_.numParticles; }
    // One field of every slot.
    const float* row(Row which) const { return storage_.data() + which * stride_; }
    Particle particle(int slot) const;

  private:
    struct Emitter {
        const EmitterDesc* desc;
        bool active = true;
        float spawnRate = 0;
        double last = 0; // seconds, of the last emission
    };

    float* row(Row which) { return storage_.data() + which * stride_; }
    void emit(const EmitterDesc& emitter, int count);
    void start(int slot, const EmitterDesc& emitter);
    int findDeadSlot() const;
    void runEmitters(double time);
    void apply(const AffectorDesc& affector, float dt, const SolidTiles* tiles);
    void addToRow(Row which, const AffectorDesc& affector, float amount);
    void fade(const AffectorDesc& affector, float dt);
    void removeShrunk(const AffectorDesc& affector);
    void changeSpeed(const AffectorDesc& affector, float dt);
    void collide(const AffectorDesc& affector, const SolidTiles& tiles);
    void move(float dt);

    const ParticleSetDesc& desc_;
    Material* material_;
    std::size_t stride_; // floats a row
    std::vector<float> storage_;
    std::vector<Emitter> emitters_;
    Vec3 position_;
    Quat rotation_;
    int search_ = 0; // where the search for a dead slot begins; -1 after a search that found none
    int used_ = 0, live_ = 0;
};

} // namespace Zelkor
