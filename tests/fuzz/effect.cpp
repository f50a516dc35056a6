#include "FuzzTarget.h"

#include "fx/ParticleSystem.h"

using namespace Zelkor;

namespace {

// Solid below, free above.
struct Ground : SolidTiles {
    bool solidTileAt(const Vec3& point, SolidTile& tile) const override {
        tile = {};
        return point.y < 0;
    }
};

} // namespace

// Reads an effect and plays its sets for a few steps.
int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    TokenReader reader = tokensOf(data, size);
    const EffectDesc effect = readEffect(reader, [](const std::string&) { return 0; });
    fuzzCheck(effect.sets.size() + effect.sounds.size() <= size);
    long long asked = 0;
    for (const ParticleSetDesc& set : effect.sets) {
        fuzzCheck(set.numParticles >= 0);
        asked += set.numParticles;
        if (set.numParticles > 256) continue; // the same in more time
        const Ground ground;
        ParticleSystem system(set, nullptr, {}, {}, 0);
        for (int step = 1; step <= 4; ++step) {
            system.update(step * 0.25, 0.25f, &ground);
            fuzzCheck(system.live() >= 0 && system.live() <= system.used() && system.used() <= set.numParticles);
        }
    }
    fuzzCheck(asked <= EffectDesc::maxParticles);
    return 0;
}
