#include "audio/AudioManager.h"

#include "Platform.h"
#include "audio/Attenuation.h"
#include "audio/OggPlayer.h"
#include "audio/WavFile.h"
#include "io/DataFiles.h"
#include "resources/Scene.h"

#include <cstdio>
#include <cstring>

namespace Zelkor {

namespace {

const std::string soundFolder = "sound/";

constexpr float effectsLevel = 0.3f; // of full level, so that many together are not cut off

// On the screen: full within a circle, in half screen heights or widths, then fading over two thirds of one.
constexpr float screenReach = 0.9f, screenFalloff = 1.5f;
// In the world, in units.
constexpr float worldReach = 0.8f, worldFalloff = 2;

constexpr float trackFade = 1, silenceFade = 0.1f; // seconds

} // namespace

AudioManager::AudioManager() = default;
AudioManager::~AudioManager() = default;

void AudioManager::initAudio(platform::Window* window) {
    if (platform::Platform* system = platform::current()) device_ = system->createSoundDevice(window);
    if (!device_ || !device_->setMixFormat(platform::SoundFormat{})) return;
    player_ = std::make_unique<OggPlayer>(*device_);
}

// --- Effects -----------------------------------------------------------------------------------------------

int AudioManager::soundIndex(const std::string& name) {
    for (std::size_t i = 0; i < sounds_.size(); ++i)
        if (sounds_[i].name == name) return static_cast<int>(i);
    SoundEntry entry;
    entry.name = name;
    loadWav(entry, soundFolder + name + ".wav");
    for (int variant = 2; variant <= SoundEntry::maxVariants; ++variant) {
        const std::string file = soundFolder + name + "_" + std::to_string(variant) + ".wav";
        if (dataFileExists(file)) loadWav(entry, file);
    }
    sounds_.push_back(std::move(entry));
    return static_cast<int>(sounds_.size()) - 1;
}

void AudioManager::loadWav(SoundEntry& entry, const std::string& file) {
    if (!device_ || entry.variantCount >= SoundEntry::maxVariants) return;
    WavError error = WavError::unreadable;
    const auto bytes = readDataFile(file);
    const auto sound = bytes ? readWav(*bytes, error) : std::nullopt;
    if (!sound) {
        const auto code = static_cast<unsigned>(error);
        if (isOpeningError(error))
            std::printf("Failed reading WAV file: %#X (%s)\n", code, ("data/" + file).c_str());
        else
            std::printf("Failed to read WAV data: %#X\n", code);
        return;
    }
    auto buffer = device_->createBuffer(sound->format, sound->data.size());
    platform::LockedSound part;
    if (!buffer || !buffer->lock(0, sound->data.size(), part)) return;
    std::memcpy(part.first, sound->data.data(), part.firstBytes);
    if (!buffer->unlock(part)) return;
    entry.variants[static_cast<std::size_t>(entry.variantCount++)] = static_cast<int>(buffers_.size());
    buffers_.push_back(std::move(buffer));
}

int AudioManager::playIndex(int index, float volume) {
    if (!device_ || index < 0 || index >= static_cast<int>(sounds_.size())) return -1;
    const SoundEntry& entry = sounds_[static_cast<std::size_t>(index)];
    if (entry.variantCount == 0) return -1;
    // Not from the game's own random numbers: what happens must not depend on what can be heard. Park and
    // Miller's generator ("Random number generators: good ones are hard to find", 1988, revised 1993).
    variantChoice_ = static_cast<std::uint32_t>(std::uint64_t{variantChoice_} * 48271 % 0x7FFFFFFF);
    const auto variant = variantChoice_ % static_cast<std::uint32_t>(entry.variantCount);
    platform::SoundBuffer& buffer = *buffers_[static_cast<std::size_t>(entry.variants[variant])];
    buffer.setPosition(0);
    buffer.setVolume(attenuation(clamp(volume * effectsLevel * soundVolume, 0, 1)));
    return buffer.play(false) ? 1 : -1;
}

int AudioManager::playSound(const std::string& name, float volume) {
    return playIndex(soundIndex(name), volume);
}

int AudioManager::playSoundAt(const std::string& name, const Vec3& position, float volume) {
    return playIndex(soundIndex(name), volume * distanceFactor(position));
}

float AudioManager::distanceFactor(const Vec3& position) const {
    if (!listener) return 1;
    if (!screenSpaceListener)
        return 1 - clamp((distance(listener->position, position) - worldReach) * worldFalloff, 0, 1);
    const Vec3 screen = listener->project(position);
    const Vec3 fromCentre = {2 * screen.x - 1, 2 * screen.y - 1, 0};
    return 1 - clamp((length(fromCentre) - screenReach) * screenFalloff, 0, 1);
}

// --- Music -------------------------------------------------------------------------------------------------

void AudioManager::playMusic(const std::string& name) {
    if (name == musicName) return;
    fade = name.empty() ? silenceFade : trackFade;
    musicName = name;
}

void AudioManager::fadeOutMusic(float seconds) {
    fade = seconds;
    musicName.clear();
}

void AudioManager::setMusicVolume(float volume) {
    musicVolume = volume;
    if (player_ && player_->playing()) player_->setVolume(musicVolume * musicGain);
}

void AudioManager::setMusicGain(float gain) {
    musicGain = gain;
    if (player_ && player_->playing()) player_->setVolume(musicVolume * musicGain);
}

void AudioManager::updateAudio(float dt) {
    if (fade > 0) {
        fade = clamp(fade - dt, 0, 1);
        musicGain = fade;
        if (player_) player_->setVolume(musicGain * musicVolume);
        if (fade == 0) startRequestedTrack();
    }
    if (player_) player_->refill();
    if (device_) device_->update(dt);
}

void AudioManager::startRequestedTrack() {
    if (!player_) return;
    if (player_->hasBuffer()) player_->stop();
    if (musicName.empty()) return;
    musicGain = 1;
    player_->open(soundFolder + musicName + ".ogg");
    player_->play();
    player_->setVolume(musicVolume);
}

void AudioManager::setAudible(bool audible) {
    if (device_) device_->setAudible(audible);
}

} // namespace Zelkor
