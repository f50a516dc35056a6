// Sound effects, loaded by name on first use, and the music.
#pragma once

#include "math/Math.h"

#include <string>

namespace Zelkor {

struct Camera;

class AudioManager {
  public:
    AudioManager();
    ~AudioManager();
    AudioManager(const AudioManager&) = delete;

    // The device, its mixing format and the music player; after the window. Whatever fails is left out.
    void initAudio();

    // --- Effects. A sound is addressed by its index, in load order. -----------------------------------------
    // Loads it on first request. Also names without a file have an index; they play nothing.
    int soundIndex(const std::string& name);
    // volume: 0 and up, before the global volume. 1 on success, -1 when nothing was played.
    int playIndex(int index, float volume);
    int playSound(const std::string& name, float volume);
    // Quieter away from the listener.
    int playSoundAt(const std::string& name, const Vec3& position, float volume);
    // 0..1; 1 without a listener.
    float distanceFactor(const Vec3& position) const;

    // --- Music. -------------------------------------------------------------------------------------------
    // Fades to that track; an empty name is silence. The track that plays already goes on.
    void playMusic(const std::string& name);
    // Once per update substep; dt in seconds.
    void updateAudio(float dt);

    float soundVolume = 1, musicVolume = 1; // 0..1
    float musicGain = 1;                    // of the fade
    std::string musicName;                  // as requested; empty is silence
    const Camera* listener = nullptr;
    bool screenSpaceListener = false;
};

} // namespace Zelkor
