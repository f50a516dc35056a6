// Particle effects as the ".effect" files describe them.
#pragma once

#include "math/Math.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Zelkor {

class TokenReader;

struct EmitterDesc {
    Vec3 offset;                    // from the effect's position, turned with it
    float spawnRate = 0;            // particles per second
    int32_t initSpawn = 0;          // particles at once when the effect starts
    float speedMin = 0, speedMax = 0;
    Vec3 direction;                 // in the world; need not be of unit length
    float spread = 0;               // degrees, the whole cone
    float radius = 0;               // half the side of the cube in which particles start
};

struct AffectorDesc {
    // The numbers a kind takes, in this order.
    enum Kind {
        none = 0,
        linAlpha = 1,       // rate
        linSize = 2,        // rates of width and height
        linColour = 3,      // rates of red, green, blue
        linForce = 4,       // acceleration
        linSpeedChange = 5, // share of the velocity, per second
        collision = 6
    };
    float startTime = 0;
    float endTime = -1; // of a particle's age; before startTime: never ends
    int kind = none;
    float parameters[3] = {0, 0, 0};

    bool neverEnds() const { return endTime < startTime; }
};

struct ParticleSetDesc {
    bool speedAligned = true;
    float rotSpeedMin = 0, rotSpeedMax = 0; // degrees per second
    int32_t numParticles = 0;               // of the pool
    std::string texture, material, shader;
    int32_t blendMode = 3; // a BlendMode
    float widthMin = 1, heightMin = 1, widthMax = 1, heightMax = 1;
    Vec3 colourMin{1, 1, 1}, colourMax{1, 1, 1};
    Vec3 pivot;
    float alphaMin = 1, alphaMax = 1;
    std::vector<AffectorDesc> affectors;
    std::vector<EmitterDesc> emitters;
};

struct EffectDesc {
    // Of one effect, all its sets together: what a file asks for beyond that is cut.
    static constexpr int32_t maxParticles = 1 << 16;

    std::string name;
    std::vector<ParticleSetDesc> sets;
    std::vector<int> sounds; // indices of the audio manager
};

// soundIndex turns the name of a sound into its index. Words that mean nothing are skipped one by one.
EffectDesc readEffect(TokenReader& reader, const std::function<int(const std::string&)>& soundIndex);

} // namespace Zelkor
