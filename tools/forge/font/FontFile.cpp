#include "font/FontFile.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <algorithm>
#include <stdexcept>

namespace forge {

using Zelkor::Vec2;

namespace {

constexpr int curvePieces = 6;

// Collects what the library decomposes a letter into, curves as chords.
struct Pen {
    float scale, left;
    std::vector<Outline>& outlines;

    Vec2 place(const FT_Vector& v) const {
        return {left + scale * static_cast<float>(v.x), scale * static_cast<float>(v.y)};
    }
    void curve(const Vec2& a, const Vec2& b, const Vec2& c) {
        const Vec2 from = outlines.back().back();
        for (int i = 1; i <= curvePieces; ++i) {
            const float t = static_cast<float>(i) / curvePieces, u = 1 - t;
            const auto mix = [&](float p, float q, float r, float s) {
                return u * u * u * p + 3 * u * u * t * q + 3 * u * t * t * r + t * t * t * s;
            };
            outlines.back().push_back({mix(from.x, a.x, b.x, c.x), mix(from.y, a.y, b.y, c.y)});
        }
    }
};

int moveTo(const FT_Vector* to, void* user) {
    Pen& pen = *static_cast<Pen*>(user);
    pen.outlines.push_back({pen.place(*to)});
    return 0;
}
int lineTo(const FT_Vector* to, void* user) {
    Pen& pen = *static_cast<Pen*>(user);
    pen.outlines.back().push_back(pen.place(*to));
    return 0;
}
int quadraticTo(const FT_Vector* by, const FT_Vector* to, void* user) {
    Pen& pen = *static_cast<Pen*>(user);
    const Vec2 from = pen.outlines.back().back(), middle = pen.place(*by), end = pen.place(*to);
    const auto towards = [&](const Vec2& p) {
        return Vec2{p.x + (middle.x - p.x) * 2 / 3, p.y + (middle.y - p.y) * 2 / 3};
    };
    pen.curve(towards(from), towards(end), end);
    return 0;
}
int cubicTo(const FT_Vector* a, const FT_Vector* b, const FT_Vector* to, void* user) {
    Pen& pen = *static_cast<Pen*>(user);
    pen.curve(pen.place(*a), pen.place(*b), pen.place(*to));
    return 0;
}

} // namespace

FontFile::FontFile(const std::string& file) {
    if (FT_Init_FreeType(&library_)) throw std::runtime_error("the font library does not start");
    if (FT_New_Face(library_, file.c_str(), 0, &face_)) {
        FT_Done_FreeType(library_);
        throw std::runtime_error("cannot read the outlines of " + file);
    }
}

FontFile::~FontFile() {
    FT_Done_Face(face_);
    FT_Done_FreeType(library_);
}

FT_GlyphSlot FontFile::load(char letter, int flags) {
    const auto code = static_cast<FT_ULong>(letter == spaceLetter ? ' ' : static_cast<unsigned char>(letter));
    if (FT_Get_Char_Index(face_, code) == 0 || FT_Load_Char(face_, code, flags | FT_LOAD_NO_BITMAP))
        throw std::runtime_error(std::string("the outlines lack '") + letter + "'");
    return face_->glyph;
}

std::vector<Outline> textOutlines(FontFile& font, const std::string& text, float height, float spacing) {
    const FT_Pos capital = font.load('H', FT_LOAD_NO_SCALE)->metrics.horiBearingY;
    if (capital <= 0) throw std::runtime_error("the outlines are empty");
    std::vector<Outline> outlines;
    Pen pen{height / static_cast<float>(capital), 0, outlines};
    const FT_Outline_Funcs steps{moveTo, lineTo, quadraticTo, cubicTo, 0, 0};
    for (const char letter : text) {
        const FT_GlyphSlot glyph = font.load(letter, FT_LOAD_NO_SCALE);
        FT_Outline_Decompose(&glyph->outline, &steps, &pen);
        pen.left += pen.scale * static_cast<float>(glyph->metrics.horiAdvance) + spacing;
    }
    const float middle = (pen.left - spacing) / 2;
    for (Outline& outline : outlines)
        for (Vec2& p : outline)
            p.x -= middle;
    return outlines;
}

} // namespace forge
