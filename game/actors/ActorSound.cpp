#include "actors/ActorSound.h"

#include "audio/AudioManager.h"
#include "core/EngineManagers.h"

void playSoundAt(const char* name, const Zelkor::Vec3& position, float volume) {
    if (const Zelkor::EngineManagers* managers = Zelkor::engineManagers())
        managers->audioManager->playSoundAt(name, position, volume);
}
