// The sound device behind OpenAL.
#pragma once

#include "Platform.h"
#include "sdl/WaveFile.h"

#include <AL/alc.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <vector>

namespace platform {

class AlSoundBuffer;

// One at a time: its context is the current one as long as it lives.
class AlSoundDevice final : public SoundDevice {
  public:
    // The system's default device; null without one.
    static std::unique_ptr<AlSoundDevice> openSpeakers();
    // Mixes in real time and throws it away, unless the environment names a driver (ALSOFT_DRIVERS).
    static std::unique_ptr<AlSoundDevice> openUnheard();
    // Mixes into a wave file as long a time as update() is given. Null when the file cannot be written.
    static std::unique_ptr<AlSoundDevice> openFile(const std::filesystem::path& path);
    ~AlSoundDevice() override;
    AlSoundDevice(const AlSoundDevice&) = delete;

    // Before anything plays.
    bool setMixFormat(const SoundFormat& format) override;
    // Mono or stereo, 8 or 16 bits.
    std::unique_ptr<SoundBuffer> createBuffer(const SoundFormat& format, std::size_t bytes) override;
    void update(float seconds) override;
    void setAudible(bool audible) override;

    // The device has gone away (unplugged, its server ended). Positions stand still meanwhile.
    bool lost() const { return lost_; }
    // Asks the driver.
    void noticeLoss();
    // Takes up the default device in place of the one there is; what plays in a loop goes on where it was.
    // False: there is none, the device is lost.
    bool reopen();

  private:
    friend class AlSoundBuffer;

    AlSoundDevice() = default;
    bool open();
    void close();
    void record(float seconds);
    // The sources of what is silent now, for others to use: drivers have a few hundred.
    void reclaimSources();

    ALCdevice* device_ = nullptr;
    ALCcontext* context_ = nullptr;
    std::unique_ptr<WaveFile> file_;
    bool toFile_ = false;
    std::filesystem::path path_;
    int samplesPerSecond_ = 44100;
    double unrecorded_ = 0; // samples that update() owes the file
    bool audible_ = true;
    bool lost_ = false;
    std::chrono::steady_clock::time_point nextLook_{}; // for a loss, or for a device to come back
    std::vector<AlSoundBuffer*> buffers_;
};

} // namespace platform
