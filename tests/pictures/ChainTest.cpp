// Small frames of the first stage, drawn off-screen as the game draws them, and measured.
#include "actors/Thingy.h"
#include "core/EngineManagers.h"
#include "core/Random.h"
#include "core/TimerManager.h"
#include "game/Game.h"
#include "game/GameCamera.h"
#include "game/Session.h"
#include "game/Settings.h"
#include "render/GlRenderer.h"
#include "render/Lightness.h"
#include "render/MaterialManager.h"
#include "sdl/SdlPlatform.h"
#include "support/TempData.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <set>

using namespace Zelkor;

namespace {

constexpr int width = 640, height = 360;
constexpr float unitsPerPixel =
    2 * GameCamera::viewDistance * 0.26795f / height; // the view is 30 degrees high

class ChainTest : public ::testing::Test {
  protected:
    ChainTest() {
        setDataFolder(RUSTPIKE_DATA);
        platform::setCurrent(&system);
    }
    // Early in the stage, the hero on his feet and the game standing still. Each frame is a redraw.
    void start(int post, GlRenderer::Probe probe = probeContext) {
        game.reset();
        managers.reset();
        TimerManager::reset();
        managers = std::make_unique<EngineManagers>();
        managers->renderer = std::make_unique<GlRenderer>(probe);
        ASSERT_TRUE(gl().init("", width, height, 32, false));
        seedRandom(1);
        game = std::make_unique<Game>();
        game->settings->setOption(Settings::optionPostProcessing, static_cast<float>(post));
        game->settings->superSample = 0;
        game->startWithoutMenus();
        TimerManager::instance().fixedFrameSeconds = 0.1f;
        for (int i = 0; i < 12; ++i)
            game->runFrame();
        TimerManager::instance().findTimer("game")->paused = 1;
    }
    GlRenderer& gl() { return static_cast<GlRenderer&>(*managers->renderer); }
    Image draw() {
        game->postChain.draw(*game->camera(), *game->settings);
        return gl().readFramebuffer();
    }
    Lightness frame() {
        gl().captureFrame = true;
        game->runFrame();
        return Lightness(gl().capturedFrame);
    }
    Unit& hero() { return *game->camera()->target->unit; }
    // What two redraws differ in: strokes and nothing else.
    Lightness strokes() {
        std::array<Lightness, 2> drawn;
        for (const std::size_t i : {0u, 1u}) {
            for (int shader = 0; shader < gl().shaders().size(); ++shader)
                managers->materialManager->setSketchOffset(shader, 0.3f * static_cast<float>(i), 0, 0, 0);
            drawn[i] = Lightness(draw());
        }
        std::transform(drawn[0].values.begin(), drawn[0].values.end(), drawn[1].values.begin(),
                       drawn[0].values.begin(), std::minus<>());
        return drawn[0];
    }
    // Strokes in the box of both pictures go with what has moved so many pixels, and stay nowhere.
    static void expectMoved(const Lightness& before, const Lightness& after, const Lightness::Box& box,
                            int shift) {
        EXPECT_GT(correlation(before, after, box, shift), 0.3f);
        EXPECT_LT(correlation(before, after, box, 0), 0.25f);
    }

    // How much of what a whole pixel of movement changes a quarter of a pixel changes, squared: 1/16 where
    // edges are smooth, 1/4 where they jump from pixel to pixel.
    float raggedness() {
        const Vec3 eye = game->camera()->view.position;
        const auto seenFrom = [&](float pixels) {
            game->camera()->view.position = eye + Vec3{pixels * unitsPerPixel, 0, 0};
            return Lightness(draw());
        };
        const Lightness whole = seenFrom(1), quarter = seenFrom(0.25f), here = seenFrom(0);
        return meanSquareChange(here, quarter) / meanSquareChange(here, whole);
    }

    TempData data;
    platform::SdlPlatform system{{.headless = true}};
    std::unique_ptr<EngineManagers> managers;
    std::unique_ptr<Game> game;
};

class BothWays : public ChainTest, public ::testing::WithParamInterface<int> {
  protected:
    BothWays() { start(GetParam()); }
};
INSTANTIATE_TEST_SUITE_P(, BothWays, ::testing::Values(0, 1));

TEST_P(BothWays, RedrawsChangeStrokesButDoNotStrobe) {
    Lightness before = frame();
    for (int i = 0; i < 15; ++i) {
        const Lightness now = frame();
        EXPECT_LT(largestBlockChange(before, now, 1), 0.02f);
        EXPECT_LT(largestBlockChange(before, now, 4), 0.05f);
        EXPECT_NE(before.values, now.values);
        before = now;
    }
    game->settings->flicker = 0;
    EXPECT_EQ(frame().values, frame().values);
}

TEST_P(BothWays, StrokesMoveWithWhatTheyAreDrawnOn) {
    constexpr int shift = 12; // pixels
    const float way = shift * unitsPerPixel;
    const Lightness before = strokes();
    const Vec3 at = game->camera()->view.project(hero().position + Vec3{0, 9, 0});
    hero().position.x += way;
    expectMoved(before, strokes(),
                {static_cast<int>(at.x * width) - 20, static_cast<int>(at.y * height) - 25, 40, 50}, shift);
    game->camera()->view.position.x -= way;
    expectMoved(before, strokes(), {40, height - 90, width - 80, 80}, shift); // the ground
}

TEST_P(BothWays, FiguresStandOutFromTheirGround) {
    const Lightness with(draw());
    hero().visible = false;
    const Lightness without(draw());
    double figure = 0, ground = 0;
    for (std::size_t i = 0; i < with.values.size(); ++i) {
        if (std::fabs(with.values[i] - without.values[i]) < 0.02f) continue;
        figure += std::pow(with.values[i], 2.2f) + 0.05f;
        ground += std::pow(without.values[i], 2.2f) + 0.05f;
    }
    EXPECT_GT(ground, 300) << "there is no figure";
    EXPECT_GE(ground, 1.5 * figure);
}

TEST_P(BothWays, SmallViewsLieAtTheBottomAndFadesEndInABlankSheet) {
    game->settings->viewSize = 0;
    const Lightness small(draw());
    const auto drawn = small.boundsBelow(0.8f * small.at(0, 0));
    EXPECT_NEAR(drawn.x, 0.17 * width, 4);
    EXPECT_NEAR(drawn.width, 0.66 * width, 8);
    EXPECT_GE(drawn.y, 0.34 * height);
    EXPECT_GE(drawn.y + drawn.height, height - 16) << "the sheet may have a margin";
    game->camera()->fade = 1;
    EXPECT_EQ(Lightness(draw()).steepShare(0.1f), 0);
}

TEST_F(ChainTest, SuperSamplingSmoothsWithoutBands) {
    start(1);
    const Lightness native(draw());
    const float ragged = raggedness();
    game->settings->superSample = 2;
    EXPECT_LT(largestBlockChange(native, Lightness(draw()), 20), 0.05f);
    EXPECT_LT(raggedness(), 0.85f * ragged);
}

TEST_F(ChainTest, WithoutShadersEverythingIsItsAmbientColour) {
    start(1, [] { return GlCapabilities{probeContext().entryPoints, false, false}; });
    std::vector<Vec3> colours{{1, 1, 1}};
    for (const auto& unit : game->session->scene.units())
        for (RenderItem& item : unit->items) {
            const Vec4& c = item.drawnMaterial().ambient;
            colours.push_back({c.x, c.y, c.z});
            colours.push_back({c.x * pencilTint.x, c.y * pencilTint.y, c.z * pencilTint.z}); // its outline
        }
    const Image image = draw();
    std::set<std::array<float, 3>> seen;
    for (std::size_t i = 0; i < image.pixels.size(); i += 3)
        seen.insert({image.pixels[i] / 255.0f, image.pixels[i + 1] / 255.0f, image.pixels[i + 2] / 255.0f});
    EXPECT_GT(seen.size(), 5u);
    for (const auto& [red, green, blue] : seen)
        EXPECT_TRUE(std::any_of(colours.begin(), colours.end(),
                                [pixel = Vec3{red, green, blue}](const Vec3& c) {
                                    return distance(c, pixel) < 0.006f; // rounding
                                }))
            << red << ' ' << green << ' ' << blue;
}

TEST_F(ChainTest, ABrokenPassLeavesTheDirectPicture) {
    start(0);
    const Image direct = draw();
    std::filesystem::copy(dataFolder(), data.folder(), std::filesystem::copy_options::recursive);
    data.write("shaders/post.shader", "PIXEL\nno shader\n");
    setDataFolder(data.folder());
    start(1);
    EXPECT_EQ(game->settings->postProcessing, 0);
    EXPECT_EQ(draw().pixels, direct.pixels);
}

TEST_F(ChainTest, TargetsGrowAndOutliveTheirContext) {
    start(1);
    const Image before = draw();
    gl().setDisplayMode(true, width, height); // refused: a new window, in which everything is made again
    EXPECT_EQ(draw().pixels, before.pixels);
    for (const auto& unit : game->session->scene.units())
        unit->visible = false;
    game->settings->superSample = 2;
    gl().resize(1280, 720);
    draw();
    int wide = 0, high = 0;
    gl().getTextureSize(gl().getTexture("framebuffer"), wide, high);
    EXPECT_EQ(wide, 4096);
    EXPECT_EQ(high, 2048);
}

} // namespace
