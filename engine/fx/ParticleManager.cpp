#include "fx/ParticleManager.h"

#include "audio/AudioManager.h"
#include "core/EngineManagers.h"
#include "core/Log.h"
#include "core/TimerManager.h"
#include "io/DataFiles.h"
#include "io/TokenReader.h"
#include "render/MaterialManager.h"
#include "render/Renderer.h"

namespace Zelkor {

namespace {

void setPicture(Material& material, const std::string& texture) {
    if (material.textureUnits.empty()) material.textureUnits.emplace_back();
    TextureUnit& unit = material.textureUnits.front();
    unit.textureName = texture;
    unit.texture = engineManagers()->renderer->getTexture(texture);
    // Without its picture a particle would be a bare square.
    material.enabled = unit.texture >= 0;
}

Material* materialFor(const ParticleSetDesc& set) {
    Material* material = particleMaterial(set.material, set.texture);
    if (material && !set.shader.empty()) material->shader = engineManagers()->renderer->loadShader(set.shader);
    return material;
}

int soundIndex(const std::string& name) {
    AudioManager* audio = engineManagers()->audioManager.get();
    return audio ? audio->soundIndex(name) : -1;
}

} // namespace

// A copy, for the shared one keeps its own picture.
Material* particleMaterial(const std::string& name, const std::string& texture) {
    const EngineManagers& engine = *engineManagers();
    if (!engine.materialManager || !engine.renderer) return nullptr;
    const bool plain = name.empty();
    Material& material = *engine.materialManager->copyMaterial(
        *engine.materialManager->findMaterial(plain ? "particle" : name));
    if (plain) material.shader = engine.renderer->loadShader("defaultParticle");
    if (plain || !texture.empty()) setPicture(material, texture);
    return &material;
}

ParticleManager::ParticleManager() = default;
ParticleManager::~ParticleManager() = default;

ParticleManager::Effect& ParticleManager::find(const std::string& name) {
    const auto [place, added] = effects_.try_emplace(name);
    Effect& effect = place->second;
    if (!added) return effect;
    if (const auto reader = openDataTokens("effects/" + name + ".effect"))
        effect.desc = readEffect(*reader, soundIndex);
    else
        logLine("no effect " + name);
    effect.desc.name = name;
    return effect;
}

ParticleManager::Effect& ParticleManager::withMaterials(const std::string& name) {
    Effect& effect = find(name);
    while (effect.materials.size() < effect.desc.sets.size())
        effect.materials.push_back(materialFor(effect.desc.sets[effect.materials.size()]));
    return effect;
}

const EffectDesc& ParticleManager::loadEffect(const std::string& name) {
    return find(name).desc;
}

void ParticleManager::preload(const std::string& name) {
    withMaterials(name);
}

EffectInstance* ParticleManager::createEffect(const std::string& name, const Vec3& position,
                                              const Quat& rotation) {
    const Effect& effect = withMaterials(name);
    EffectInstance& instance = *playing_.emplace_back(std::make_unique<EffectInstance>());
    instance.timer_ = TimerManager::instance().findTimer("main");
    instance.rotation_ = rotation;
    if (AudioManager* audio = engineManagers()->audioManager.get())
        for (const int sound : effect.desc.sounds)
            audio->playIndex(sound, audio->distanceFactor(position));
    for (std::size_t i = 0; i < effect.desc.sets.size(); ++i)
        instance.sets_.push_back(std::make_unique<ParticleSystem>(
            effect.desc.sets[i], effect.materials[i], position, rotation, instance.timer_->total));
    return &instance;
}

void ParticleManager::release(EffectInstance* instance) {
    if (instance) instance->setEmitting(-1);
}

void ParticleManager::clear() {
    playing_.clear();
    spent_.clear();
}

void ParticleManager::update() {
    std::size_t kept = 0;
    for (auto& instance : playing_) {
        if (instance->update(tiles_)) {
            std::swap(playing_[kept++], instance);
        } else {
            instance->end();
            spent_.push_back(std::move(instance));
        }
    }
    playing_.resize(kept);
}

void ParticleManager::render(Renderer& renderer) {
    sprites_.render(renderer);
    for (const auto& instance : playing_)
        instance->render(renderer);
}

int ParticleManager::liveParticles() const {
    int live = 0;
    for (const auto& instance : playing_)
        live += instance->liveParticles();
    return live;
}

} // namespace Zelkor
