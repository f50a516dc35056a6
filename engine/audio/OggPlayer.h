// The music: one Ogg Vorbis file at a time, decoded into a buffer of three segments that plays round and round.
// While one is heard, the one behind it is filled, a whole segment (some 3.7 seconds) at a time.
#pragma once

#include "audio/OggStream.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Zelkor {

class OggPlayer {
  public:
    static constexpr std::size_t segmentBytes = 0xA0000;
    static constexpr int segmentCount = 3;

    // The device must outlive the player.
    explicit OggPlayer(platform::SoundDevice& device);
    virtual ~OggPlayer();
    OggPlayer(const OggPlayer&) = delete;

    // Closes the track before and fills the first segment of this one. file: below the data folder. False when
    // it is missing or broken, or there is no buffer for it; then nothing plays.
    bool open(const std::string& file);
    // From the start, round and round.
    void play();
    void stop();
    // gain: 0..1
    void setVolume(float gain);
    // Once per update.
    void refill();

    bool hasBuffer() const { return buffer_ != nullptr; }
    bool playing() const { return playing_; }
    // play() sets it. Cleared while the track plays, that stops two segment changes after its end was decoded.
    bool loop = false;

  private:
    void close();
    // Zeros, then what the stream has left. Returns the bytes decoded.
    std::size_t decodeSegment();
    // Goes round at the stream's end.
    void decodeLooping();
    bool copySegment();
    uint8_t* segment() { return segments_.data() + static_cast<std::size_t>(nextSegment_) * segmentBytes; }

    platform::SoundDevice& device_;
    std::unique_ptr<platform::SoundBuffer> buffer_;
    std::vector<uint8_t> segments_; // all three
    OggStream stream_;
    bool playing_ = false;
    bool ended_ = false;
    bool stopPending_ = false;
    int nextSegment_ = 0; // to be filled next
};

} // namespace Zelkor
