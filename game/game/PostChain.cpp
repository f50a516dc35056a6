#include "game/PostChain.h"

#include "audio/AudioManager.h"
#include "core/DebugManager.h"
#include "core/EngineManagers.h"
#include "frontend/MenuManager.h"
#include "game/Game.h"
#include "game/GameCamera.h"
#include "game/Settings.h"
#include "render/GpuPasses.h"
#include "render/GuiDrawing.h"
#include "render/MaterialManager.h"
#include "render/Renderer.h"
#include "render/SceneDrawing.h"

#include <algorithm>
#include <cstddef>

using namespace Zelkor;

namespace {

constexpr int firstSide = 1024; // pixels, of the target the scene is drawn into
constexpr int blurSide = 256;
constexpr float smallestView = 0.66f; // of the picture, at view size 0
// World units for which the paper under the blurred picture moves by once its own size.
constexpr float paperWidth = 170, paperHeight = 270;

Renderer& renderer() {
    return *engineManagers()->renderer;
}

// Lets a texture unit of the material show what was drawn into the target of that name.
void showTarget(Material& material, std::size_t unit, const char* target) {
    if (material.textureUnits.size() <= unit) material.textureUnits.resize(unit + 1);
    material.textureUnits[unit].texture = renderer().getTexture(target);
}

void setParameter(Material* material, const char* name, float value) {
    MaterialManager::setShaderParam(*material, name, value);
}

void setViewport(const PostChain::Area& area, float u, float v) {
    const float lower = 1 - (area.y + area.height); // viewports are measured upwards
    renderer().setViewport(area.x * u, lower * v, area.width * u, area.height * v);
}

} // namespace

PostChain::Size PostChain::renderSize(const Size& window, int superSample) {
    return {superSample >= 2 ? 2 * window.width : window.width,
            superSample >= 1 ? 2 * window.height : window.height};
}

int PostChain::grownSide(int side, int wanted, int limit) {
    if (wanted <= side) return side;
    int grown = firstSide;
    while (grown < wanted && grown < limit)
        grown *= 2;
    return std::max(side, std::min(grown, limit));
}

PostChain::Area PostChain::viewArea(int viewSize) {
    const float size =
        smallestView + (1 - smallestView) * static_cast<float>(std::clamp(viewSize, 0, 100)) / 100;
    return {0.5f - size / 2, 1 - size, size, size};
}

void PostChain::setUp() {
    MaterialManager& materials = *engineManagers()->materialManager;
    blur1_ = materials.findMaterial("blur1");
    blur2_ = materials.findMaterial("blur2");
    post_ = materials.findMaterial("post");
    noPost_ = materials.findMaterial("nopost");
    eraser_ = materials.findMaterial("erasor");
    if (framebuffer_ == 0) {
        framebufferSize_ = {firstSide, firstSide};
        framebuffer_ = renderer().createRenderTarget("framebuffer", firstSide, firstSide);
        blurBuffer1_ = renderer().createRenderTarget("blurBuffer1", blurSide, blurSide);
        blurBuffer2_ = renderer().createRenderTarget("blurBuffer2", blurSide, blurSide);
    }
    if (framebuffer_ == 0) return;
    showTarget(*blur1_, 0, "framebuffer");
    showTarget(*blur2_, 0, "blurBuffer1");
    showTarget(*post_, 0, "blurBuffer2");
    showTarget(*post_, 1, "framebuffer");
}

// Without targets, or without one of the programs, the passes would paint over the scene instead of showing
// it.
bool PostChain::canProcess() const {
    return framebuffer_ != 0 && blur1_->shader >= 0 && blur2_->shader >= 0 && post_->shader >= 0;
}

PostChain::Used PostChain::fitFramebuffer(const Size& wanted) {
    const int limit = renderer().getMaxTextureSize();
    const Size grown{grownSide(framebufferSize_.width, wanted.width, limit),
                     grownSide(framebufferSize_.height, wanted.height, limit)};
    if (grown.width > framebufferSize_.width || grown.height > framebufferSize_.height) {
        renderer().resizeRenderTarget(framebuffer_, grown.width, grown.height);
        framebufferSize_ = grown;
    }
    const auto share = [](int part, int whole) {
        return static_cast<float>(std::min(part, whole)) / static_cast<float>(whole);
    };
    return {share(wanted.width, framebufferSize_.width), share(wanted.height, framebufferSize_.height)};
}

void PostChain::draw(GameCamera& camera, const Settings& settings) {
    if (!post_) setUp();
    if (renderer().aspect > 0) camera.view.aspect = renderer().aspect;
    AudioManager& audio = *engineManagers()->audioManager;
    audio.listener = &camera.view;
    audio.screenSpaceListener = true;

    const Area area = viewArea(settings.viewSize);
    if (settings.postProcessing != 0 && canProcess())
        drawProcessed(camera, area, settings.superSample);
    else
        drawDirect(camera, area);
}

void PostChain::drawScene(GameCamera& camera, const Area& area, const Used& used) {
    const GpuPass pass("scene");
    setViewport(area, used.u, used.v);
    renderScene(*camera.view.scene, camera.view);
}

void PostChain::drawPass(const char* name, Material* material, const Used& used) {
    if (renderer().sceneHidden) return;
    if (material->shader < 0) return; // the fixed pipeline would draw a blank sheet
    const GpuPass pass(name);
    renderer().renderPostEffect({material, 0, 0, used.u, used.v});
}

// What the open menus have in three dimensions, drawn by the same hand as the scene.
void PostChain::drawMenus(const Used& used) {
    const Game* game = Game::current();
    if (!game || !game->menuManager) return;
    const GpuPass pass("menus");
    game->menuManager->drawMenus(renderer().aspect, {0, 0, used.u, used.v});
}

void PostChain::erase(float fade, const Used& used) {
    if (!(fade > 0)) return;
    setParameter(eraser_, "erase", fade);
    drawPass("erasor", eraser_, used);
}

void PostChain::drawDirect(GameCamera& camera, const Area& area) {
    renderer().bindRenderTarget(0, true);
    drawScene(camera, area, {});
    engineManagers()->debugManager->renderDebug();
    drawMenus({});
    noPost_->blendMode = BlendMode::brighten;
    setParameter(noPost_, "fade", camera.fade);
    drawPass("nopost", noPost_, {});
    erase(camera.fade, {});
    drawBothPasses(camera.overlay, false); // over what the fade has left
    setViewport(area, 1, 1);
    renderer().beginScene(camera.view);
    renderer().applyCamera(camera.view);
}

void PostChain::drawProcessed(GameCamera& camera, const Area& area, int superSample) {
    const Used used =
        fitFramebuffer(renderSize({renderer().windowWidth, renderer().windowHeight}, superSample));
    renderer().bindRenderTarget(framebuffer_, true);
    drawScene(camera, area, used);
    drawMenus(used);
    erase(camera.fade, used);
    setViewport(area, used.u, used.v);
    renderer().beginScene(camera.view);
    renderer().applyCamera(camera.view);
    engineManagers()->debugManager->renderDebug();

    setParameter(blur1_, "uvx", used.u);
    setParameter(blur1_, "uvy", used.v);
    setParameter(blur1_, "fade", camera.fade);
    MaterialManager::setShaderParam4(*blur1_, "offset", camera.view.position.x / paperWidth,
                                     camera.view.position.y / paperHeight, 0, 0);
    renderer().bindRenderTarget(blurBuffer1_, true);
    drawPass("blur1", blur1_, {});
    renderer().bindRenderTarget(blurBuffer2_, true);
    drawPass("blur2", blur2_, {});

    setParameter(post_, "uvx", used.u);
    setParameter(post_, "uvy", used.v);
    renderer().bindRenderTarget(0, true);
    drawPass("post", post_, {});
    renderer().clearDepth();
    setViewport(area, 1, 1);
    renderer().beginScene(camera.view);
    renderer().applyCamera(camera.view);
}
