// Sound effects, loaded by name on first use, and the music.
#pragma once

#include "math/Math.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace platform {
class SoundBuffer;
class SoundDevice;
class Window;
} // namespace platform

namespace Zelkor {

class OggPlayer;
struct Camera;

// A sound by its name, and the recordings of it from which each play picks one.
struct SoundEntry {
    static constexpr int maxVariants = 5;

    std::string name;
    int variantCount = 0;
    std::array<int, maxVariants> variants{}; // indices of buffers
};

class AudioManager {
  public:
    AudioManager();
    ~AudioManager();
    AudioManager(const AudioManager&) = delete;

    // The device, its mixing format and the music player; after the window. Whatever fails is left out:
    // without a device nothing plays, without the mixing format there is no music.
    void initAudio(platform::Window* window = nullptr);
    bool hasDevice() const { return device_ != nullptr; }

    // --- Effects. A sound is addressed by its index, in load order. -----------------------------------------
    // Loads it on first request: data/sound/NAME.wav and, where they exist, NAME_2.wav to NAME_5.wav. Also
    // names without a file have an index; they play nothing.
    int soundIndex(const std::string& name);
    // Adds a variant. file: below the data folder. Says on the standard output why it could not be read.
    void loadWav(SoundEntry& entry, const std::string& file);
    // volume: 0 and up, before the global volume. 1 on success, -1 when nothing was played.
    int playIndex(int index, float volume);
    int playSound(const std::string& name, float volume);
    // Quieter away from the listener.
    int playSoundAt(const std::string& name, const Vec3& position, float volume);
    // 0..1; 1 without a listener.
    float distanceFactor(const Vec3& position) const;
    const std::vector<SoundEntry>& sounds() const { return sounds_; }

    // --- Music. -------------------------------------------------------------------------------------------
    // Fades to that track (data/sound/NAME.ogg); an empty name is silence. The one requested last goes on.
    void playMusic(const std::string& name);
    // Fades to silence within so many seconds (at most 1).
    void fadeOutMusic(float seconds);
    // These are heard at once if a track plays. They end with a fade, which sets the gain itself.
    void setMusicVolume(float volume);
    void setMusicGain(float gain);
    // Once per update substep; dt in seconds.
    void updateAudio(float dt);
    // False mutes everything, and everything goes on.
    void setAudible(bool audible);

    float soundVolume = 1, musicVolume = 1; // 0..1
    float musicGain = 1;                    // of the fade
    float fade = 0;                         // seconds until the requested track starts; 0: it has
    std::string musicName;                  // as requested; empty is silence
    const Camera* listener = nullptr;       // not owned
    // The distance is measured on the screen from its centre, rather than in the world.
    bool screenSpaceListener = false;

  private:
    void startRequestedTrack();

    std::unique_ptr<platform::SoundDevice> device_; // outlives what plays on it
    std::vector<std::unique_ptr<platform::SoundBuffer>> buffers_;
    std::vector<SoundEntry> sounds_;
    std::unique_ptr<OggPlayer> player_;
    std::uint32_t variantChoice_ = 1;
};

} // namespace Zelkor
