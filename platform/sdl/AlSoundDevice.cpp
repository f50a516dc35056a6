#include "sdl/AlSoundDevice.h"

#include "sdl/AlSoundBuffer.h"

#include <AL/al.h>
#include <AL/alc.h>
#include <AL/alext.h>

#include <algorithm>
#include <cstdlib>

namespace platform {

namespace {

constexpr auto lossCheckPeriod = std::chrono::seconds(1);
// Opening a device may wait for a server, so it is not tried at every step.
constexpr auto reopenPeriod = std::chrono::seconds(3);

constexpr int fileChannels = 2;

template <class Function>
Function function(ALCdevice* device, const char* name) {
    return reinterpret_cast<Function>(alcGetProcAddress(device, name));
}

// In newer drivers than the headers: the same device object on other hardware, everything in it kept.
using ReopenDevice = ALCboolean(ALC_APIENTRY*)(ALCdevice*, const ALCchar*, const ALCint*);

} // namespace

std::unique_ptr<AlSoundDevice> AlSoundDevice::openSpeakers() {
    std::unique_ptr<AlSoundDevice> device(new AlSoundDevice);
    return device->open() ? std::move(device) : nullptr;
}

std::unique_ptr<AlSoundDevice> AlSoundDevice::openUnheard() {
    // Read when the first device is opened; what the player has set stays.
    ::setenv("ALSOFT_DRIVERS", "null", 0);
    return openSpeakers();
}

std::unique_ptr<AlSoundDevice> AlSoundDevice::openFile(const std::filesystem::path& path) {
    std::unique_ptr<AlSoundDevice> device(new AlSoundDevice);
    device->toFile_ = true;
    device->path_ = path;
    device->file_ = WaveFile::create(path, device->samplesPerSecond_);
    return device->file_ && device->open() ? std::move(device) : nullptr;
}

AlSoundDevice::~AlSoundDevice() {
    close();
}

bool AlSoundDevice::open() {
    if (toFile_) {
        const auto openLoopback = function<LPALCLOOPBACKOPENDEVICESOFT>(nullptr, "alcLoopbackOpenDeviceSOFT");
        device_ = openLoopback ? openLoopback(nullptr) : nullptr;
    } else {
        device_ = alcOpenDevice(nullptr);
    }
    if (!device_) return false;
    // The last two pairs are for the file only.
    const ALCint attributes[] = {ALC_FREQUENCY,
                                 samplesPerSecond_,
                                 toFile_ ? ALC_FORMAT_CHANNELS_SOFT : 0,
                                 ALC_STEREO_SOFT,
                                 ALC_FORMAT_TYPE_SOFT,
                                 ALC_FLOAT_SOFT,
                                 0};
    context_ = alcCreateContext(device_, attributes);
    if (context_ && alcMakeContextCurrent(context_)) {
        alListenerf(AL_GAIN, audible_ ? 1.0f : 0.0f);
        return true;
    }
    close();
    return false;
}

void AlSoundDevice::close() {
    alcMakeContextCurrent(nullptr);
    if (context_) alcDestroyContext(context_);
    if (device_) alcCloseDevice(device_);
    context_ = nullptr;
    device_ = nullptr;
}

bool AlSoundDevice::setMixFormat(const SoundFormat& format) {
    const int before = samplesPerSecond_;
    if (format.samplesPerSecond == before) return true;
    samplesPerSecond_ = format.samplesPerSecond;
    if (toFile_) file_ = WaveFile::create(path_, samplesPerSecond_);
    return (!toFile_ || file_) && reopen();
}

std::unique_ptr<SoundBuffer> AlSoundDevice::createBuffer(const SoundFormat& format, std::size_t bytes) {
    constexpr int slowest = 100, fastest = 384000; // samples a second
    const bool known = (format.channels == 1 || format.channels == 2) &&
                       (format.bitsPerSample == 8 || format.bitsPerSample == 16) &&
                       format.samplesPerSecond >= slowest && format.samplesPerSecond <= fastest;
    if (!known || bytes == 0 || bytes % static_cast<std::size_t>(format.blockAlign()) != 0) return nullptr;
    return std::make_unique<AlSoundBuffer>(*this, format, bytes);
}

void AlSoundDevice::update(float seconds) {
    const auto now = std::chrono::steady_clock::now();
    if (now >= nextLook_) {
        if (lost_)
            reopen();
        else
            noticeLoss();
        nextLook_ = now + (lost_ ? std::chrono::steady_clock::duration(reopenPeriod) : lossCheckPeriod);
    }
    if (lost_) return;
    for (AlSoundBuffer* buffer : buffers_)
        buffer->feed();
    if (file_) record(seconds);
}

void AlSoundDevice::setAudible(bool audible) {
    if (audible == audible_) return;
    audible_ = audible;
    alListenerf(AL_GAIN, audible ? 1.0f : 0.0f);
}

void AlSoundDevice::noticeLoss() {
    if (lost_ || !alcIsExtensionPresent(device_, "ALC_EXT_disconnect")) return;
    ALCint connected = ALC_TRUE;
    alcGetIntegerv(device_, ALC_CONNECTED, 1, &connected);
    lost_ = connected == ALC_FALSE;
}

bool AlSoundDevice::reopen() {
    // Sources that the lost device has stopped tell nothing any more.
    for (AlSoundBuffer* buffer : buffers_)
        buffer->releaseVoice();
    const auto reopenDevice = device_ && !toFile_ && alcIsExtensionPresent(device_, "ALC_SOFT_reopen_device")
                                  ? function<ReopenDevice>(device_, "alcReopenDeviceSOFT")
                                  : nullptr;
    const ALCint attributes[] = {ALC_FREQUENCY, samplesPerSecond_, 0};
    if (reopenDevice) {
        lost_ = !reopenDevice(device_, nullptr, attributes);
    } else {
        close();
        lost_ = !open();
    }
    if (lost_) return false;
    for (AlSoundBuffer* buffer : buffers_)
        buffer->resume();
    return true;
}

void AlSoundDevice::reclaimSources() {
    for (AlSoundBuffer* buffer : buffers_)
        if (!buffer->playing()) buffer->releaseVoice();
}

void AlSoundDevice::record(float seconds) {
    unrecorded_ += static_cast<double>(std::max(seconds, 0.0f)) * samplesPerSecond_;
    const int samples = static_cast<int>(unrecorded_);
    if (samples == 0) return;
    unrecorded_ -= samples;
    std::vector<float> mixed(static_cast<std::size_t>(samples) * fileChannels);
    const auto render = function<LPALCRENDERSAMPLESSOFT>(device_, "alcRenderSamplesSOFT");
    render(device_, mixed.data(), samples);
    file_->append(mixed);
}

} // namespace platform
