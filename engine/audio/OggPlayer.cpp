#include "audio/OggPlayer.h"

#include "audio/Attenuation.h"
#include "io/DataFiles.h"

#include <cstring>

namespace Zelkor {

OggPlayer::OggPlayer(platform::SoundDevice& device)
    : device_(device), segments_(segmentBytes * segmentCount) {}

OggPlayer::~OggPlayer() {
    close();
}

void OggPlayer::close() {
    if (buffer_) buffer_->stop();
    buffer_.reset();
    stream_.close();
    playing_ = ended_ = stopPending_ = loop = false;
    nextSegment_ = 0;
}

bool OggPlayer::open(const std::string& file) {
    close();
    if (!stream_.open(openDataFile(file))) return false;
    // A short track leaves the rest silent: whether it will loop is known only once it plays.
    decodeSegment();
    buffer_ = device_.createBuffer(stream_.format(), segments_.size());
    if (buffer_ && copySegment()) return true;
    buffer_.reset();
    return false;
}

void OggPlayer::play() {
    if (!buffer_) return;
    buffer_->setPosition(0);
    buffer_->play(true);
    playing_ = buffer_->playing();
    loop = true;
    ended_ = stopPending_ = false;
}

void OggPlayer::stop() {
    if (buffer_) buffer_->stop();
    playing_ = false;
}

void OggPlayer::setVolume(float gain) {
    if (buffer_) buffer_->setVolume(attenuation(gain));
}

void OggPlayer::refill() {
    if (!buffer_ || !playing_) return;
    const int heard = static_cast<int>(buffer_->position() / segmentBytes);
    if (heard == nextSegment_) return;
    if (stopPending_ && !loop) {
        stop();
        return;
    }
    if (ended_ && !loop) stopPending_ = true;
    decodeLooping();
    copySegment();
}

std::size_t OggPlayer::decodeSegment() {
    std::memset(segment(), 0, segmentBytes);
    return stream_.read(segment(), segmentBytes);
}

void OggPlayer::decodeLooping() {
    std::size_t filled = decodeSegment();
    while (filled < segmentBytes) {
        if (!loop || !stream_.rewind()) {
            ended_ = true;
            return;
        }
        const std::size_t got = stream_.read(segment() + filled, segmentBytes - filled);
        if (got == 0) { // nothing in it at all
            ended_ = true;
            return;
        }
        filled += got;
    }
}

// Into the buffer, at the place of nextSegment_, which moves on in any case.
bool OggPlayer::copySegment() {
    const uint8_t* from = segment();
    const std::size_t offset = static_cast<std::size_t>(nextSegment_) * segmentBytes;
    nextSegment_ = (nextSegment_ + 1) % segmentCount;
    platform::LockedSound part;
    if (!buffer_->lock(offset, segmentBytes, part)) return false;
    std::memcpy(part.first, from, part.firstBytes);
    if (part.secondBytes > 0) std::memcpy(part.second, from + part.firstBytes, part.secondBytes);
    return buffer_->unlock(part);
}

} // namespace Zelkor
