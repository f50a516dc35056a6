// The engine's services, created once, in a fixed order, and reached as fields of one record.
#pragma once

#include <memory>

namespace Zelkor {

class AudioManager;
class ControllerManager;
class DebugManager;
class MaterialManager;
class OverlayManager;
class ParticleManager;
class Renderer;
class TimerManager;
class UnitManager;

// Fields of managers not yet created are null. The renderer is created without window and context; its init,
// and the startUp and start operations of others, belong to the program's start.
struct EngineManagers {
    // Becomes engineManagers() before the first manager is created.
    EngineManagers();
    // Destroys in reverse order of creation. The timers stay: they have their own owner.
    ~EngineManagers();
    EngineManagers(const EngineManagers&) = delete;

    std::unique_ptr<UnitManager> unitManager;
    std::unique_ptr<MaterialManager> materialManager;
    std::unique_ptr<Renderer> renderer;
    std::unique_ptr<ControllerManager> controllerManager;
    TimerManager* timerManager = nullptr; // TimerManager::instance()
    std::unique_ptr<DebugManager> debugManager;
    std::unique_ptr<OverlayManager> overlayManager;
    std::unique_ptr<ParticleManager> particleManager;
    std::unique_ptr<AudioManager> audioManager;
};

// The record of the process, null while there is none.
EngineManagers* engineManagers();

} // namespace Zelkor
