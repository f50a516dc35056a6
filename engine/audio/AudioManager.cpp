#include "audio/AudioManager.h"

namespace Zelkor {

AudioManager::AudioManager() = default;
AudioManager::~AudioManager() = default;

void AudioManager::initAudio() {}

int AudioManager::soundIndex(const std::string&) {
    return -1;
}
int AudioManager::playIndex(int, float) {
    return -1;
}
int AudioManager::playSound(const std::string& name, float volume) {
    return playIndex(soundIndex(name), volume);
}
int AudioManager::playSoundAt(const std::string& name, const Vec3& position, float volume) {
    return playIndex(soundIndex(name), volume * distanceFactor(position));
}
float AudioManager::distanceFactor(const Vec3&) const {
    return 1;
}

void AudioManager::playMusic(const std::string& name) {
    musicName = name;
}
void AudioManager::updateAudio(float) {}

} // namespace Zelkor
