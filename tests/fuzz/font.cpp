#include "FuzzTarget.h"

#include "gui/Font.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    Zelkor::TokenReader reader = tokensOf(data, size);
    const std::vector<Zelkor::Font> fonts = Zelkor::readFonts(reader);
    fuzzCheck(fonts.size() <= size);
    for (const Zelkor::Font& font : fonts) {
        fuzzCheck(!font.name.empty());
        for (const Zelkor::GlyphRect& glyph : font.glyphs)
            fuzzCheck(glyph.top != glyph.bottom || glyph.aspect() == 0);
    }
    return 0;
}
