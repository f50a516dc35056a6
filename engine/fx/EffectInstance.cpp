#include "fx/EffectInstance.h"

#include "core/TimerManager.h"
#include "render/Renderer.h"

namespace Zelkor {

void EffectInstance::setPosition(const Vec3& position) {
    setTransform(position, rotation_);
}

void EffectInstance::setTransform(const Vec3& position, const Quat& rotation) {
    rotation_ = rotation;
    for (const auto& set : sets_)
        set->setTransform(position, rotation);
}

void EffectInstance::setEmitting(int n) {
    for (const auto& set : sets_)
        set->setEmitting(n);
}

bool EffectInstance::update(const SolidTiles* tiles) {
    bool runs = false;
    for (const auto& set : sets_)
        runs |= set->update(timer_->total, timer_->delta, tiles);
    return runs;
}

void EffectInstance::render(Renderer& renderer) const {
    for (const auto& set : sets_)
        if (set->live() > 0) renderer.renderParticles(*set);
}

int EffectInstance::liveParticles() const {
    int live = 0;
    for (const auto& set : sets_)
        live += set->live();
    return live;
}

} // namespace Zelkor
