#include "gui/Font.h"

#include "io/TokenReader.h"

namespace Zelkor {

namespace {

std::string nextWord(TokenReader& reader) {
    return reader.atEnd() ? std::string() : reader.readWord();
}

GlyphRect readGlyph(TokenReader& reader, float size) {
    float v[4];
    for (float& each : v)
        each = reader.readFloat();
    if (!(size > 1)) return {v[0], v[1], v[2], v[3]};
    GlyphRect rect;
    rect.left = (v[0] + 0.5f) / size;
    rect.top = (v[1] + 0.5f) / size;
    rect.right = rect.left + v[2] / size;
    rect.bottom = rect.top + v[3] / size;
    return rect;
}

// From the word "source" to the closing brace.
void readGlyphs(TokenReader& reader, Font& font) {
    font.textureName = nextWord(reader);
    nextWord(reader); // "base"
    float size = reader.readFloat();
    if (size == 0) size = 1; // left out
    while (!reader.atEnd()) {
        const std::string word = nextWord(reader);
        if (word == "}") break;
        if (word != "glyph") continue;
        const std::string letter = nextWord(reader);
        const GlyphRect rect = readGlyph(reader, size);
        if (letter.empty() || reader.atEnd()) return; // cut short
        font.glyphs[static_cast<unsigned char>(letter[0])] = rect;
    }
    // A space is no word, so that no file can list one. What they list for it is "_".
    font.glyphs[' '] = font.glyphs['_'];
}

} // namespace

std::vector<Font> readFonts(TokenReader& reader) {
    std::vector<Font> fonts;
    while (!reader.atEnd()) {
        const std::string name = nextWord(reader);
        if (name.empty()) break;
        Font& font = fonts.emplace_back();
        font.name = name;
        std::string word;
        while (!reader.atEnd() && word != "source")
            word = nextWord(reader);
        if (word == "source") readGlyphs(reader, font);
    }
    return fonts;
}

} // namespace Zelkor
