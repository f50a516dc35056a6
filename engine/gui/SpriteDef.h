// What a sprite shows: its texture, cut into frames, and the animations over them, as the ".spritedef" files
// say it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Zelkor {

class TokenReader;

struct SpriteFrame {
    int cell = 0;       // row by row from the top left
    float duration = 0; // seconds
};

struct SpriteAnimation {
    std::string name;
    std::vector<SpriteFrame> frames;
    bool loop = false;
    std::string redirect; // what follows; empty: nothing, the last frame stays
};

struct SpriteDef {
    std::string name;
    std::string textureName;
    int texture = -1; // of the renderer
    int framesX = 1, framesY = 1;
    float width = 1, height = 1; // of a sprite made from this
    std::vector<SpriteAnimation> animations;

    // The first of that name, null when there is none.
    const SpriteAnimation* animation(std::string_view name) const;
};

// Everything but name and texture.
SpriteDef readSpriteDef(TokenReader& reader);

} // namespace Zelkor
