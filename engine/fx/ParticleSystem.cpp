#include "fx/ParticleSystem.h"

#include "core/Random.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Zelkor {

namespace {

constexpr float dead = -std::numeric_limits<float>::infinity(); // age of a dead slot
constexpr float endless = std::numeric_limits<float>::infinity();
constexpr std::size_t rowGrain = 16; // floats: rows begin where a cache line may
constexpr float tileSize = 10;       // world units a cell
constexpr float bounceSpeed = -0.5f; // kept of the speed into a tile

float radians(float degrees) {
    return degrees * pi / 180;
}

float draw(float lo, float hi) {
    return lo + randomFraction() * (hi - lo);
}

// Ages that an affector acts on: first < age < last.
struct Window {
    float first, last;
    explicit Window(const AffectorDesc& affector)
        : first(affector.startTime), last(affector.neverEnds() ? endless : affector.endTime) {}
    bool holds(float particleAge) const { return (first < particleAge) & (particleAge < last); }
};

// One axis of a bounce: place and speed of the particle, the tile's own middle and size in cells along it.
// freeAhead and freeBehind: whether the cells on the upper and the lower side are open.
template <class Ahead, class Behind>
void bounce(float& place, float& speed, float tile, float cells, const Ahead& freeAhead,
            const Behind& freeBehind) {
    if (speed < 0 && place > tile && freeAhead()) {
        place = tile + tileSize * cells - tileSize / 2;
        speed *= bounceSpeed;
    } else if (speed > 0 && place < tile && freeBehind()) {
        place = tile + cells - tileSize / 2;
        speed *= bounceSpeed;
    }
}

void bounceOff(Vec3& p, Vec3& v, const SolidTiles& tiles) {
    SolidTile tile, other;
    if (!tiles.solidTileAt(p, tile)) return;
    const auto open = [&](const Vec3& point) { return !tiles.solidTileAt(point, other); };
    bounce(
        p.y, v.y, tile.position.y, tile.height,
        [&] { return open({p.x, tile.position.y + tileSize * tile.height, p.z}); },
        [&] { return open({p.x, tile.position.y - tileSize, p.z}); });
    bounce(
        p.x, v.x, tile.position.x, tile.width, [&] { return open({tile.position.x + tileSize, p.y, p.z}); },
        [&] { return open({tile.position.x - tileSize, p.y, p.z}); });
}

} // namespace

ParticleSystem::ParticleSystem(const ParticleSetDesc& desc, Material* material, const Vec3& position,
                               const Quat& rotation, double time)
    : desc_(desc), material_(material),
      stride_((static_cast<std::size_t>(desc.numParticles) + rowGrain - 1) / rowGrain * rowGrain),
      storage_(stride_ * rows), position_(position), rotation_(rotation) {
    std::fill_n(row(age), stride_, dead);
    for (const EmitterDesc& emitter : desc.emitters)
        emitters_.push_back({&emitter, true, emitter.spawnRate, time});
    for (const EmitterDesc& emitter : desc.emitters)
        emit(emitter, emitter.initSpawn);
}

void ParticleSystem::setTransform(const Vec3& position, const Quat& rotation) {
    position_ = position;
    rotation_ = rotation;
}

void ParticleSystem::setEmitting(int n) {
    for (Emitter& emitter : emitters_) {
        emitter.active = n > 0;
        if (n < 0) emitter.spawnRate = 0;
    }
}

Particle ParticleSystem::particle(int slot) const {
    const auto at = [&](Row which) { return row(which)[slot]; };
    Particle p{{at(x), at(y), at(z)},
               {at(velocityX), at(velocityY), at(velocityZ)},
               {at(red), at(green), at(blue)},
               desc_.pivot,
               at(width),
               at(height),
               at(angle),
               at(spin),
               at(alpha),
               at(age),
               at(age) >= 0};
    if (desc_.speedAligned) p.angle = std::atan2(p.velocity.y, p.velocity.x);
    return p;
}

// --- Emission ------------------------------------------------------------------------------------------------

int ParticleSystem::findDeadSlot() const {
    const float* const ages = row(age);
    const int from = std::max(search_, 0), count = capacity();
    for (int i = 0; i < count; ++i) {
        const int slot = from + i < count ? from + i : from + i - count;
        if (ages[slot] < 0) return slot;
    }
    return -1;
}

void ParticleSystem::emit(const EmitterDesc& emitter, int count) {
    for (; count > 0; --count) {
        search_ = findDeadSlot();
        if (search_ < 0) return;
        start(search_, emitter);
    }
}

// The order of the draws is part of every recorded run.
void ParticleSystem::start(int slot, const EmitterDesc& emitter) {
    const auto set = [&](Row which, float value) { row(which)[slot] = value; };
    set(red, draw(desc_.colourMin.x, desc_.colourMax.x));
    set(green, draw(desc_.colourMin.y, desc_.colourMax.y));
    set(blue, draw(desc_.colourMin.z, desc_.colourMax.z));
    set(alpha, draw(desc_.alphaMin, desc_.alphaMax));
    set(width, draw(desc_.widthMin, desc_.widthMax));
    set(height, draw(desc_.heightMin, desc_.heightMax));

    Vec3 place;
    quatRotate(place, rotation_, emitter.offset);
    place += position_;
    set(z, place.z + emitter.radius * draw(-1, 1));
    set(y, place.y + emitter.radius * draw(-1, 1));
    set(x, place.x + emitter.radius * draw(-1, 1));
    set(age, 0);
    set(angle, desc_.speedAligned ? 0 : draw(0, 2 * pi));
    set(spin, radians(draw(desc_.rotSpeedMin, desc_.rotSpeedMax)));

    Vec3 axis;
    axis.x = draw(-1, 1);
    axis.y = draw(-1, 1);
    axis.z = draw(-1, 1);
    normalize(axis);
    const Quat turn = quatFromAxisAngle(radians(draw(0, emitter.spread / 2)), axis);
    Vec3 velocity;
    quatRotate(velocity, turn, emitter.direction);
    velocity = velocity * draw(emitter.speedMin, emitter.speedMax);
    set(velocityX, velocity.x);
    set(velocityY, velocity.y);
    set(velocityZ, velocity.z);
    used_ = std::max(used_, slot + 1);
    ++live_;
}

void ParticleSystem::runEmitters(double time) {
    for (Emitter& emitter : emitters_) {
        if (emitter.spawnRate == 0) continue;
        if (!emitter.active) {
            emitter.last = time;
            continue;
        }
        const double due = static_cast<double>(emitter.spawnRate) * (time - emitter.last);
        if (!(due >= 1)) continue;
        emit(*emitter.desc, static_cast<int>(std::min<double>(due, capacity())));
        emitter.last = time; // what is due beyond whole particles is dropped
    }
}

// --- Affectors -----------------------------------------------------------------------------------------------

bool ParticleSystem::update(double time, float dt, const SolidTiles* tiles) {
    runEmitters(time);
    if (live_ > 0) {
        for (const AffectorDesc& affector : desc_.affectors)
            apply(affector, dt, tiles);
        move(dt);
    }
    return live_ > 0 || std::any_of(emitters_.begin(), emitters_.end(),
                                    [](const Emitter& emitter) { return emitter.spawnRate != 0; });
}

void ParticleSystem::apply(const AffectorDesc& affector, float dt, const SolidTiles* tiles) {
    const float* const parameters = affector.parameters;
    const auto addThree = [&](Row first) {
        for (int i = 0; i < 3; ++i)
            if (parameters[i] != 0) addToRow(static_cast<Row>(first + i), affector, parameters[i] * dt);
    };
    switch (affector.kind) {
    case AffectorDesc::linAlpha:
        fade(affector, dt);
        break;
    case AffectorDesc::linSize:
        addToRow(width, affector, parameters[0] * dt);
        addToRow(height, affector, parameters[1] * dt);
        removeShrunk(affector);
        break;
    case AffectorDesc::linColour:
        addThree(red);
        break;
    case AffectorDesc::linForce:
        addThree(velocityX);
        break;
    case AffectorDesc::linSpeedChange:
        changeSpeed(affector, dt);
        break;
    case AffectorDesc::collision:
        if (tiles) collide(affector, *tiles);
        break;
    default:
        break;
    }
}

void ParticleSystem::addToRow(Row which, const AffectorDesc& affector, float amount) {
    const Window window(affector);
    float* __restrict value = row(which);
    const float* __restrict ages = row(age);
    for (int i = 0; i < used_; ++i)
        value[i] += window.holds(ages[i]) ? amount : 0;
}

void ParticleSystem::fade(const AffectorDesc& affector, float dt) {
    const Window window(affector);
    const float rate = affector.parameters[0];
    const float end = affector.endTime > 0 ? window.last : endless;
    const float vanished = rate <= 0 ? 0.0f : -1.0f; // alpha that ends a particle
    float* __restrict alphas = row(alpha);
    float* __restrict ages = row(age);
    for (int i = 0; i < used_; ++i) {
        const float step = std::min(dt, end - ages[i]);
        const float changed = std::min(std::max(alphas[i] + rate * step, 0.0f), 1.0f);
        const bool acts = window.holds(ages[i]);
        alphas[i] = acts ? changed : alphas[i];
        ages[i] = acts & (changed == vanished) ? dead : ages[i];
    }
}

void ParticleSystem::removeShrunk(const AffectorDesc& affector) {
    const Window window(affector);
    const float* __restrict widths = row(width);
    const float* __restrict heights = row(height);
    float* __restrict ages = row(age);
    for (int i = 0; i < used_; ++i)
        ages[i] = window.holds(ages[i]) & ((widths[i] <= 0) | (heights[i] <= 0)) ? dead : ages[i];
}

void ParticleSystem::changeSpeed(const AffectorDesc& affector, float dt) {
    const Window window(affector);
    const float factor = affector.parameters[0] * dt + 1;
    const float* __restrict ages = row(age);
    for (const Row which : {velocityX, velocityY, velocityZ}) {
        float* __restrict speeds = row(which);
        for (int i = 0; i < used_; ++i)
            speeds[i] *= window.holds(ages[i]) ? factor : 1;
    }
}

void ParticleSystem::collide(const AffectorDesc& affector, const SolidTiles& tiles) {
    const Window window(affector);
    for (int i = 0; i < used_; ++i) {
        if (!window.holds(row(age)[i])) continue;
        Vec3 p{row(x)[i], row(y)[i], row(z)[i]}, v{row(velocityX)[i], row(velocityY)[i], row(velocityZ)[i]};
        bounceOff(p, v, tiles);
        row(x)[i] = p.x;
        row(y)[i] = p.y;
        row(velocityX)[i] = v.x;
        row(velocityY)[i] = v.y;
    }
}

void ParticleSystem::move(float dt) {
    const auto advance = [&](Row which, Row rate) {
        float* __restrict value = row(which);
        const float* __restrict rates = row(rate);
        for (int i = 0; i < used_; ++i)
            value[i] += rates[i] * dt;
    };
    if (!desc_.speedAligned) advance(angle, spin);
    advance(x, velocityX);
    advance(y, velocityY);
    advance(z, velocityZ);
    float* __restrict ages = row(age);
    int alive = 0;
    for (int i = 0; i < used_; ++i) {
        ages[i] += dt;
        alive += ages[i] >= 0;
    }
    live_ = alive;
    if (live_ == 0) used_ = 0;
}

} // namespace Zelkor
