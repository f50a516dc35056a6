#include "fx/ParticleManager.h"

namespace Zelkor {

ParticleManager::ParticleManager() = default;
ParticleManager::~ParticleManager() = default;

void ParticleManager::preload(const std::string&) {}
EffectInstance* ParticleManager::createEffect(const std::string&, const Vec3&, const Quat&) {
    return nullptr;
}
void ParticleManager::release(EffectInstance*) {}
void ParticleManager::clear() {}
void ParticleManager::update() {}
int ParticleManager::liveParticles() const {
    return 0;
}

} // namespace Zelkor
