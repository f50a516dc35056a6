// What becomes of a workspace: quads, their order, batches and pixels.
#include "engine/render/RenderTest.h"
#include "gui/GuiShapes.h"
#include "gui/GuiWorkspace.h"
#include "gui/OverlayManager.h"
#include "render/GuiDrawing.h"

#include <set>

namespace Zelkor {
namespace {

class GuiDrawTest : public RenderTest {
  protected:
    void SetUp() override {
        RenderTest::SetUp();
        for (const char* name : {"letters", "icons"})
            writeTexture(name, tgaBytes(2, 2, 32, std::vector<uint8_t>(16, 255)));
        write("sample.fnt", "F { source letters base 1 glyph A 0 0 0.5 1 glyph B 0 0 1 1 }");
        materials().loadFonts("sample.fnt");
    }
    GuiObject& add(GuiKind kind, float x, float y, float z, float w, float h, GuiObject* parent = nullptr) {
        return *(parent ? *parent : screen.root).createChild(kind, x, y, z, w, h);
    }
    GuiObject& addText(const std::string& text, float x, float y, float z) {
        GuiObject& object = add(GuiKind::text, x, y, z, 0, 0);
        object.setFont("F");
        object.setTextParam(0.02f);
        object.setText(text);
        return object;
    }
    GuiDrawList& list(int pass) {
        GuiDrawList& made = gl().guiList;
        made.clear();
        made.updateGuiList(screen, pass);
        return made;
    }
    void draw(GuiWorkspace& workspace, bool tint = false) { drawBothPasses(workspace, tint); }

    // Must go before the managers.
    void TearDown() override {
        screen.root.deleteChildren();
        RenderTest::TearDown();
    }
    GuiScreenWorkspace screen{false};
};

TEST_F(GuiDrawTest, PassesTakeWhatTheyCanDraw) {
    const struct {
        int mode;
        float opacity;
        std::array<const char*, 2> passes; // kinds taken
    } cases[] = {{0, 1, {"123456", ""}},    {0, 0.5f, {"", ""}},       {3, 1, {"1456", "23456"}},
                 {3, 0.5f, {"", "123456"}}, {4, 1, {"", "123456"}},    {10, 0.9f, {"", "123456"}},
                 {0x103, 1, {"", "123456"}}};
    for (const auto& c : cases)
        for (const int pass : {0, 1}) {
            std::string taken;
            for (int kind = 1; kind <= 6; ++kind)
                if (drawnInPass(static_cast<GuiKind>(kind), c.mode, c.opacity, pass))
                    taken += static_cast<char>('0' + kind);
            EXPECT_EQ(taken, c.passes[static_cast<std::size_t>(pass)]) << c.mode << " " << c.opacity;
        }
}

TEST_F(GuiDrawTest, ChildrenStandWhereTheirParentsTurnThem) {
    screen.root.colour = {1, 1, 0.5f, 0.5f};
    GuiObject& outer = add(GuiKind::panel, 0.5f, 0.4f, 10, 0, 0);
    outer.angle = pi / 2;
    outer.colour = {0.5f, 1, 1, 1};
    GuiObject& inner = add(GuiKind::panel, 0.1f, 0, 5, 0, 0, &outer);
    inner.angle = pi / 2;
    GuiObject& rect = add(GuiKind::rect, 0.2f, 0.1f, 2, 0.1f, 0.05f, &inner);
    const GuiDrawList& made = list(1);
    ASSERT_EQ(made.order().size(), 1u);
    const GuiDrawItem& item = made.item(0);
    // Right is down after a quarter turn, left after two.
    const float expected[8] = {0.3f, 0.4f, 0.2f, 0.4f, 0.3f, 0.35f, 0.2f, 0.35f};
    for (int i = 0; i < 8; ++i)
        EXPECT_NEAR(item.quad[i], expected[i], 1e-5) << i;
    EXPECT_EQ(item.colour, (Vec4{0.5f, 1, 0.5f, 0.5f}));
    EXPECT_FLOAT_EQ(item.depth, 17 * 0.1f - 100);
    EXPECT_EQ(item.texture, -1);

    // Panels and rectangles that are not to be seen.
    EXPECT_TRUE(list(0).order().empty());
    outer.visible = false;
    EXPECT_TRUE(list(1).order().empty());
    outer.visible = true;
    rect.position.x = 3;
    EXPECT_TRUE(list(1).order().empty());
}

TEST_F(GuiDrawTest, TextRunsAlongItsLines) {
    GuiObject& text = addText("BA\n\nA?B", 0.1f, 0.2f, 0);
    text.setTextParam(0.1f);
    text.setCharHeight(0.5f);
    text.drawFlag = 0;
    const GuiDrawList& made = list(1);
    ASSERT_EQ(made.order().size(), 1u);
    const GuiDrawItem& item = made.item(0);
    EXPECT_EQ(item.quadCount, 5);
    EXPECT_FALSE(item.filtered);
    EXPECT_EQ(item.texture, gl().getTexture("letters"));
    // Left, top and width of each letter; '?' has none.
    const float expected[5][3] = {
        {0.1f, 0.2f, 0.05f}, {0.15f, 0.2f, 0.025f}, {0.1f, 0.4f, 0.025f}, {0.125f, 0.4f, 0}, {0.125f, 0.4f, 0.05f}};
    for (std::size_t i = 0; i < 5; ++i) {
        const float* quad = &made.quads(item)[i * guiQuadFloats];
        EXPECT_NEAR(quad[0], expected[i][0], 1e-6);
        EXPECT_NEAR(quad[1], expected[i][1], 1e-6);
        EXPECT_NEAR(quad[2] - quad[0], expected[i][2], 1e-6);
        EXPECT_NEAR(quad[5] - quad[1], 0.1f, 1e-6);
    }
    text.setFont("gone");
    EXPECT_TRUE(list(1).order().empty());
}

TEST_F(GuiDrawTest, ListsAreSortedAndFull) {
    GuiDrawList made;
    for (const bool frontToBack : {false, true}) {
        made.clear();
        GuiDrawItem item;
        const float depths[] = {3, 1, 2, 3, 1};
        for (int i = 0; i < 5; ++i) {
            item.depth = depths[i];
            made.addToGuiList(item, frontToBack);
        }
        const std::vector<int> order(made.order().begin(), made.order().end());
        EXPECT_EQ(order, frontToBack ? (std::vector<int>{1, 4, 2, 0, 3}) : (std::vector<int>{0, 3, 2, 1, 4}));
    }
    // 3125 quads fit the pool; a text of one letter needs none of them.
    addText(std::string(2000, 'A'), 0, 0, 0);
    addText(std::string(2000, 'B'), 0, 0, 0);
    addText("AB", 0, 0, 0);
    addText("A", 0, 0, 0);
    const GuiDrawList& texts = list(1);
    ASSERT_EQ(texts.order().size(), 3u);
    EXPECT_EQ(texts.item(1).quadCount, 1125);
    EXPECT_EQ(texts.item(2).quadCount, 1);
    for (int i = 0; i < 1100; ++i)
        add(GuiKind::rect, 0, 0, 0, 1, 1);
    EXPECT_EQ(list(0).order().size(), 1000u);
}

TEST_F(GuiDrawTest, MenusNeedFewBatches) {
    // Rows of a plate, an icon, and texts on and beside them: 300 letters and pictures over three textures.
    for (int row = 0; row < 25; ++row) {
        const float y = static_cast<float>(row) * 0.04f;
        add(GuiKind::bitmap, 0.1f, y, 0, 0.3f, 0.035f);
        add(GuiKind::bitmap, 0.02f, y, 0, 0.05f, 0.035f).setTexture("icons");
        addText("ABABA", 0.15f, y + 0.005f, 0);
        addText("ABABA", 0.5f, y + 0.005f, 0);
    }
    screen.begin();
    drawGuiWorkspace(screen, 1, false);
    EXPECT_LE(gl().guiList.batches().size(), 8u);
    EXPECT_EQ(gl().guiList.vertices().size(), 4u * (25 * 2 + 25 * 10));
    const std::size_t drawn = gl().guiList.batches().size();
    gl().present();
    EXPECT_EQ(gl().guiBatches, static_cast<int>(drawn));

    // What covers another picture stays above it.
    screen.root.deleteChildren();
    add(GuiKind::bitmap, 0.1f, 0, 0, 0.2f, 0.2f);
    addText("A", 0.15f, 0.1f, 0);
    add(GuiKind::bitmap, 0.1f, 0.05f, 0, 0.2f, 0.2f);
    addText("B", 0.8f, 0.1f, 0).drawFlag = 0;
    GuiDrawList& covering = list(1);
    covering.gather(false);
    EXPECT_EQ(covering.batches().size(), 4u);
    EXPECT_FALSE(covering.batches()[3].filtered);
}

TEST_F(GuiDrawTest, PixelsOnTheScreen) {
    beginFrame(camera());
    add(GuiKind::rect, 0, 0, 0, 0.5f, 0.5f).colour = {1, 0, 0, 1};
    add(GuiKind::rect, 0, 0, -5, 0.5f, 1).colour = {0, 0, 1, 1}; // behind the red one
    GuiObject& faint = add(GuiKind::rect, 0.5f, 0, 1, 0.5f, 0.5f);
    faint.colour = {0, 0, 0, 0.5f};
    GuiObject& hidden = add(GuiKind::panel, 0.5f, 0.5f, 0, 0, 0);
    add(GuiKind::rect, 0, 0, 0, 1, 1, &hidden).colour = {0, 0, 0, 1};
    hidden.visible = false;
    draw(screen);
    EXPECT_TRUE(near(pixel(2, 2), {255, 0, 0}));
    EXPECT_TRUE(near(pixel(40, 28), {255, 0, 0}));
    EXPECT_TRUE(near(pixel(2, 60), {0, 0, 255}));
    EXPECT_TRUE(near(pixel(90, 2), {127, 127, 127}));
    EXPECT_TRUE(near(pixel(90, 60), {255, 255, 255}));

    // The pencil's tone, on the window and for blended colours only.
    beginFrame(camera());
    screen.root.deleteChildren();
    add(GuiKind::rect, 0, 0, 0, 1, 0.5f).drawMode = 10;
    add(GuiKind::rect, 0, 0.5f, 0, 1, 0.5f).drawMode = 0;
    draw(screen, true);
    EXPECT_TRUE(near(pixel(5, 5), {214, 166, 158}));
    EXPECT_TRUE(near(pixel(5, 60), {255, 255, 255}));
}

TEST_F(GuiDrawTest, TextureEdgesLieOnTexelCentres) {
    // Four columns of which only the first is red: with the edges on texel centres the left edge is pure and
    // nothing of it wraps round to the right.
    std::vector<uint8_t> pixels;
    for (int i = 0; i < 16; ++i)
        pixels.insert(pixels.end(), {0, 0, static_cast<uint8_t>(i % 4 == 0 ? 255 : 0)});
    writeTexture("stripe", tgaBytes(4, 4, 24, pixels));
    beginFrame(camera());
    GuiObject& picture = add(GuiKind::bitmap, 0, 0, 0, 1, 1);
    picture.setTexture("stripe");
    draw(screen);
    EXPECT_TRUE(near(pixel(0, 32), {252, 0, 0}, 4));
    EXPECT_TRUE(near(pixel(16, 32), {123, 0, 0}, 6)); // half way to the second centre, at a third
    EXPECT_TRUE(near(pixel(95, 32), {0, 0, 0}, 2));
    picture.drawFlag = 0;
    draw(screen);
    EXPECT_TRUE(near(pixel(14, 32), {255, 0, 0}));
    EXPECT_TRUE(near(pixel(18, 32), {0, 0, 0}));
}

TEST_F(GuiDrawTest, SceneWorkspacesLieInTheWorld) {
    // The view is 20 units high at the plane of the panel, which is turned by a quarter: its y runs left.
    GuiSceneWorkspace world(nullptr, {}, quatFromAxisAngle(pi / 2, {0, 0, 1}), {5, 0, 0}, true);
    GuiObject& rect = *world.root.createChild(GuiKind::rect, 0, 0, 0, 5, 2);
    rect.colour = {0, 0, 0, 1};
    GuiScreenWorkspace over(true);
    over.root.createChild(GuiKind::rect, 0, 0, 0, 0.1f, 0.1f)->colour = {1, 0, 0, 1};
    beginFrame(camera());
    managers->overlayManager->draw();
    // 3.2 pixels a unit: x 3..5 is 57..64, y 0..5 is 16..32 pixels from the top.
    EXPECT_TRUE(near(pixel(60, 24), {0, 0, 0}));
    EXPECT_TRUE(near(pixel(54, 24), {255, 255, 255}));
    EXPECT_TRUE(near(pixel(67, 24), {255, 255, 255}));
    EXPECT_TRUE(near(pixel(60, 36), {255, 255, 255}));
    EXPECT_TRUE(near(pixel(2, 2), {255, 0, 0}));
}

} // namespace
} // namespace Zelkor
