// The frame: views, transforms, lines, programs, textures and targets.
#include "render/GlRenderer.h"

#include "core/EngineManagers.h"
#include "core/ProfileSections.h"
#include "core/TimerManager.h"
#include "render/GlApi.h"
#include "render/MaterialManager.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace Zelkor {

namespace {

constexpr int minTargetSize = 8; // pixels

void rotate(const Quat& rotation) {
    float angle;
    Vec3 axis;
    quatToAxisAngle(rotation, angle, axis);
    glRotatef(angle * 180 / pi, axis.x, axis.y, axis.z);
}

void clearColourAndDepth() {
    // The depth buffer is cleared only where it may be written.
    glDepthMask(GL_TRUE);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

} // namespace

// --- Frame and view --------------------------------------------------------------------------------------

void GlRenderer::present() {
    if (window_) {
        if (captureFrame) capturedFrame = readFramebuffer();
        window_->swapBuffers();
    }
    clearColourAndDepth();
    guiBatches = std::exchange(guiBatchesInFrame_, 0);
}

// begin2D leaves the projection on its stack; nothing needs it back, but the stack must not grow.
void GlRenderer::selectProjection() {
    glMatrixMode(GL_PROJECTION);
    if (projectionPushed_) glPopMatrix();
    projectionPushed_ = false;
}

void GlRenderer::setViewport(float x, float y, float width, float height) {
    const auto targetWidth = static_cast<float>(currentTarget().width);
    const auto targetHeight = static_cast<float>(currentTarget().height);
    const int left = static_cast<int>(x * targetWidth), bottom = static_cast<int>(y * targetHeight);
    const int wide = static_cast<int>(width * targetWidth);
    const int high = std::max(static_cast<int>(height * targetHeight), 1);
    glViewport(left, bottom, wide, high);
    viewport_ = {static_cast<float>(left), static_cast<float>(bottom), static_cast<float>(wide),
                 static_cast<float>(high)};
    resetProjection();
}

void GlRenderer::resetProjection() {
    selectProjection();
    glLoadIdentity();
    modMatrix = {};
}

void GlRenderer::beginScene(const Camera& camera) {
    gluPerspective(camera.fieldOfView, camera.aspect, camera.nearDistance, camera.farDistance);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glEnable(GL_MULTISAMPLE);
    glClearColor(clearColour.x, clearColour.y, clearColour.z, clearColour.w);
    if (!camera.scene) return;

    const Scene& scene = *camera.scene;
    if (scene.fogMode == FogMode::none) {
        glDisable(GL_FOG);
        fogEnabled = false;
    } else if (scene.fogMode == FogMode::linear || scene.fogMode == FogMode::exponential) {
        const float colour[4] = {scene.fogColour.x, scene.fogColour.y, scene.fogColour.z, 1};
        glFogfv(GL_FOG_COLOR, colour);
        glHint(GL_FOG_HINT, GL_DONT_CARE);
        if (scene.fogMode == FogMode::linear) {
            glFogi(GL_FOG_MODE, GL_LINEAR);
            glFogf(GL_FOG_START, scene.fogStart);
            glFogf(GL_FOG_END, scene.fogEnd);
        } else {
            glFogi(GL_FOG_MODE, GL_EXP);
            glFogf(GL_FOG_DENSITY, scene.fogStart);
        }
        glEnable(GL_FOG);
        fogEnabled = true;
    }
}

void GlRenderer::pushTransform(const Vec3& position, const Quat& orientation, const Vec3& scale) {
    glTranslatef(position.x, position.y, position.z);
    rotate(orientation);
    glScalef(scale.x, scale.y, scale.z);
    Mat4 transform;
    mat4FromTransform(transform, orientation, scale, position);
    mat4Multiply(modMatrix, modMatrix, transform);
}

void GlRenderer::setViewTransform(const Vec3& position, const Quat& orientation, const Vec3& scale) {
    Mat4 transform;
    mat4InverseTransform(transform, scale, position, orientation);
    mat4Multiply(modMatrix, modMatrix, transform);
    glScalef(1 / scale.x, 1 / scale.y, 1 / scale.z);
    Quat inverse;
    rotate(quatInverse(inverse, orientation));
    glTranslatef(-position.x, -position.y, -position.z);
}

void GlRenderer::applyCamera(const Camera& camera) {
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    modMatrix = {};
    currentCamera = camera;
    cameraPosition_ = camera.position;
    cameraOrientation_ = camera.orientation;
    setViewTransform(camera.position, camera.orientation, {1, 1, 1});
}

void GlRenderer::begin2D() {
    selectProjection();
    glPushMatrix();
    projectionPushed_ = true;
    glLoadIdentity();
    glOrtho(0, 1, 0, 1, -1, 1000);
    glScalef(1, -1, 1);
    glTranslatef(0, -1, 0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glDisable(GL_LIGHTING);
}

void GlRenderer::clearDepth() {
    glDepthMask(GL_TRUE);
    glClear(GL_DEPTH_BUFFER_BIT);
}

void GlRenderer::beginLines() {
    glDisable(GL_ALPHA_TEST);
    glDisable(GL_BLEND);
    if (shadersSupported) useShader(-1);
    glDisable(GL_LIGHTING);
    disableTexturing();
}

void GlRenderer::endLines() {
    glEnable(GL_LIGHTING);
    glEnable(GL_TEXTURE_2D);
    texturedUnits_ = std::max(texturedUnits_, 1);
}

void GlRenderer::drawLine(const Vec3& from, const Vec3& to, const Vec3& colour) {
    const ColouredLine line{from, to, colour};
    drawLines(&line, 1);
}

void GlRenderer::drawLines(const ColouredLine* lines, int count) {
    beginLines();
    glBegin(GL_LINES);
    for (int i = 0; i < count; ++i) {
        glColor3f(lines[i].colour.x, lines[i].colour.y, lines[i].colour.z);
        glVertex3f(lines[i].from.x, lines[i].from.y, lines[i].from.z);
        glVertex3f(lines[i].to.x, lines[i].to.y, lines[i].to.z);
    }
    glEnd();
    endLines();
}

int GlRenderer::getMaxTextureSize() {
    GLint size = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &size);
    return size;
}

Image GlRenderer::readFramebuffer() {
    Image image{currentTarget().width, currentTarget().height, 3, {}};
    const std::size_t row = static_cast<std::size_t>(image.width) * 3;
    const auto height = static_cast<std::size_t>(image.height);
    std::vector<uint8_t> upwards(row * height);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, image.width, image.height, GL_RGB, GL_UNSIGNED_BYTE, upwards.data());
    image.pixels.resize(upwards.size());
    for (std::size_t y = 0; y < height; ++y)
        std::memcpy(&image.pixels[y * row], &upwards[(height - 1 - y) * row], row);
    return image;
}

// --- Shaders ---------------------------------------------------------------------------------------------

int GlRenderer::loadShader(const std::string& name) {
    if (!shadersSupported) return -1;
    const int index = shaders_.load(name);
    shaderCompileFailed |= std::exchange(shaders_.compileFailed, false);
    return index;
}

void GlRenderer::reloadShaders(const std::string& prefix) {
    shaders_.searchPrefix = prefix;
    if (shadersSupported) {
        useShader(-1);
        shaders_.release();
    }
    engineManagers()->materialManager->forgetUniformLocations();
}

void GlRenderer::useShader(int index) {
    if (!shadersSupported) return;
    const ShaderProgram* program = shaders_.select(index, shadowCasterCount_);
    shaderCompileFailed |= std::exchange(shaders_.compileFailed, false);
    boundShader_ = program ? index : -1;
    currentProgram = program ? program->program : 0;
    glUseProgram(currentProgram);
    if (currentProgram == 0) return;
    const auto upload = [program](int which, auto set) {
        if (const int location = program->location(which); location >= 0) set(location);
    };
    upload(uniform::time, [](int location) {
        const GameTimer* timer = engineManagers()->timerManager->findTimer("main");
        glUniform1f(location, timer ? static_cast<float>(timer->total) : 0);
    });
    upload(uniform::resScale, [this](int location) {
        glUniform4f(location, 1.75f, -1.3f, 3.5f / viewport_.width, -(2.6f / viewport_.height));
    });
    upload(uniform::alphaCol, [](int location) {
        glUniform4f(location, pencilTint.x, pencilTint.y, pencilTint.z, pencilTint.w);
    });
}

const ShaderProgram* GlRenderer::boundProgram() const {
    return currentProgram != 0 && boundShader_ >= 0 ? &shaders_[boundShader_] : nullptr;
}

int GlRenderer::getUniformLoc(const std::string& name) {
    ProfileSection section(ProfileId::getUniformLocation);
    return currentProgram != 0 ? glGetUniformLocation(currentProgram, name.c_str()) : -1;
}

// --- Textures and targets --------------------------------------------------------------------------------

int GlRenderer::loadTexture(const std::string& name, TextureKind kind, int slot) {
    return textures_.load(name, kind, slot);
}

int GlRenderer::getTexture(const std::string& name, TextureKind kind) {
    return textures_.get(name, kind);
}

int GlRenderer::createTexture(const std::string& name, int format, int width, int height) {
    return textures_.createEmpty(name, format, width, height);
}

void GlRenderer::getTextureSize(int texture, int& width, int& height) {
    if (texture == 0 || !textures_.contains(texture)) return;
    width = textures_[texture].width;
    height = textures_[texture].height;
}

void GlRenderer::bindTexture(int index) {
    if (!textures_.contains(index)) return;
    if (!textures_[index].loaded) {
        const int target = textures_[index].renderTarget;
        if (target < 0)
            textures_.restore(index);
        else if (canUseFramebuffers())
            targets_.create(target, textures_);
    }
    const Texture& texture = textures_[index];
    glBindTexture(texture.kind == TextureKind::cubeMap ? GL_TEXTURE_CUBE_MAP : GL_TEXTURE_2D, texture.glName);
}

void GlRenderer::disableTexturing() {
    for (int unit = texturedUnits_ - 1; unit >= 0; --unit) {
        selectTextureUnit(unit);
        glDisable(GL_TEXTURE_2D);
        glDisable(GL_TEXTURE_CUBE_MAP);
    }
    texturedUnits_ = 0;
}

void GlRenderer::copyTexture(int index, const Vec2& position, bool depth, bool clear) {
    if (!textures_.contains(index)) return;
    ProfileSection section(ProfileId::copyTexture);
    glDepthMask(GL_TRUE);
    bindTexture(index);
    const Texture& texture = textures_[index];
    if (depth) {
        glCopyTexImage2D(GL_TEXTURE_2D, 0, GL_DEPTH_COMPONENT, 0, 0, texture.width, texture.height, 0);
        glViewport(static_cast<int>(viewport_.x), static_cast<int>(viewport_.y),
                   static_cast<int>(viewport_.width), static_cast<int>(viewport_.height));
        return;
    }
    glCopyTexImage2D(GL_TEXTURE_2D, 0, GL_RGB, static_cast<int>(position.x * static_cast<float>(windowWidth)),
                     static_cast<int>(position.y * static_cast<float>(windowHeight)), texture.width,
                     texture.height, 0);
    if (clear) clearColourAndDepth();
}

bool GlRenderer::canUseFramebuffers() const {
    return framebuffersSupported && glGenFramebuffersEXT && glBindFramebufferEXT;
}

int GlRenderer::createRenderTarget(const std::string& name, int width, int height) {
    return canUseFramebuffers() ? targets_.add(name, width, height, textures_) : 0;
}

void GlRenderer::bindRenderTarget(int index, bool clear) {
    if (!canUseFramebuffers() || !targets_.contains(index)) return;
    currentTarget_ = index;
    targets_.create(index, textures_);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, targets_[index].framebuffer);
    if (clear) {
        glClearColor(1, 1, 1, 0);
        clearColourAndDepth();
    }
    if (index == 0)
        glEnable(GL_MULTISAMPLE);
    else
        glDisable(GL_MULTISAMPLE);
}

void GlRenderer::resizeRenderTarget(int index, int width, int height) {
    if (!canUseFramebuffers() || index <= 0 || !targets_.contains(index)) return;
    RenderTarget& target = targets_[index];
    targets_.destroy(target, textures_);
    const int largest = std::max(getMaxTextureSize(), minTargetSize);
    target.width = std::clamp(width, minTargetSize, largest);
    target.height = std::clamp(height, minTargetSize, largest);
    targets_.create(index, textures_);
}

void GlRenderer::renderPostEffect(const PostEffectParameters& effect) {
    if (!shadersSupported || !effect.material) return;
    ProfileSection section(ProfileId::renderPostEffect);
    setViewport(effect.x, effect.y, effect.width, effect.height);
    begin2D();
    engineManagers()->materialManager->applyMaterial(*effect.material);
    // A pass whose program no longer builds must not paint the picture over with a blank sheet.
    if (effect.material->shader >= 0 && currentProgram == 0) return;
    glDepthMask(GL_FALSE);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    // The picture in a target has its first row at the bottom.
    static constexpr float corners[4][4] = {{0, 0, 0, 1}, {0, 1, 0, 0}, {1, 1, 1, 0}, {1, 0, 1, 1}};
    glColor4f(1, 1, 1, 1);
    glBegin(GL_QUADS);
    for (const auto& corner : corners) {
        glTexCoord2f(corner[2], corner[3]);
        glVertex3f(corner[0], corner[1], -500);
    }
    glEnd();
    glDepthMask(GL_TRUE);
    glEnable(GL_DEPTH_TEST);
}

} // namespace Zelkor
