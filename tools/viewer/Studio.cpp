#include "Studio.h"

#include "core/EngineManagers.h"
#include "io/DataFiles.h"
#include "render/GlRenderer.h"
#include "render/MaterialManager.h"
#include "render/SceneDrawing.h"

#include <cstdio>

using namespace Zelkor;

namespace viewer {

namespace {

constexpr Vec4 paper{0.955f, 0.935f, 0.885f, 0};
constexpr Vec3 sunPlace{-4000, 6500, 5000};
constexpr float gameDistance = 180; // of the game's camera from the plane of play
constexpr float gameFieldOfView = 30;
constexpr float gameNear = 20, gameFar = 740; // so that depth is as fine here as there

} // namespace

Studio::Studio() = default;
Studio::~Studio() {
    scene.clear(); // its units give their materials back
}

bool Studio::open(const std::string& dataFolder, int width, int height) {
    setDataFolder(dataFolder);
    managers_ = std::make_unique<EngineManagers>();
    if (!renderer().init("rustpike-viewer", width, height, 32, false)) {
        std::fputs("rustpike-viewer: there is no window to draw in\n", stderr);
        return false;
    }
    renderer().clearColour = paper;
    for (const char* file : {"robot", "ts1", "train", "props", "bandits", "tiles1", "tiles6", "cave", "frontend"})
        managers_->materialManager->loadMaterialFile(file);

    Light sun;
    sun.type = Light::point;
    sun.position = sunPlace;
    scene.lights.push_back(sun);
    camera_.fieldOfView = gameFieldOfView;
    camera_.aspect = static_cast<float>(width) / static_cast<float>(height);
    camera_.nearDistance = gameNear;
    camera_.farDistance = gameFar;
    camera_.scene = &scene;
    draw(); // the clear colour takes effect with the first scene
    return true;
}

GlRenderer& Studio::renderer() {
    return static_cast<GlRenderer&>(*managers_->renderer);
}

void Studio::aim(const Vec3& at, float zoom) {
    camera_.position = at + Vec3{0, 0, gameDistance / zoom};
    camera_.nearDistance = gameNear / zoom;
    camera_.farDistance = gameFar / zoom;
}

void Studio::draw() {
    renderer().setViewport(0, 0, 1, 1);
    renderScene(scene, camera_);
}

void Studio::redraw(int which) {
    const float offset = static_cast<float>(which % 4) * 0.25f;
    for (const char* name :
         {"sketchshader", "sketchstatic", "sketchshaderflat", "sketchshaderbg", "sketchshaderflatbg",
          "ladder", "sketchcolor", "sketchparticle", "sketchrail", "sketchrailline", "blood", "wind", "mapshader"})
        managers_->materialManager->setSketchOffset(renderer().loadShader(name), offset, offset, 0, 0);
}

void Studio::drawFlat() {
    renderer().shadersSupported = false;
}

} // namespace viewer
