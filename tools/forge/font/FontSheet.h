// Letters drawn into a texture, each in a rectangle as wide as its advance and as high as a line, so that
// rectangles set edge to edge make a line of text.
#pragma once

#include "texture/Image.h"

#include <string>
#include <vector>

namespace forge {

struct FontSettings {
    std::string name;    // as the game asks for it
    std::string file;    // of the outlines
    std::string texture; // as the description names it
    int size = 512;      // texels of the texture, either way
    float line = 56;     // texels of the height of a line
    float leading = 0.04f; // share of the line that no letter reaches
    float weight = 0;      // texels added to the width of every stroke
    float grain = 0.2f;    // how much ink the tooth of the paper takes away, 0..1
    int seed = 1;
};

struct GlyphPlace {
    char letter;
    float x, y, width, height; // edges in texels, from the top left
};

struct FontSheet {
    FontSettings settings;
    Image image; // white, its alpha is the ink
    std::vector<GlyphPlace> glyphs;
};

// Every printable letter of ASCII; '_' is the space and empty. Throws std::runtime_error when the outlines
// cannot be read, lack a letter, or do not fit the texture.
FontSheet drawFont(const FontSettings& settings);

// The text that the game reads: all fonts of one program.
std::string describeFonts(const std::vector<FontSheet>& sheets);

} // namespace forge
