#include "core/EngineManagers.h"

#include "audio/AudioManager.h"
#include "core/DebugManager.h"
#include "core/Log.h"
#include "core/TimerManager.h"
#include "fx/ParticleManager.h"
#include "gui/OverlayManager.h"
#include "input/ControllerManager.h"
#include "render/GlRenderer.h"
#include "render/MaterialManager.h"
#include "resources/UnitManager.h"

namespace Zelkor {

namespace {
EngineManagers* currentManagers = nullptr;
}

EngineManagers* engineManagers() {
    return currentManagers;
}

EngineManagers::EngineManagers() {
    logLine("init managers");
    currentManagers = this;
    logLine("init unitmanager");
    unitManager = std::make_unique<UnitManager>();
    logLine("init renderermanager");
    renderer = std::make_unique<GlRenderer>();
    logLine("init materialmanager");
    materialManager = std::make_unique<MaterialManager>();
    logLine("init overlaymanager");
    overlayManager = std::make_unique<OverlayManager>();
    logLine("init controllermanager");
    controllerManager = std::make_unique<ControllerManager>();
    logLine("init debugmanager");
    debugManager = std::make_unique<DebugManager>();
    logLine("init timermanager");
    timerManager = &TimerManager::instance();
    logLine("init particlemanager");
    particleManager = std::make_unique<ParticleManager>();
    audioManager = std::make_unique<AudioManager>();
    logLine("init managers done");
}

EngineManagers::~EngineManagers() {
    audioManager.reset();
    particleManager.reset();
    debugManager.reset();
    controllerManager.reset();
    overlayManager.reset();
    materialManager.reset();
    renderer.reset();
    unitManager.reset();
    currentManagers = nullptr;
}

} // namespace Zelkor
