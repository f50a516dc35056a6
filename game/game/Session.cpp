#include "game/Session.h"

#include "actors/ThingyManager.h"
#include "core/EngineManagers.h"
#include "core/Log.h"
#include "frontend/MenuManager.h"
#include "fx/ParticleManager.h"
#include "game/Game.h"
#include "game/GameCamera.h"
#include "render/MaterialManager.h"
#include "render/Renderer.h"
#include "world/EventList.h"
#include "world/TileGrid.h"

#include <cstdio>

using namespace Zelkor;

namespace {

constexpr float lockReleased = -1000; // lock rate
// To the upper left, in front of the play plane: as good as parallel light, but a place, from which fixed
// things measure where their strokes lie.
constexpr Vec3 sunPosition{-9600, 12000, 12800};

// None in a session that only steps.
ParticleManager* effects() {
    return engineManagers() ? engineManagers()->particleManager.get() : nullptr;
}

// Also one behind which the stage goes on.
bool menuOpen() {
    const Game* game = Game::current();
    return game && game->menuManager && !game->menuManager->empty();
}

} // namespace

std::string stageFileName(int stage) {
    char name[32];
    std::snprintf(name, sizeof name, "level%03d", stage);
    return name;
}

Session::Session(ThingyManager& manager) : thingyManager(manager) {}

Session::~Session() {
    thingyManager.clear();
    thingyManager.setScene(nullptr);
    if (effects()) {
        effects()->clear(); // after the actors, which let go of theirs
        effects()->setTiles(nullptr);
    }
    tileGrid.reset();
    camera.reset();
    eventList.reset();
}

void Session::start(int number) {
    stage = number;
    start(number, stageFileName(number));
}

void Session::start(int number, const std::string& fileName) {
    logLine("init session");
    stage = number;
    fileName_ = fileName;
    gravityFactor = 1;
    time = 0;
    thingyManager.setScene(&scene);
    tileGrid = std::make_unique<TileGrid>(scene, levelUnits);
    tileGrid->loadTileSets();
    scene.showsEffects = true;
    if (effects()) effects()->setTiles(tileGrid.get());
    camera = std::make_unique<GameCamera>(scene);
    eventList = std::make_unique<EventList>(*this);
    logLine("load level");
    tileGrid->loadLevel(fileName_, true);
    setUpView();
    logLine("loadevents");
    eventList->loadEvents(fileName_);
    logLine("init session done");
}

void Session::setUpView() {
    Renderer& renderer = *engineManagers()->renderer;
    if (renderer.aspect > 0) camera->view.aspect = renderer.aspect;
    camera->followEnabled = true;
    camera->colourMaterial = engineManagers()->materialManager->findMaterial("post");
    camera->snap = true; // the first picture already has the hero in it
    Light sun;
    sun.type = Light::point;
    sun.position = sunPosition;
    scene.lights.push_back(sun);
    camera->view.backgroundShader = renderer.loadShader("paper");
    // The grain is no picture of paper by itself: without its program the sheet stays blank.
    if (camera->view.backgroundShader >= 0) camera->view.backgroundTexture = renderer.getTexture("paper");
}

void Session::update(float dt) {
    if (!menuOpen()) time += dt;
    thingyManager.update();
    camera->update();          // after the hero it follows
    eventList->updateEvents(); // spawns by what the camera now shows
    // The level's units come here and need nothing: they stand where they were placed, and what is animated
    // among them goes on when it is seen.
    if (restartRequested) restart(); // last: nothing above must find its stage gone
}

void Session::restart() {
    camera->snap = true;
    camera->panActive = false;
    camera->setLock({}, lockReleased);
    tileGrid->loadLevel(fileName_, true);
    eventList->resetEvents();
    thingyManager.clear();
    if (effects()) effects()->clear();
    eventList->startEvents();
    time = 0;
    restartRequested = false;
}
