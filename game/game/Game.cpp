#include "game/Game.h"

#include "actors/ThingyManager.h"
#include "audio/AudioManager.h"
#include "core/DebugManager.h"
#include "core/EngineManagers.h"
#include "core/Log.h"
#include "core/Random.h"
#include "core/TimerManager.h"
#include "frontend/LevelStartMenu.h"
#include "frontend/MenuManager.h"
#include "fx/ParticleManager.h"
#include "game/GameCamera.h"
#include "game/Session.h"
#include "game/Settings.h"
#include "gui/GuiWorkspace.h"
#include "gui/OverlayManager.h"
#include "input/ControllerManager.h"
#include "render/GpuPasses.h"
#include "render/MaterialManager.h"
#include "render/Renderer.h"
#include "resources/UnitManager.h"
#include "world/EventList.h"
#include "world/TileGrid.h"

#include <algorithm>
#include <utility>

using namespace Zelkor;

namespace {

Game* currentGame = nullptr;

constexpr float flickerPeriod = 0.09f; // seconds
constexpr float musicGain = 0.3f;      // music stays below the effects
// The programs that draw with sketch strokes.
constexpr const char* sketchShaders[] = {"sketchshader",       "sketchalphashader", "sketchstatic",
                                         "sketchshaderflat",   "sketchparticle",    "sketchcolor",
                                         "sketchshaderflatbg", "mapshader",         "ladder",
                                         "sketchshaderbg",     "sketchcollight"};
// More of them, which share the last place drawn: recorded runs depend on how many numbers are.
constexpr const char* sketchFollowers[] = {"post", "sketchrail", "sketchrailline", "blood", "wind"};

// Strokes start at a random place on a grid of 1/128 of their texture.
float randomStroke() {
    return static_cast<float>(randomInt() % 128) * 0.0078125f;
}

// Without any of them, the picture is drawn without its chain of passes.
constexpr const char* chainShaders[] = {"post", "blur1", "blur2"};
constexpr const char* sharedMaterials[] = {"robot",   "ts1",    "train",  "props",
                                           "bandits", "tiles1", "tiles6", "cave",
                                           "frontend"};
constexpr const char* sharedMeshes[] = {
    "bullet", "bomb1",  "bombfish", "pickups/cake1", "pickups/cake2", "tiles/tiles6/bridge_plank",
    "blood1", "blood2", "blood3",   "tiles/box",     "dynamite"};
constexpr const char* sharedSprites[] = {"bullet", "sprites/homingbullet", "fireball",
                                         "sprites/elecbeam", "sprites/gravityfield"};
constexpr const char* sharedEffects[] = {
    "turret_flash",   "bullet_hit",   "bomb1_explosion",   "animal_death", "bandit_death",  "boss1_shells",
    "main_gun_flash", "medusa_smoke", "robot1_wheel_dust", "rocket",       "trainbombflame"};
constexpr const char* sharedSounds[] = {
    "boss1firedown", "boss1fireup",   "boss1land", "boss2fire",  "boss2punch", "boss2punchload",
    "boss3grapple",  "boss3linkclaw", "boss3rope", "boss3punch", "bullethit",  "cartjump",
    "cartland",      "dropballoon",   "duck",      "elecbeam",   "explosion1", "firebomb",
    "fullballoon",   "hit",           "horse",     "land1",      "laser",      "pickup",
    "playerdie",     "playerhurt",    "shot1"};

} // namespace

Game::Game(std::optional<std::filesystem::path> settingsFolder)
    : settings(std::make_unique<Settings>(std::move(settingsFolder))) {
    engineManagers()->renderer->reloadShaders("post");
    engineManagers()->materialManager->loadFonts("sample.fnt");
    TimerManager& timers = TimerManager::instance();
    timers.addTimer("game");
    timers.addTimer("paused").paused = 1;
    timers.addTimer("boss");
    timers.addTimer("player");
    currentGame = this;
    playerDisplay = std::make_unique<GuiScreenWorkspace>(true);
    menuManager = std::make_unique<MenuManager>(*playerDisplay);
    thingyManager = std::make_unique<ThingyManager>();
    engineManagers()->audioManager->setMusicGain(musicGain);
    settings->load();
    currentStage = std::clamp(settings->unlockedStage, 0, stageCount - 1);
    menuManager->openMenu(MenuKind::startLoad);
}

Game::~Game() {
    settings->save(); // before anything it asks is gone
    settings.reset();
    menuManager->closeMenus(nullptr, true);
    session.reset();
    menuManager.reset(); // after the session, whose hero asks it
    thingyManager.reset();
    if (currentGame == this) currentGame = nullptr;
}

Game& Game::get() {
    static std::unique_ptr<Game> ownGame;
    if (!currentGame) ownGame = std::make_unique<Game>();
    return *currentGame;
}

Game* Game::current() {
    return currentGame;
}

TileGrid* Game::tileGrid() const {
    return session ? session->tileGrid.get() : nullptr;
}
GameCamera* Game::camera() const {
    return session ? session->camera.get() : nullptr;
}
EventList* Game::eventList() const {
    return session ? session->eventList.get() : nullptr;
}

void Game::loadSharedAssets() {
    EngineManagers& engine = *engineManagers();
    for (const char* material : sharedMaterials)
        engine.materialManager->loadMaterialFile(material);
    bool chainWorks = true;
    for (const char* shader : chainShaders)
        if (engine.renderer->loadShader(shader) < 0) chainWorks = false;
    if (!chainWorks) settings->setOption(Settings::optionPostProcessing, 0);
    for (const char* mesh : sharedMeshes)
        engine.unitManager->preloadMaterials(mesh);
    for (const char* effect : sharedEffects)
        engine.particleManager->preload(effect);
    for (const char* sprite : sharedSprites)
        engine.particleManager->sprites().registerList(sprite);
    logLine("load Sounds");
    for (const char* sound : sharedSounds)
        engine.audioManager->soundIndex(sound);
    logLine("load Sounds done");
}

void Game::preloadAssets() {
    loadSharedAssets();
    startSession();
    menuManager->openMenu(MenuKind::title);
}

void Game::startWithoutMenus() {
    menuManager->closeMenus(nullptr, true);
    loadSharedAssets();
    startSession();
}

void Game::startSession() {
    session.reset(); // before the new one: both use the same actor manager
    session = std::make_unique<Session>(*thingyManager);
    session->start(currentStage, stageFile.empty() ? stageFileName(currentStage) : stageFile);
    postChain.setUp();
}

void Game::goToStage(int stage) {
    stage = std::clamp(stage, 0, stageCount - 1);
    if (stage == currentStage && stage != 0 && stageFile.empty()) {
        if (!musicName.empty()) engineManagers()->audioManager->playMusic(musicName);
        menuManager->closeMenus(nullptr, false);
        return;
    }
    menuManager->openMenu(MenuKind::levelStart, LevelStartMenu::newSession);
    currentStage = stage;
    stageFile.clear();
}

void Game::restartTransition() {
    menuManager->openMenu(MenuKind::levelStart, LevelStartMenu::newSessionTitle);
}

// The order of a frame. Everything moves before anything is drawn; the input's previous states are taken
// last, so that a key's edge is seen by every substep.
void Game::runFrame() {
    EngineManagers& engine = *engineManagers();
    engine.timerManager->beginFrame();
    runSubsteps();
    if (session) {
        render();
        engine.debugManager->renderDebug();
        engine.debugManager->endFrame();
    }
    engine.renderer->clearDepth(); // the GUI covers the scene
    renderGui();
    engine.debugManager->endSection(); // "Frame", which endFrame opened
    engine.renderer->present();
    engine.controllerManager->endOfFrame();
    flickerSketch();
}

void Game::runSubsteps() {
    EngineManagers& engine = *engineManagers();
    const ProfileSection section(ProfileId::update);
    while (engine.timerManager->substepsLeft > 0) {
        engine.timerManager->stepTimers();
        engine.audioManager->updateAudio(engine.timerManager->findTimer("main")->delta);
        engine.controllerManager->update();
        ++engine.renderer->updateCount;
        gameStep();
        engine.particleManager->update(); // also while menus hold the game: its effects are bound to "main"
    }
}

void Game::gameStep() {
    TimerManager& timers = TimerManager::instance();
    const GameTimer& main = *timers.findTimer("main");
    const PlayerInput& input = engineManagers()->controllerManager->firstPlayer();
    const bool wantsPause =
        pauseWanted_ || input.pressed(PlayerInput::startMask) || input.pressed(PlayerInput::backMask);
    if (wantsPause && menuManager->empty() && timers.findTimer("game")->paused == 0)
        menuManager->openMenu(MenuKind::pause);
    if (!menuManager->empty()) pauseWanted_ = false;
    const bool held = menuManager->updateMenus(main.total, main.delta);
    if (!held && session) session->update(timers.findTimer("game")->delta); // which a menu may just have paused
}

void Game::render() {
    ++engineManagers()->unitManager->frameNumber; // every unit that is seen is animated once
    postChain.draw(*session->camera, *settings);
}

void Game::renderGui() {
    const ProfileSection section(ProfileId::renderGui);
    const GpuPass pass("gui");
    OverlayManager& overlays = *engineManagers()->overlayManager;
    overlays.update(TimerManager::instance().frameSeconds);
    overlays.draw();
}

void Game::flickerSketch() {
    flickerTimer_ += TimerManager::instance().frameSeconds;
    if (!(flickerTimer_ > flickerPeriod)) return;
    flickerTimer_ = 0;
    if (settings->flicker == 0) return;
    EngineManagers& engine = *engineManagers();
    float x = 0, y = 0;
    for (const char* name : sketchShaders) {
        const int shader = engine.renderer->loadShader(name);
        y = randomStroke();
        x = randomStroke(); // drawn after y: recorded runs depend on the order
        engine.materialManager->setSketchOffset(shader, x, y, 0, 0);
    }
    // "post", the picture's last pass, lets lines wander on the same tick.
    for (const char* name : sketchFollowers)
        engine.materialManager->setSketchOffset(engine.renderer->loadShader(name), x, y, 0, 0);
}
