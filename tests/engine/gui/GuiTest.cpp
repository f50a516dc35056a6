// The object tree, its fonts and sprites.
#include "engine/render/RenderTest.h"
#include "gui/GuiShapes.h"
#include "gui/GuiSprite.h"
#include "gui/GuiTileArray.h"
#include "gui/GuiWorkspace.h"
#include "gui/OverlayManager.h"
#include "io/TokenReader.h"

namespace Zelkor {
namespace {

class GuiTest : public RenderTest {
  protected:
    void SetUp() override {
        RenderTest::SetUp();
        writeTexture("letters", tgaBytes(4, 2, 24, std::vector<uint8_t>(24, 200)));
    }
    void loadFonts(const std::string& text) {
        write("sample.fnt", text);
        materials().loadFonts("sample.fnt");
    }
    OverlayManager& overlays() { return *managers->overlayManager; }
};

TEST_F(GuiTest, ObjectsAnswerOnlyForWhatTheyHave) {
    GuiPanel panel({0, 0, 0}, 1, 1), other({0, 0, 0}, 1, 1);
    GuiObject* rect = panel.createChild(GuiKind::rect, 0.1f, 0.2f, 3, 0.4f, 0.5f);
    rect->setText("words");
    rect->setTexture("letters");
    EXPECT_EQ(rect->text(), "");
    EXPECT_EQ(rect->textureHandle(), -1);
    EXPECT_EQ(rect->children(), nullptr);
    EXPECT_EQ(rect->createChild(GuiKind::rect, 0, 0, 0, 1, 1), nullptr);
    EXPECT_EQ(rect->position, (Vec3{0.1f, 0.2f, 3}));
    for (const int kind : {0, 7, -1})
        EXPECT_EQ(panel.createChild(static_cast<GuiKind>(kind), 0, 0, 0, 1, 1), nullptr);
    for (int kind = 2; kind <= 6; ++kind)
        EXPECT_EQ(panel.createChild(static_cast<GuiKind>(kind), 0, 0, 0, 1, 1)->kind, static_cast<GuiKind>(kind));

    const GuiObject* bitmap = (*panel.children())[1].get();
    (*panel.children())[1]->setTexture("letters");
    EXPECT_GE(bitmap->textureHandle(), 0);
    EXPECT_EQ(bitmap->resourceHandle(), bitmap->textureHandle());

    other.removeChild(rect);
    EXPECT_EQ(panel.children()->size(), 6u);
    panel.removeChild(rect);
    EXPECT_EQ(panel.children()->size(), 5u);
    EXPECT_EQ(panel.children()->front().get(), bitmap);
    panel.deleteChildren();
    EXPECT_TRUE(panel.children()->empty());
}

TEST_F(GuiTest, FontsAreReadInPixelsAndFractions) {
    loadFonts("PIXELS\n{\ntype file\nsource letters\nbase 256\nglyph A 0 10 16 32\nglyph } 16 0 8 32 other\n"
              "glyph _ 40 0 4 32\n}\nFRACTIONS { source gone base 1 glyph B 0.1 0.2 0.3 0.6 }\n"
              "CUT { source letters base 64 glyph C 0 0 8 8 glyph D 8 0 8");
    const int pixels = materials().findFont("PIXELS"), fractions = materials().findFont("FRACTIONS");
    const GlyphRect a = materials().glyphRect(pixels, 'A'), b = materials().glyphRect(fractions, 'B');
    EXPECT_FLOAT_EQ(a.left, 0.5f / 256);
    EXPECT_FLOAT_EQ(a.top, 10.5f / 256);
    EXPECT_FLOAT_EQ(a.right, a.left + 16.0f / 256);
    EXPECT_FLOAT_EQ(a.aspect(), 0.5f);
    EXPECT_FLOAT_EQ(materials().glyphRect(pixels, '}').aspect(), 0.25f);
    EXPECT_FLOAT_EQ(materials().glyphRect(pixels, ' ').aspect(), 0.125f);
    EXPECT_EQ(materials().glyphRect(pixels, 'B').aspect(), 0);
    EXPECT_FLOAT_EQ(b.bottom, 0.6f);
    const int cut = materials().findFont("CUT");
    EXPECT_GT(materials().glyphRect(cut, 'C').right, 0);
    EXPECT_EQ(materials().glyphRect(cut, 'D').right, 0);
    EXPECT_EQ(materials().font(fractions)->texture, -1);

    GuiText text({0, 0, 0}, 1, 1);
    text.setCharHeight(2);
    text.setText("A}");
    EXPECT_EQ(text.textWidth(), 0);
    text.setFont("PIXELS");
    EXPECT_FLOAT_EQ(text.textWidth(), 2 * (0.5f + 0.25f));
    text.setTextParam(0.1f);
    EXPECT_FLOAT_EQ(textExtent(text), 0.15f);
    loadFonts("PIXELS source letters base 4 glyph A 0 0 3 1 }");
    EXPECT_EQ(materials().findFont("PIXELS"), pixels);
    EXPECT_FLOAT_EQ(text.textWidth(), 2 * 3);
    text.setFont("gone");
    EXPECT_EQ(text.resourceHandle(), 0);
    materials().loadFonts("missing.fnt");
}

TEST_F(GuiTest, SpriteDefinitionsAreReadOnce) {
    write("spritedef/coin.spritedef", "size 0.5 0.25 noise numframes 4 2 animation spin loop frame 1 0.1\n"
                                      "frame 2 0.2 animation end redirect spin texture letters frame");
    GuiPanel panel({0, 0, 0}, 1, 1);
    const GuiSprite* sprite = panel.createSprite("coin", {1, 2, 3});
    const SpriteDef* def = overlays().spriteDef("coin");
    write("spritedef/coin.spritedef", "size 9 9");
    EXPECT_EQ(overlays().spriteDef("coin"), def);
    ASSERT_EQ(def->animations.size(), 2u);
    EXPECT_TRUE(def->animations[0].loop);
    EXPECT_EQ(def->animations[0].frames[1].cell, 2);
    EXPECT_EQ(def->animations[1].redirect, "spin");
    EXPECT_GE(def->texture, 0); // the word that ends an animation is not lost
    EXPECT_EQ(sprite->textureHandle(), def->texture);
    EXPECT_EQ(sprite->width, 0.5f);
    EXPECT_EQ(sprite->height, 0.25f);
    EXPECT_EQ(sprite->animation(), "spin");

    const GuiSprite* none = panel.createSprite("gone", {0, 0, 0});
    EXPECT_EQ(none->textureHandle(), -1);
    EXPECT_EQ(none->width, 0);
    write("spritedef/gone.spritedef", "size 2 3");
    EXPECT_NE(overlays().spriteDef("gone"), nullptr);
}

TEST_F(GuiTest, SpritesPlayAsDrawn) {
    TokenReader reader([] {
        const std::string text = "numframes 4 2 animation once frame 0 0.1 frame 5 0.2\n"
                                 "animation round loop frame 1 0.1 frame 2 0.1 frame 3 0.1\n"
                                 "animation then redirect round frame 6 0.1\n"
                                 "animation a redirect b frame 0 0 animation b redirect a frame 1 0";
        return std::vector<char>(text.begin(), text.end());
    }());
    SpriteDef def = readSpriteDef(reader);
    const struct {
        const char* animation;
        float speed, seconds;
        int cell;
        bool finished;
    } cases[] = {{"once", 1, 0.05f, 0, false},   {"once", 1, 0.15f, 5, false}, {"once", 1, 0.29f, 5, false},
                 {"once", 1, 10, 5, true},       {"once", 2, 0.06f, 5, false}, {"once", -1, 5, 0, false},
                 {"round", 1, 0.25f, 3, false},  {"round", 1, 0.35f, 1, false}, {"round", 1, 300.15f, 2, false},
                 {"then", 1, 0.05f, 6, false},   {"then", 1, 0.25f, 2, false}};
    for (const auto& c : cases) {
        GuiSprite sprite({0, 0, 0}, 1, 1);
        sprite.setDefinition(&def);
        sprite.speed = c.speed;
        ASSERT_TRUE(sprite.setAnimation(c.animation));
        advanceSprites(sprite, c.seconds);
        EXPECT_EQ(sprite.cell(), c.cell) << c.animation << " at " << c.seconds;
        EXPECT_EQ(sprite.finished(), c.finished) << c.animation << " at " << c.seconds;
    }

    GuiSprite sprite({0, 0, 0}, 1, 1);
    sprite.setDefinition(&def);
    sprite.setAnimation("round");
    sprite.advance(0.15f);
    EXPECT_FALSE(sprite.setAnimation("gone"));
    sprite.setAnimation("round"); // already playing: not begun again
    EXPECT_EQ(sprite.cell(), 2);
    sprite.setAnimation("a");
    sprite.advance(1); // a circle without duration

    // Second row, second column; half a texel of 8 stays away from each neighbour.
    managers->renderer->getTexture("letters"); // the first of all textures tells no size
    def.texture = managers->renderer->createTexture("sheet", 0, 8, 8);
    sprite.setDefinition(&def);
    sprite.setAnimation("once");
    sprite.advance(0.2f);
    const GuiCorners corners = *sprite.textureData();
    const auto texel = [](float u) { return u * 7 + 0.5f; };
    EXPECT_FLOAT_EQ(texel(corners[0]), 2.5f);
    EXPECT_FLOAT_EQ(texel(corners[2]), 3.5f);
    EXPECT_FLOAT_EQ(texel(corners[1]), 4.5f);
    EXPECT_FLOAT_EQ(texel(corners[5]), 7.5f);
}

TEST_F(GuiTest, TileArraysListTheCellsInView) {
    GuiTileArray tiles({0, 0, 0}, 4, 2);
    const auto same = [](const Vec3& at) { return Vec2{at.x, at.y}; };
    tiles.findVisibleCells(same, 0.1f);
    EXPECT_TRUE(tiles.visibleCells().empty());
    tiles.resize(40, 20); // a tenth of the screen each
    for (int row = 0; row < 20; ++row)
        for (int column = 0; column < 40; ++column)
            tiles.setTile(column, row, static_cast<std::int16_t>(column == 3 ? -1 : row));
    tiles.setTile(40, 0, 7);
    EXPECT_EQ(tiles.tile(40, 0), GuiTileArray::empty);
    const auto expectView = [&](float left, float top, std::size_t columns, std::size_t rows) {
        tiles.origin = {-left, -top, 0};
        tiles.findVisibleCells(same, 0.15f);
        EXPECT_EQ(tiles.visibleCells().size(), columns * rows) << left << " " << top;
        std::vector<int> cells = tiles.visibleCells();
        std::sort(cells.begin(), cells.end());
        EXPECT_EQ(std::unique(cells.begin(), cells.end()), cells.end());
        for (const int cell : cells)
            EXPECT_NE(cell % 40, 3);
    };
    expectView(0, 0, 11, 12);    // columns 0 to 11 but the empty one
    expectView(1, 0.5f, 13, 13); // from a tenth before to a tenth after
    expectView(2.9f, 0.9f, 12, 12);
    expectView(30, 30, 0, 0);
    expectView(1, 0.5f, 13, 13); // and back
    tiles.axisX = {0, 4, 0};     // turned by a quarter
    tiles.axisY = {-2, 0, 0};
    tiles.origin = {1, -1, 0};
    tiles.findVisibleCells(same, 0.15f);
    EXPECT_EQ(tiles.visibleCells().size(), 13u * 12u);
}

} // namespace
} // namespace Zelkor
