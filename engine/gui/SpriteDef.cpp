#include "gui/SpriteDef.h"

#include "io/TokenReader.h"

#include <algorithm>

namespace Zelkor {

namespace {

std::string nextWord(TokenReader& reader) {
    return reader.atEnd() ? std::string() : reader.readWord();
}

// Returns the word that ended the animation, empty at the end of the data.
std::string readAnimation(TokenReader& reader, SpriteAnimation& animation) {
    while (!reader.atEnd()) {
        const std::string word = nextWord(reader);
        if (word == "loop") {
            animation.loop = true;
        } else if (word == "redirect") {
            animation.redirect = nextWord(reader);
        } else if (word == "frame") {
            SpriteFrame frame;
            frame.cell = reader.readInt();
            frame.duration = reader.readFloat();
            if (!reader.atEnd()) animation.frames.push_back(frame); // else cut short
        } else {
            return word;
        }
    }
    return {};
}

} // namespace

const SpriteAnimation* SpriteDef::animation(std::string_view wanted) const {
    const auto found =
        std::find_if(animations.begin(), animations.end(),
                     [wanted](const SpriteAnimation& animation) { return animation.name == wanted; });
    return found == animations.end() ? nullptr : &*found;
}

SpriteDef readSpriteDef(TokenReader& reader) {
    SpriteDef def;
    std::string word = nextWord(reader);
    while (!word.empty()) {
        if (word == "animation") {
            SpriteAnimation animation;
            animation.name = nextWord(reader);
            word = readAnimation(reader, animation);
            def.animations.push_back(std::move(animation));
            continue; // the word that ended it is a keyword of its own
        }
        if (word == "texture") {
            def.textureName = nextWord(reader);
        } else if (word == "size") {
            def.width = reader.readFloat();
            def.height = reader.readFloat();
        } else if (word == "numframes") {
            def.framesX = reader.readInt();
            def.framesY = reader.readInt();
        }
        word = nextWord(reader);
    }
    return def;
}

} // namespace Zelkor
