// The particle effects: their descriptions, read once, and the instances that play in the stage.
#pragma once

#include "fx/EffectInstance.h"
#include "fx/SpriteLists.h"
#include "math/Math.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace Zelkor {

class Renderer;

class ParticleManager {
  public:
    ParticleManager();
    ~ParticleManager();
    ParticleManager(const ParticleManager&) = delete;

    // "data/effects/" + name + ".effect", read at the first request and kept. Empty when it is missing.
    const EffectDesc& loadEffect(const std::string& name);
    // The same, with the materials its particles are drawn with.
    void preload(const std::string& name);
    // Starts an effect, its sounds included. Never null. The manager owns the instance; the pointer stays
    // good until clear, also when the effect is long spent and its operations do nothing any more.
    EffectInstance* createEffect(const std::string& name, const Vec3& position, const Quat& rotation = {});
    // Ends the emission for good; the particles live out. Null does nothing.
    void release(EffectInstance* instance);
    // Removes everything at once: the end of a stage.
    void clear();
    // Once per step of the timers. Spent effects give their pools back.
    void update();
    // Every set with the camera's view current.
    void render(Renderer& renderer);
    int liveParticles() const;
    // Drawn with the effects, before them.
    SpriteLists& sprites() { return sprites_; }
    int playing() const { return static_cast<int>(playing_.size()); }

    // What particles bounce off; none: they fall through. Must outlive its use here.
    void setTiles(const SolidTiles* tiles) { tiles_ = tiles; }

  private:
    struct Effect {
        EffectDesc desc;
        std::vector<Material*> materials; // one a set; empty until first needed
    };

    Effect& find(const std::string& name);
    Effect& withMaterials(const std::string& name);

    std::map<std::string, Effect> effects_; // nodes stay: sets refer to their descriptions
    std::vector<std::unique_ptr<EffectInstance>> playing_;
    // Whoever started a spent effect may still hold it. Shells without pools, few enough for one stage.
    std::vector<std::unique_ptr<EffectInstance>> spent_;
    const SolidTiles* tiles_ = nullptr;
    SpriteLists sprites_;
};

// A copy of that material, or of the plain one of particles where its name is empty, with this picture in its first
// unit. Null without a renderer.
Material* particleMaterial(const std::string& material, const std::string& texture);

} // namespace Zelkor
