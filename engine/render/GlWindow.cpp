// The window and its context: creation, the switch of the display mode, messages.
#include "core/EngineManagers.h"
#include "core/Log.h"
#include "input/ControllerManager.h"
#include "render/GlApi.h"
#include "render/GlRenderer.h"
#include "render/MaterialManager.h"

#include <algorithm>

namespace Zelkor {

using platform::MessageIcon;

namespace {

constexpr const char* windowTitle = "Rustpike";
constexpr int windowBits = 32;

} // namespace

GlCapabilities probeContext() {
    const GLenum result = glewInit();
    // A context without an X display, such as an off-screen one: what the program uses has been found by
    // then.
    const bool found = result == GLEW_OK || (result == GLEW_ERROR_NO_GLX_DISPLAY && glActiveTexture);
    if (!found) return {};
    return {true, glewIsSupported("GL_VERSION_2_0") == GL_TRUE,
            glewIsSupported("GL_EXT_framebuffer_object") == GL_TRUE};
}

bool GlRenderer::init(const std::string&, int width, int height, int bits, bool wantFullscreen) {
    platform::Platform& system = *platform::current();
    clearColour = {1, 1, 1, 0};
    targets_.screen().width = width;
    targets_.screen().height = height;
    targets_.screen().created = true;
    logLine("init renderer: ");
    fullscreen = wantFullscreen;
    if (!system.registerWindowClass()) {
        system.showMessage("Failed To Register The Window Class.", "ERROR", MessageIcon::exclamation);
        return false;
    }
    if (fullscreen) {
        system.showCursor(false);
        if (!enterFullscreen(width, height, bits)) return false;
    }
    if (!createWindow(width, height)) {
        if (fullscreen) system.restoreDisplayMode();
        return false;
    }
    window_->bringToFront();
    resize(width, height);
    if (!askAboutMissingFeatures()) return false;
    setInitialState(width, height);
    logLine("init renderer done: ");
    return true;
}

bool GlRenderer::enterFullscreen(int width, int height, int bits) {
    platform::Platform& system = *platform::current();
    savedMode_ = {width, height, bits};
    if (system.switchDisplayMode(savedMode_)) return true;
    if (!system.askYesNo(
            "The Requested Fullscreen Mode Is Not Supported By\nYour Video Card. Use Windowed Mode "
            "Instead?",
            "Rustpike", MessageIcon::exclamation)) {
        system.showMessage("Program Will Now Close.", "ERROR", MessageIcon::stop);
        return false;
    }
    fullscreen = false;
    return true;
}

bool GlRenderer::createWindow(int width, int height) {
    logLine("createglwindow: ");
    window_ = platform::current()->createWindow({windowTitle, width, height, windowBits, fullscreen});
    return window_ != nullptr;
}

bool GlRenderer::askAboutMissingFeatures() {
    const GlCapabilities found = probe_();
    if (!found.entryPoints) return true;
    shadersSupported = found.shaders;
    platform::Platform& system = *platform::current();
    if (!shadersSupported) {
        if (!system.askYesNo("Shaders not supported. Continue anyway? (Game will look weird)", "ERROR",
                             MessageIcon::exclamation))
            return false;
        framebuffersSupported = false;
    } else if (!found.framebuffers) {
        framebuffersSupported = false;
        return system.askYesNo("FrameBuffer objects not supported.  Continue anyway?", "ERROR",
                               MessageIcon::exclamation);
    }
    return true;
}

void GlRenderer::setInitialState(int width, int height) {
    glShadeModel(GL_SMOOTH);
    glClearColor(0, 0, 0, 0.5f);
    glClearDepth(1);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST);
    glEnable(GL_CULL_FACE);
    glCullFace(GL_BACK);
    glEnable(GL_TEXTURE_2D);
    texturedUnits_ = 1;
    window_->setSwapInterval(1);
    aspect = static_cast<float>(width) / static_cast<float>(std::max(height, 1));
    if (canUseFramebuffers()) glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
    currentTarget_ = 0;
    // The first frame starts as empty as the later ones, which present clears.
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

void GlRenderer::resize(int width, int height) {
    height = height == 0 ? 1 : height;
    windowWidth = width;
    windowHeight = height;
    aspect = static_cast<float>(width) / static_cast<float>(height);
    glViewport(0, 0, width, height);
    resetProjectionForWindow();
    targets_.screen().width = width;
    targets_.screen().height = height;
}

void GlRenderer::resetProjectionForWindow() {
    selectProjection();
    glLoadIdentity();
    gluPerspective(45, aspect, 1, 1000);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

void GlRenderer::setDisplayMode(bool wantFullscreen, int width, int height) {
    if (!fullscreen && !wantFullscreen) {
        if (window_) window_->resize(width, height);
        return;
    }
    platform::Platform& system = *platform::current();
    if (fullscreen != wantFullscreen) system.showCursor(!wantFullscreen);
    releaseContextResources();
    if (!wantFullscreen) system.restoreDisplayMode();
    destroyWindow();
    fullscreen = wantFullscreen;
    if (fullscreen && !enterFullscreen(width, height, windowBits)) {
        // As the player was told.
        system.postQuit(0);
        return;
    }
    if (!createWindow(width, height)) return;
    resize(width, height);
    if (const GlCapabilities found = probe_(); found.entryPoints) shadersSupported = found.shaders;
    setInitialState(width, height);
    window_->bringToFront();
    active = true;
    setFocus(true);
}

// Everything is made again at its next use.
void GlRenderer::releaseContextResources() {
    textures_.release();
    targets_.release(textures_);
    if (shadersSupported) shaders_.release();
    boundShader_ = -1;
    currentProgram = 0;
    projectionPushed_ = false;
    engineManagers()->materialManager->forgetUniformLocations();
}

void GlRenderer::destroyWindow() {
    if (!window_) return;
    const platform::WindowTeardown done = window_->destroy();
    window_.reset();
    const auto report = [](bool good, const char* text) {
        if (!good) platform::current()->showMessage(text, "SHUTDOWN ERROR", MessageIcon::information);
    };
    report(done.contextReleased, "Release Of DC And RC Failed.");
    report(done.contextDeleted, "Release Rendering Context Failed.");
    report(done.deviceReleased, "Release Device Context Failed.");
    report(done.windowDestroyed, "Could Not Release hWnd.");
}

void GlRenderer::activate(bool front) {
    platform::Platform& system = *platform::current();
    if (front) {
        if (fullscreen) {
            system.showCursor(false);
            system.switchDisplayMode(savedMode_);
            if (window_) window_->maximise();
            resize(savedMode_.width, savedMode_.height);
        }
        active = true;
    } else if (fullscreen) {
        // A windowed program keeps running behind the others.
        system.restoreDisplayMode();
        system.showCursor(true);
        if (window_) window_->minimise();
        active = false;
    }
    setFocus(front);
    // What is let go while another window listens would stay down.
    if (!front) engineManagers()->controllerManager->clearAll();
}

bool GlRenderer::handleMessage(const platform::Message& message) {
    using platform::MessageKind;
    switch (message.kind) {
    case MessageKind::activateApp:
        activate(message.down);
        return true;
    case MessageKind::close:
        platform::current()->postQuit(0);
        return true;
    case MessageKind::resize:
        resize(message.width, message.height);
        return true;
    case MessageKind::key:
    case MessageKind::mouseButton:
    case MessageKind::wheel:
        return engineManagers()->controllerManager->handleMessage(message);
    case MessageKind::quit:
    case MessageKind::toggleFullscreen: // the program's, which knows the settings
        return false;
    }
    return false;
}

} // namespace Zelkor
