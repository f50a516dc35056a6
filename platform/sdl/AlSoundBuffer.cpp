#include "sdl/AlSoundBuffer.h"

#include <AL/al.h>
#include <AL/alext.h>

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr int piecesPerSecond = 4;
// Long enough for the pause that loading a stage makes.
constexpr int secondsAhead = 2;
// A loop is usually rewritten in its far half.
constexpr std::size_t shareAhead = 4;

// Every sound has two channels in the mixer: one alone would be panned by it and lose level.
constexpr std::size_t mixerChannels = 2;

} // namespace

AlSoundBuffer::AlSoundBuffer(AlSoundDevice& device, const SoundFormat& format, std::size_t bytes)
    : device_(device), format_(format), memory_(bytes, format.bitsPerSample == 8 ? 128 : 0) {
    const auto block = static_cast<std::size_t>(format.blockAlign());
    const std::size_t perSecond = static_cast<std::size_t>(format.samplesPerSecond) * block;
    const std::size_t wantedAhead = std::min(perSecond * secondsAhead, bytes / shareAhead);
    pieceBytes_ = std::max(perSecond / piecesPerSecond / block, std::size_t{1}) * block;
    // A short loop goes round many times in its queue.
    aheadBytes_ = std::max(wantedAhead, pieceBytes_ * 2);
    device_.buffers_.push_back(this);
}

AlSoundBuffer::~AlSoundBuffer() {
    releaseVoice();
    std::erase(device_.buffers_, this);
}

bool AlSoundBuffer::play(bool loop) {
    if (playing() && loop_ == loop) return true;
    if (wanted_) stop();
    loop_ = loop;
    // What is to play on and on will, once there is a device again.
    wanted_ = device_.lost() ? loop : (loop ? startLoop() : startOnce());
    return wanted_;
}

bool AlSoundBuffer::stop() {
    position_ = position();
    silence();
    wanted_ = false;
    return true;
}

bool AlSoundBuffer::playing() const {
    if (!wanted_) return false;
    return loop_ || sourceState() == AL_PLAYING;
}

bool AlSoundBuffer::setPosition(std::size_t bytes) {
    if (bytes >= size()) return false;
    bytes -= bytes % static_cast<std::size_t>(format_.blockAlign());
    if (isLooping()) {
        silence();
        position_ = bytes;
        if (!device_.lost()) startLoop();
        return true;
    }
    position_ = bytes;
    if (playing()) alSourcei(source_, AL_SAMPLE_OFFSET, static_cast<int>(bytes) / format_.blockAlign());
    return true;
}

std::size_t AlSoundBuffer::position() const {
    // Not heard either while a loop waits for its next piece, or for a device.
    if (!wanted_ || sourceState() != AL_PLAYING) return position_;
    int samples = 0;
    alGetSourcei(source_, AL_SAMPLE_OFFSET, &samples);
    const auto offset = static_cast<std::size_t>(samples) * static_cast<std::size_t>(format_.blockAlign());
    return loop_ ? (queueStart_ + offset) % size() : offset;
}

bool AlSoundBuffer::setVolume(int hundredthsOfDecibel) {
    const int volume = std::clamp(hundredthsOfDecibel, minVolume, maxVolume);
    // Ten times the power is ten decibels, so ten times the amplitude twenty.
    gain_ = volume == minVolume ? 0 : std::pow(10.0f, static_cast<float>(volume) / 2000);
    if (source_) alSourcef(source_, AL_GAIN, gain_);
    return true;
}

bool AlSoundBuffer::lock(std::size_t offset, std::size_t bytes, LockedSound& part) {
    if (offset >= size() || bytes > size()) return false;
    const std::size_t first = std::min(bytes, size() - offset);
    part = {memory_.data() + offset, first, memory_.data(), bytes - first};
    return true;
}

bool AlSoundBuffer::unlock(const LockedSound& part) {
    wholeOutdated_ = true;
    if (!playing() || device_.lost()) return true;
    if (!loop_) {
        position_ = position();
        silence();
        return startOnce();
    }
    // What lies in the queue has been copied already: where the two overlap, it is queued anew.
    const std::size_t cursor = position();
    const std::size_t ahead = (queueStart_ + queuedBytes() + size() - cursor) % size();
    const bool isRound = queuedBytes() >= size();
    const auto overlaps = [&](const void* from, std::size_t bytes) {
        const auto begin = static_cast<std::size_t>(static_cast<const std::uint8_t*>(from) - memory_.data());
        const std::size_t beginAhead = (begin + size() - cursor) % size();
        return bytes > 0 && (isRound || beginAhead < ahead || beginAhead + bytes > size());
    };
    if (!overlaps(part.first, part.firstBytes) && !overlaps(part.second, part.secondBytes)) return true;
    silence();
    position_ = cursor;
    return startLoop();
}

// --- The mixer ---------------------------------------------------------------------------------------------

int AlSoundBuffer::sourceState() const {
    int state = AL_INITIAL;
    if (source_) alGetSourcei(source_, AL_SOURCE_STATE, &state);
    return state;
}

bool AlSoundBuffer::takeSource() {
    if (source_) return true;
    for (int attempt = 0; attempt < 2 && !source_; ++attempt) {
        if (attempt == 1) device_.reclaimSources();
        alGetError();
        alGenSources(1, &source_);
        if (alGetError() != AL_NO_ERROR) source_ = 0;
    }
    if (!source_) return false;
    // To the speakers as recorded, without a place in the room.
    alSourcei(source_, AL_SOURCE_RELATIVE, AL_TRUE);
    alSourcei(source_, AL_DIRECT_CHANNELS_SOFT, AL_TRUE);
    alSourcef(source_, AL_GAIN, gain_);
    alGetError(); // a driver without direct channels pans them wide, which will do
    return true;
}

// Bytes from a position on, round the end when need be, as the mixer takes them.
void AlSoundBuffer::upload(Name buffer, std::size_t from, std::size_t bytes) const {
    const auto block = static_cast<std::size_t>(format_.blockAlign());
    const std::size_t sample = static_cast<std::size_t>(format_.bitsPerSample) / 8;
    std::vector<std::uint8_t> copy;
    copy.reserve(bytes / block * sample * mixerChannels);
    while (bytes > 0) {
        const std::size_t run = std::min(bytes, size() - from);
        const auto begin = memory_.begin() + static_cast<std::ptrdiff_t>(from);
        if (format_.channels == 2) {
            copy.insert(copy.end(), begin, begin + static_cast<std::ptrdiff_t>(run));
        } else {
            for (std::size_t i = 0; i < run; i += sample)
                for (std::size_t channel = 0; channel < mixerChannels; ++channel)
                    copy.insert(copy.end(), begin + static_cast<std::ptrdiff_t>(i),
                                begin + static_cast<std::ptrdiff_t>(i + sample));
        }
        from = (from + run) % size();
        bytes -= run;
    }
    alBufferData(buffer, format_.bitsPerSample == 8 ? AL_FORMAT_STEREO8 : AL_FORMAT_STEREO16, copy.data(),
                 static_cast<int>(copy.size()), format_.samplesPerSecond);
}

bool AlSoundBuffer::startOnce() {
    if (!takeSource()) return false;
    alGetError();
    if (!whole_) {
        alGenBuffers(1, &whole_);
        wholeOutdated_ = true;
    }
    if (wholeOutdated_) {
        alSourcei(source_, AL_BUFFER, 0);
        upload(whole_, 0, size());
        wholeOutdated_ = false;
    }
    alSourcei(source_, AL_BUFFER, static_cast<int>(whole_));
    alSourcei(source_, AL_SAMPLE_OFFSET, static_cast<int>(position_) / format_.blockAlign());
    alSourcePlay(source_);
    position_ = 0;
    return alGetError() == AL_NO_ERROR;
}

bool AlSoundBuffer::startLoop() {
    if (!takeSource()) return false;
    alGetError();
    queueStart_ = position_;
    while (queuedBytes() < aheadBytes_)
        if (!queuePiece()) return false;
    alSourcePlay(source_);
    return alGetError() == AL_NO_ERROR;
}

bool AlSoundBuffer::queuePiece() {
    if (free_.empty()) {
        Name fresh = 0;
        alGenBuffers(1, &fresh);
        if (alGetError() != AL_NO_ERROR) return false;
        free_.push_back(fresh);
    }
    const Name piece = free_.back();
    upload(piece, (queueStart_ + queuedBytes()) % size(), pieceBytes_);
    alSourceQueueBuffers(source_, 1, &piece);
    if (alGetError() != AL_NO_ERROR) return false;
    free_.pop_back();
    queued_.push_back(piece);
    return true;
}

void AlSoundBuffer::feed() {
    if (!isLooping()) return;
    int played = 0;
    if (source_) alGetSourcei(source_, AL_BUFFERS_PROCESSED, &played);
    const bool starved = sourceState() != AL_PLAYING;
    if (starved) device_.noticeLoss(); // which also ends all play
    if (device_.lost()) return;
    if (!source_) { // there was none to be had
        startLoop();
        return;
    }
    for (; played > 0; --played) {
        alSourceUnqueueBuffers(source_, 1, &queued_.front());
        free_.push_back(queued_.front());
        queued_.erase(queued_.begin());
        queueStart_ = (queueStart_ + pieceBytes_) % size();
    }
    if (starved) position_ = queueStart_;
    while (queuedBytes() < aheadBytes_ && queuePiece()) {
    }
    if (starved) alSourcePlay(source_);
    position_ = position();
}

// Neither the position nor the wish to play changes.
void AlSoundBuffer::silence() {
    if (source_) {
        alSourceStop(source_);
        alSourcei(source_, AL_BUFFER, 0);
    }
    free_.insert(free_.end(), queued_.begin(), queued_.end());
    queued_.clear();
}

void AlSoundBuffer::releaseVoice() {
    if (isLooping()) position_ = position();
    silence();
    if (!loop_) wanted_ = false;
    if (source_) alDeleteSources(1, &source_);
    if (whole_) alDeleteBuffers(1, &whole_);
    if (!free_.empty()) alDeleteBuffers(static_cast<int>(free_.size()), free_.data());
    source_ = whole_ = 0;
    free_.clear();
    alGetError();
}

void AlSoundBuffer::resume() {
    if (isLooping()) startLoop();
}

} // namespace platform
