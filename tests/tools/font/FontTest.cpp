// What drawFont promises, measured on its texels and read back as the game reads it.
#include "font/FontReader.h"
#include "tools/Workshop.h"

#include <cstdio>
#include <sstream>

namespace forge {
namespace {

constexpr const char* outlines = "/usr/share/fonts/truetype";

class Fonts : public Workshop {
  protected:
    FontSheet draw(const std::string& text) {
        return drawFont(readFont(write("f.font", text), outlines).settings);
    }
};

TEST_F(Fonts, EveryLetterLiesInItsRectangle) {
    const FontSheet sheet = draw("font F file=klee/KleeOne-SemiBold.ttf texture=t size=256 line=24 grain=0");
    ASSERT_EQ(sheet.glyphs.size(), 94u);
    std::vector<bool> inside(256 * 256, false);
    for (const GlyphPlace& glyph : sheet.glyphs) {
        int ink = 0;
        for (int y = static_cast<int>(glyph.y); y < static_cast<int>(glyph.y + glyph.height); ++y)
            for (int x = static_cast<int>(glyph.x); static_cast<float>(x) < glyph.x + glyph.width; ++x) {
                const auto texel = static_cast<std::size_t>(y * 256 + x);
                EXPECT_FALSE(inside[texel]) << glyph.letter << " overlaps another";
                inside[texel] = true;
                ink += sheet.image.at(x, y, 3);
            }
        EXPECT_EQ(ink == 0, glyph.letter == '_') << glyph.letter;
    }
    for (int y = 0; y < 256; ++y)
        for (int x = 0; x < 256; ++x)
            if (!inside[static_cast<std::size_t>(y * 256 + x)]) {
                EXPECT_EQ(sheet.image.at(x, y, 3), 0) << x << " " << y;
            }

    // Read by the rule of the file and drawn by the renderer's, the edges are where they were.
    std::istringstream text(describeFonts({sheet}));
    std::string word, letter;
    std::size_t count = 0;
    while (text >> word) {
        if (word != "glyph") continue;
        float x, y, width, height;
        text >> letter >> x >> y >> width >> height;
        const GlyphPlace& glyph = sheet.glyphs[count++];
        const auto drawn = [](float share) { return share * 255 + 0.5f; };
        const float left = (x + 0.5f) / 256;
        EXPECT_NEAR(drawn(left), glyph.x, 0.01f);
        EXPECT_NEAR(drawn(left + width / 256), glyph.x + glyph.width, 0.01f);
    }
    EXPECT_EQ(count, 94u);
}

TEST_F(Fonts, RefusalsNameTheReason) {
    EXPECT_NE(faultOf([&] { draw("font F file=a texture=t line=2"); }).find("line is 6"), std::string::npos);
    EXPECT_NE(faultOf([&] { draw("# nothing"); }).find("no font"), std::string::npos);
    EXPECT_THROW(draw("font F file=none.ttf texture=t"), std::runtime_error);
    EXPECT_THROW(draw("font F file=klee/KleeOne-Regular.ttf texture=t size=128 line=40"), std::runtime_error);
}

} // namespace
} // namespace forge
