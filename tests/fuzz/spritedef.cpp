#include "FuzzTarget.h"

#include "gui/GuiSprite.h"

// Whatever the definition says, playing it comes to an end and shows a part of the texture.
int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    Zelkor::TokenReader reader = tokensOf(data, size);
    const Zelkor::SpriteDef def = Zelkor::readSpriteDef(reader);
    fuzzCheck(def.animations.size() <= size);
    Zelkor::GuiSprite sprite({0, 0, 0}, 1, 1);
    sprite.setDefinition(&def);
    for (const Zelkor::SpriteAnimation& animation : def.animations) {
        fuzzCheck(sprite.setAnimation(animation.name));
        for (const float seconds : {0.0f, 0.016f, 0.3f, 1e9f})
            sprite.advance(seconds);
        for (const float coordinate : *sprite.textureData())
            fuzzCheck(coordinate >= 0 && coordinate <= 1.001f);
    }
    return 0;
}
