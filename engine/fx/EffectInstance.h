// One effect that plays: a particle set for each description of its kind, all following one place.
#pragma once

#include "fx/ParticleSystem.h"

#include <memory>
#include <vector>

namespace Zelkor {

struct GameTimer;
class Renderer;

class EffectInstance {
  public:
    // Particles start there from now on; those that fly go on as they did.
    void setPosition(const Vec3& position);
    void setTransform(const Vec3& position, const Quat& rotation);
    // n > 0: emitters work; 0: they pause; below 0: they end for good, and the effect with its last particle.
    void setEmitting(int n);
    // By the timer it was bound to. False once it is spent.
    bool update(const SolidTiles* tiles);
    void render(Renderer& renderer) const;
    int liveParticles() const;
    const std::vector<std::unique_ptr<ParticleSystem>>& sets() const { return sets_; }

  private:
    friend class ParticleManager;
    // Frees the pools; from here on every operation does nothing.
    void end() { sets_.clear(); }

    const GameTimer* timer_ = nullptr;
    Quat rotation_;
    std::vector<std::unique_ptr<ParticleSystem>> sets_;
};

} // namespace Zelkor
