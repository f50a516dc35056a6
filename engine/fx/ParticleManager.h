// The particle effects: their descriptions, read once, and the instances that play in the stage.
#pragma once

#include "math/Math.h"

#include <string>

namespace Zelkor {

class EffectInstance;

class ParticleManager {
  public:
    ParticleManager();
    ~ParticleManager();
    ParticleManager(const ParticleManager&) = delete;

    // Reads the description if it is not there yet.
    void preload(const std::string& name);
    // Starts an effect, its sounds included. The manager owns the instance and drops it once it is spent:
    // who keeps the pointer calls release first of all.
    EffectInstance* createEffect(const std::string& name, const Vec3& position, const Quat& rotation = {});
    // Ends the emission for good; the particles live out. The caller forgets the instance.
    void release(EffectInstance* instance);
    // Removes everything at once: the end of a stage.
    void clear();
    // Once per frame.
    void update();
    int liveParticles() const;
};

} // namespace Zelkor
