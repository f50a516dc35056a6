// Bitmap fonts: where each letter stands in its texture, as "sample.fnt" says it.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace Zelkor {

class TokenReader;

// In fractions of the texture. All zero: the font lacks the letter.
struct GlyphRect {
    float left = 0, top = 0, right = 0, bottom = 0;

    // Width over height, 0 for a letter without height.
    float aspect() const { return bottom != top ? (right - left) / (bottom - top) : 0; }
};

struct Font {
    std::string name;
    std::string textureName;
    int texture = -1; // of the renderer
    std::array<GlyphRect, 256> glyphs{};

    const GlyphRect& glyph(char c) const { return glyphs[static_cast<unsigned char>(c)]; }
};

// Every font of the file, in its order and with no texture loaded yet. A font that the end of the data cuts
// short has what was read of it.
std::vector<Font> readFonts(TokenReader& reader);

} // namespace Zelkor
