#include "font/FontSheet.h"

#include "font/FontFile.h"
#include "mesh/Noise.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <stdexcept>

namespace forge {
namespace {

constexpr char firstLetter = '!', lastLetter = '~';
// Empty texels around each rectangle: a text at half its size blends texels up to two apart.
constexpr int padding = 2;

// The letter in texels, its strokes wider by weight to both sides alike.
FT_GlyphSlot draw(FontFile& font, char letter, float weight) {
    const FT_GlyphSlot glyph = font.load(letter, FT_LOAD_NO_HINTING);
    const auto strength = static_cast<FT_Pos>(std::lround(weight * 64));
    if (strength > 0) {
        FT_Outline_Embolden(&glyph->outline, strength);
        FT_Outline_Translate(&glyph->outline, -strength / 2, -strength / 2);
    }
    if (FT_Render_Glyph(glyph, FT_RENDER_MODE_NORMAL))
        throw std::runtime_error(std::string("cannot draw '") + letter + "'");
    return glyph;
}

// So that from the highest to the lowest letter there are so many texels. Returns how far the highest one
// rises over the base line, in texels.
float fit(FontFile& font, float texels) {
    FT_Pos top = 0, bottom = 0;
    for (char letter = firstLetter; letter <= lastLetter; ++letter) {
        if (letter == spaceLetter) continue;
        const FT_Glyph_Metrics& metrics = font.load(letter, FT_LOAD_NO_SCALE)->metrics;
        top = std::max(top, metrics.horiBearingY);
        bottom = std::min(bottom, metrics.horiBearingY - metrics.height);
    }
    if (top <= bottom) throw std::runtime_error("the outlines are empty");
    const float scale = texels / static_cast<float>(top - bottom);
    const float em = scale * static_cast<float>(font.face()->units_per_EM);
    FT_Set_Char_Size(font.face(), 0, static_cast<FT_F26Dot6>(std::lround(em * 64)), 72, 72);
    return scale * static_cast<float>(top);
}

// Graphite catches on the tooth of the paper: fine specks, and larger ones where the hand was lighter.
float inkAt(int x, int y, const FontSettings& settings) {
    const auto at = [&](float wave, int seed) {
        return 0.5f + 0.5f * valueNoise({static_cast<float>(x) / wave, static_cast<float>(y) / wave, 0.5f}, seed);
    };
    const float bare = 0.65f * at(1.9f, settings.seed) + 0.35f * at(7, settings.seed + 1);
    return 1 - settings.grain * bare;
}

void drawGlyph(const FT_Bitmap& bitmap, int left, int top, const FontSettings& settings, Image& image) {
    for (int y = 0; y < static_cast<int>(bitmap.rows); ++y)
        for (int x = 0; x < static_cast<int>(bitmap.width); ++x) {
            const int toX = left + x, toY = top + y;
            if (toX < 0 || toY < 0 || toX >= image.width || toY >= image.height) continue;
            const float cover = bitmap.buffer[y * bitmap.pitch + x];
            image.at(toX, toY, 3) =
                static_cast<std::uint8_t>(std::lround(cover * inkAt(toX, toY, settings)));
        }
}

// Rectangles in rows from the top.
class Rows {
  public:
    Rows(int textureSize, float lineHeight) : size(textureSize), high(static_cast<int>(std::ceil(lineHeight))) {}

    // Top left corner of the next one.
    void place(float width, int& left, int& top) {
        const int wide = static_cast<int>(std::ceil(width));
        if (x + wide + padding > size) {
            x = padding;
            y += high + 2 * padding;
        }
        if (x + wide + padding > size || y + high + padding > size)
            throw std::runtime_error("the letters do not fit a texture of " + std::to_string(size) + " texels");
        left = x;
        top = y;
        x += wide + 2 * padding;
    }

  private:
    int size, high;
    int x = padding, y = padding;
};

} // namespace

FontSheet drawFont(const FontSettings& settings) {
    FontFile font(settings.file);
    const float margin = 0.5f * (settings.leading * settings.line + settings.weight);
    const float rise = fit(font, settings.line - 2 * margin);
    const int baseLine = static_cast<int>(std::lround(margin + rise));

    FontSheet sheet{settings, Image(settings.size, settings.size, 4), {}};
    for (std::size_t i = 0; i < sheet.image.pixels.size(); ++i)
        sheet.image.pixels[i] = i % 4 == 3 ? 0 : 255;
    Rows rows(settings.size, settings.line);
    for (char letter = firstLetter; letter <= lastLetter; ++letter) {
        const FT_GlyphSlot glyph = draw(font, letter, settings.weight);
        const float advance = static_cast<float>(glyph->linearHoriAdvance) / 65536;
        // What hangs over the advance widens the rectangle: outside of it nothing is drawn.
        const int before = letter == spaceLetter ? 0 : std::max(-glyph->bitmap_left, 0);
        const int reach = letter == spaceLetter ? 0 : glyph->bitmap_left + static_cast<int>(glyph->bitmap.width);
        const float width = static_cast<float>(before) + std::max(advance, static_cast<float>(reach));
        int left, top;
        rows.place(width, left, top);
        if (letter != spaceLetter)
            drawGlyph(glyph->bitmap, left + before + glyph->bitmap_left, top + baseLine - glyph->bitmap_top,
                      settings, sheet.image);
        sheet.glyphs.push_back(
            {letter, static_cast<float>(left), static_cast<float>(top), width, settings.line});
    }
    return sheet;
}

// Reading adds half a texel, and drawing maps 0 and 1 to the centres of the outermost texels. The numbers
// written take both back, so that the edges come to lie exactly where the sheet has them.
std::string describeFonts(const std::vector<FontSheet>& sheets) {
    std::string text;
    for (const FontSheet& sheet : sheets) {
        const auto size = static_cast<float>(sheet.settings.size);
        const float stretch = size / (size - 1);
        text += sheet.settings.name + "\n{\nsource " + sheet.settings.texture + "\nbase " +
                std::to_string(sheet.settings.size) + "\n";
        for (const GlyphPlace& glyph : sheet.glyphs) {
            char line[128];
            std::snprintf(line, sizeof line, "glyph %c %.4f %.4f %.4f %.4f\n", glyph.letter,
                          static_cast<double>((glyph.x - 0.5f) * stretch - 0.5f),
                          static_cast<double>((glyph.y - 0.5f) * stretch - 0.5f),
                          static_cast<double>(glyph.width * stretch), static_cast<double>(glyph.height * stretch));
            text += line;
        }
        text += "}\n";
    }
    return text;
}

} // namespace forge
