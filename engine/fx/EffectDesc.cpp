#include "fx/EffectDesc.h"

#include "io/TokenReader.h"

#include <algorithm>

namespace Zelkor {

namespace {

Vec3 readVec3(TokenReader& reader) {
    Vec3 v;
    v.x = reader.readFloat();
    v.y = reader.readFloat();
    v.z = reader.readFloat();
    return v;
}

// Hands every word of a block to handle, without the brace that opens a block behind it.
template <class Handle>
void readBlock(TokenReader& reader, const Handle& handle) {
    while (!reader.atEnd()) {
        std::string word = reader.readWord();
        if (word.ends_with('}')) return;
        if (word.ends_with('{')) word.pop_back();
        handle(word);
    }
}

EmitterDesc readEmitter(TokenReader& reader) {
    EmitterDesc emitter;
    readBlock(reader, [&](const std::string& word) {
        if (word == "spawn_rate") {
            emitter.spawnRate = reader.readFloat();
        } else if (word == "init_spawn") {
            emitter.initSpawn = reader.readInt();
        } else if (word == "speed") {
            emitter.speedMin = reader.readFloat();
            emitter.speedMax = reader.readFloat();
        } else if (word == "dir") {
            emitter.direction = readVec3(reader);
        } else if (word == "spread") {
            emitter.spread = reader.readFloat();
        } else if (word == "offset") {
            emitter.offset = readVec3(reader);
        } else if (word == "radius") {
            emitter.radius = reader.readFloat();
        }
    });
    return emitter;
}

struct AffectorKeyword {
    const char* word;
    AffectorDesc::Kind kind;
    int numbers;
};
constexpr AffectorKeyword affectorKeywords[] = {
    {"lin_alpha", AffectorDesc::linAlpha, 1}, {"lin_size", AffectorDesc::linSize, 2},
    {"lin_color", AffectorDesc::linColour, 3}, {"lin_force", AffectorDesc::linForce, 3},
    {"lin_speed_change", AffectorDesc::linSpeedChange, 1}, {"collision", AffectorDesc::collision, 0}};

AffectorDesc readAffector(TokenReader& reader) {
    AffectorDesc affector;
    readBlock(reader, [&](const std::string& word) {
        if (word == "start_time") affector.startTime = reader.readFloat();
        if (word == "end_time") affector.endTime = reader.readFloat();
        for (const AffectorKeyword& keyword : affectorKeywords) {
            if (word != keyword.word) continue;
            affector.kind = keyword.kind;
            for (int i = 0; i < keyword.numbers; ++i)
                affector.parameters[i] = reader.readFloat();
            if (keyword.kind == AffectorDesc::collision) reader.readWord();
        }
    });
    return affector;
}

void readSetKeyword(TokenReader& reader, const std::string& word, ParticleSetDesc& set) {
    if (word == "Emitter") {
        set.emitters.push_back(readEmitter(reader));
    } else if (word == "Affector") {
        set.affectors.push_back(readAffector(reader));
    } else if (word == "speed_aligned") {
        set.speedAligned = reader.readInt() == 1;
    } else if (word == "rot_speed") {
        set.rotSpeedMin = reader.readFloat();
        set.rotSpeedMax = reader.readFloat();
    } else if (word == "num_particles") {
        set.numParticles = reader.readInt();
    } else if (word == "texture") {
        set.texture = reader.readWord();
    } else if (word == "material") {
        set.material = reader.readWord();
    } else if (word == "shader") {
        set.shader = reader.readWord();
    } else if (word == "blend_mode") {
        set.blendMode = reader.readInt();
    } else if (word == "size") {
        for (float* size : {&set.widthMin, &set.heightMin, &set.widthMax, &set.heightMax})
            *size = reader.readFloat();
    } else if (word == "color") {
        set.colourMin = readVec3(reader);
        set.colourMax = readVec3(reader);
    } else if (word == "pivot") {
        set.pivot = readVec3(reader);
    } else if (word == "alpha") {
        set.alphaMin = reader.readFloat();
        set.alphaMax = reader.readFloat();
    }
}

} // namespace

EffectDesc readEffect(TokenReader& reader, const std::function<int(const std::string&)>& soundIndex) {
    EffectDesc effect;
    int32_t left = EffectDesc::maxParticles;
    const auto handleEffect = [&](const std::string& word) {
        if (word == "Sound") effect.sounds.push_back(soundIndex(reader.readWord()));
        if (word != "ParticleSet") return;
        ParticleSetDesc& set = effect.sets.emplace_back();
        readBlock(reader, [&](const std::string& inner) { readSetKeyword(reader, inner, set); });
        set.numParticles = std::clamp(set.numParticles, 0, left);
        left -= set.numParticles;
    };
    while (!reader.atEnd()) {
        const std::string word = reader.readWord();
        if (word == "Effect" || word == "Effect{") readBlock(reader, handleEffect);
    }
    return effect;
}

} // namespace Zelkor
