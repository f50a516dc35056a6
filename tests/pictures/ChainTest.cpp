// Small frames of the first stage, drawn off-screen as the game draws them, and measured.
#include "actors/ThingyManager.h"
#include "core/EngineManagers.h"
#include "core/Random.h"
#include "core/TimerManager.h"
#include "game/Game.h"
#include "game/GameCamera.h"
#include "game/Session.h"
#include "game/Settings.h"
#include "render/GlRenderer.h"
#include "render/MaterialManager.h"
#include "sdl/SdlPlatform.h"
#include "support/TempData.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

using namespace Zelkor;
namespace fs = std::filesystem;

namespace {

constexpr int width = 640, height = 360;

struct Box {
    int x = 0, y = 0, width = 0, height = 0;
};

// Lightness of a picture, 0..1, rows from the top.
struct Grey {
    explicit Grey(const Image& image) : width(image.width), height(image.height) {
        for (std::size_t i = 0; i + 2 < image.pixels.size(); i += 3)
            values.push_back((0.2126f * static_cast<float>(image.pixels[i]) + 0.7152f * static_cast<float>(image.pixels[i + 1]) + 0.0722f * static_cast<float>(image.pixels[i + 2])) / 255);
    }
    float at(int x, int y) const { return values[static_cast<std::size_t>(y * width + x)]; }
    double mean(const Box& box) const {
        double sum = 0;
        for (int y = box.y; y < box.y + box.height; ++y)
            for (int x = box.x; x < box.x + box.width; ++x)
                sum += at(x, y);
        return sum / (box.width * box.height);
    }
    int width, height;
    std::vector<float> values;
};

// The largest difference of the means of blocks, so many along each side.
double blockDifference(const Grey& a, const Grey& b, int along) {
    double worst = 0;
    for (int i = 0; i < along * along; ++i) {
        const Box box{i % along * a.width / along, i / along * a.height / along, a.width / along, a.height / along};
        worst = std::max(worst, std::fabs(a.mean(box) - b.mean(box)));
    }
    return worst;
}

// Correlation of a in the box with b as many pixels further right; both have a mean of about 0.
double correlation(const Grey& a, const Grey& b, const Box& box, int shift) {
    double ab = 0, aa = 0, bb = 0;
    for (int y = box.y; y < box.y + box.height; ++y)
        for (int x = box.x; x < box.x + box.width; ++x) {
            const double p = a.at(x, y), q = b.at(x + shift, y);
            ab += p * q, aa += p * p, bb += q * q;
        }
    return ab / std::sqrt(aa * bb + 1e-12);
}

int steepPixels(const Grey& g) {
    int count = 0;
    for (int y = 0; y < g.height; ++y)
        for (int x = 1; x < g.width; ++x)
            count += std::fabs(g.at(x, y) - g.at(x - 1, y)) > 0.25f;
    return count;
}

// The smallest box around everything at most so light.
Box boundsOfDark(const Grey& g, float limit) {
    int left = g.width, top = g.height, right = 0, bottom = 0;
    for (int y = 0; y < g.height; ++y)
        for (int x = 0; x < g.width; ++x)
            if (g.at(x, y) <= limit) {
                left = std::min(left, x), top = std::min(top, y);
                right = std::max(right, x + 1), bottom = std::max(bottom, y + 1);
            }
    return {left, top, right - left, bottom - top};
}

class ChainTest : public ::testing::Test {
  protected:
    ~ChainTest() override { stop(); }
    void stop() {
        game.reset();
        managers.reset();
        TimerManager::reset();
    }
    // A moment into the stage, the hero on his feet and the game standing still.
    void start(int post, GlRenderer::Probe probe = probeContext) {
        stop();
        platform::setCurrent(&system);
        managers = std::make_unique<EngineManagers>();
        managers->renderer = std::make_unique<GlRenderer>(probe);
        ASSERT_TRUE(gl().init("", width, height, 32, false));
        seedRandom(1);
        game = std::make_unique<Game>();
        *game->settings = {};
        game->settings->postProcessing = post;
        game->settings->superSample = 0;
        gl().reloadShaders(post ? "post" : "direct");
        game->currentStage = 0;
        game->preloadAssets();
        game->startSession();
        TimerManager::instance().fixedFrameSeconds = 0.1f; // longer than the sketch's tick: each frame a redraw
        for (int i = 0; i < 12; ++i)
            game->runFrame();
        TimerManager::instance().findTimer("game")->paused = 1;
    }
    GlRenderer& gl() { return static_cast<GlRenderer&>(*managers->renderer); }
    Image draw() {
        game->postChain.draw(*game->camera(), *game->settings);
        return gl().readFramebuffer();
    }
    Image frame() {
        gl().captureFrame = true;
        game->runFrame();
        return gl().capturedFrame;
    }
    Unit& hero() {
        std::vector<Thingy*> found;
        game->thingyManager->collectAll(GROUP_PLAYER, found);
        return *found.at(0)->unit;
    }
    // What two redraws differ in: strokes and nothing else.
    Grey strokes() {
        const auto redraw = [this](float offset) {
            for (int shader = 0; shader < gl().shaders().size(); ++shader)
                managers->materialManager->setSketchOffset(shader, offset, 0, 0, 0);
            return Grey(draw());
        };
        Grey first = redraw(0);
        const Grey second = redraw(0.3f);
        for (std::size_t i = 0; i < first.values.size(); ++i)
            first.values[i] -= second.values[i];
        return first;
    }
    float unitsPerPixel() { return 2 * GameCamera::viewDistance * std::tan(15 * pi / 180) / height; }

    TempData data; // the folder in use again at the end
    platform::SdlPlatform system{{.headless = true}};
    std::unique_ptr<EngineManagers> managers;
    std::unique_ptr<Game> game;
    void SetUp() override { setDataFolder(RUSTPIKE_DATA); }
};

TEST_F(ChainTest, RedrawsDoNotStrobe) {
    for (const int post : {1, 0}) {
        start(post);
        Grey before(frame());
        double whole = 0, quarter = 0;
        bool moved = false;
        for (int i = 0; i < 15; ++i) {
            const Grey now(frame());
            whole = std::max(whole, blockDifference(before, now, 1));
            quarter = std::max(quarter, blockDifference(before, now, 4));
            moved |= before.values != now.values;
            before = now;
        }
        EXPECT_TRUE(moved);
        EXPECT_LT(whole, 0.02) << "post " << post;
        EXPECT_LT(quarter, 0.05) << "post " << post;
        RecordProperty("strobe", std::to_string(whole) + " " + std::to_string(quarter));
        game->settings->flicker = 0;
        EXPECT_EQ(frame().pixels, frame().pixels) << "post " << post;
    }
}

TEST_F(ChainTest, StrokesMoveWithWhatTheyAreDrawnOn) {
    start(1);
    constexpr int shift = 12;
    const Grey before = strokes();
    const Vec3 at = game->camera()->view.project(hero().position + Vec3{0, 9, 0});
    const Box body{static_cast<int>(at.x * width) - 20, static_cast<int>(at.y * height) - 25, 40, 50};
    hero().position.x += shift * unitsPerPixel();
    const Grey heroMoved = strokes();
    for(int i=-2;i<16;i++) std::printf("hero %d %f\n",i,correlation(before, heroMoved, body, i));
    EXPECT_LT(correlation(before, heroMoved, body, 0), 0.3);
    hero().position.x -= shift * unitsPerPixel();
    game->camera()->view.position.x -= shift * unitsPerPixel();
    const Grey viewMoved = strokes();
    const Box ground{40, height - 90, width - 80, 80};
    for(int i=-2;i<16;i++) std::printf("ground %d %f\n",i,correlation(before, viewMoved, ground, i));
    double best = 0;
    for (int i = shift - 1; i <= shift + 2; ++i)
        best = std::max(best, correlation(before, viewMoved, ground, i));
    EXPECT_GT(best, 0.6);
    EXPECT_LT(correlation(before, viewMoved, ground, 0), 0.3);
}

TEST_F(ChainTest, FiguresStandOutFromTheirGround) {
    for (const int post : {1, 0}) {
        start(post);
        const Grey with(draw());
        hero().visible = false;
        const Grey without(draw());
        double figure = 0, ground = 0;
        int count = 0;
        for (std::size_t i = 0; i < with.values.size(); ++i) {
            if (std::fabs(with.values[i] - without.values[i]) < 0.02f) continue;
            figure += std::pow(with.values[i], 2.2), ground += std::pow(without.values[i], 2.2), ++count;
        }
        ASSERT_GT(count, 500);
        EXPECT_GE((ground / count + 0.05) / (figure / count + 0.05), 1.5) << "post " << post;
    }
}

TEST_F(ChainTest, SuperSamplingSmoothsAndKeepsTones) {
    start(1);
    const Grey off(draw());
    game->settings->superSample = 2;
    const Grey four(draw());
    EXPECT_LT(steepPixels(four), 0.7 * steepPixels(off));
    EXPECT_LT(blockDifference(off, four, 20), 0.05) << "bands that only one of them shows";
    std::printf("steep %d %d block %f\n", steepPixels(four), steepPixels(off), blockDifference(off, four, 20));
}

TEST_F(ChainTest, WithoutShadersEverythingIsItsAmbientColour) {
    start(1, [] { return GlCapabilities{probeContext().entryPoints, false, false}; });
    std::set<std::vector<int>> expected{{255, 255, 255}}, seen;
    for (const auto& unit : game->session->scene.units())
        for (RenderItem& item : unit->items)
            for (const Vec4& tint : {Vec4{1, 1, 1, 1}, pencilTint}) {
                const Vec4& colour = item.drawnMaterial().ambient;
                expected.insert({static_cast<int>(std::lround(colour.x * tint.x * 255)), static_cast<int>(std::lround(colour.y * tint.y * 255)), static_cast<int>(std::lround(colour.z * tint.z * 255))});
            }
    const Image image = draw();
    for (std::size_t i = 0; i < image.pixels.size(); i += 3)
        seen.insert({image.pixels[i], image.pixels[i + 1], image.pixels[i + 2]});
    EXPECT_GT(seen.size(), 5u);
    for(auto&c:seen) if(!expected.contains(c)) std::printf("odd %d %d %d\n",c[0],c[1],c[2]);
}

TEST_F(ChainTest, ABrokenPassLeavesTheDirectPicture) {
    start(0);
    const Image direct = draw();
    fs::copy(RUSTPIKE_DATA, data.folder(), fs::copy_options::recursive);
    data.write("shaders/post.shader", "PIXEL\nno shader\n");
    setDataFolder(data.folder());
    start(1);
    EXPECT_EQ(game->settings->postProcessing, 0);
    EXPECT_EQ(gl().shaders().searchPrefix, "direct");
    EXPECT_EQ(draw().pixels, direct.pixels);
}

TEST_F(ChainTest, SizesOfViewAndTarget) {
    for (const int post : {1, 0}) {
        start(post);
        game->settings->viewSize = 0;
        const Grey small(draw());
        const Box dark = boundsOfDark(small, 0.8f * small.at(0, 0));
        EXPECT_NEAR(dark.x, 0.17 * width, 4);
        EXPECT_NEAR(dark.width, 0.66 * width, 8);
        EXPECT_GE(dark.y, 0.34 * height);
        EXPECT_EQ(dark.y + dark.height, height);
    }
    start(1);
    const Image before = draw();
    gl().setDisplayMode(true, width, height); // refused: a new window, in which everything is made again
    EXPECT_EQ(draw().pixels, before.pixels);
    game->camera()->fade = 1;
    EXPECT_EQ(steepPixels(Grey(draw())), 0);
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
