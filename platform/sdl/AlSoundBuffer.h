// A sound buffer behind OpenAL: its bytes lie here, and the mixer has a copy. What plays once is copied whole;
// what plays in a loop is a queue of short pieces, copied a little ahead of the cursor so that what is written
// meanwhile is heard.
#pragma once

#include "sdl/AlSoundDevice.h"

#include <cstdint>
#include <vector>

namespace platform {

class AlSoundBuffer final : public SoundBuffer {
  public:
    AlSoundBuffer(AlSoundDevice& device, const SoundFormat& format, std::size_t bytes);
    ~AlSoundBuffer() override;
    AlSoundBuffer(const AlSoundBuffer&) = delete;

    bool play(bool loop) override;
    bool stop() override;
    bool playing() const override;
    bool setPosition(std::size_t bytes) override;
    std::size_t position() const override;
    bool setVolume(int hundredthsOfDecibel) override;
    std::size_t size() const override { return memory_.size(); }
    bool lock(std::size_t offset, std::size_t bytes, LockedSound& part) override;
    bool unlock(const LockedSound& part) override;

    // --- For the device ---
    // Keeps a loop's queue filled.
    void feed();
    // Gives up what the mixer holds of this buffer; a loop keeps its position and the wish to play.
    void releaseVoice();
    // A loop that releaseVoice interrupted.
    void resume();

  private:
    using Name = unsigned; // of a source or a buffer of the mixer; 0: none

    bool takeSource();
    bool startOnce();
    bool startLoop();
    void silence();
    bool isLooping() const { return wanted_ && loop_; }
    int sourceState() const;
    std::size_t queuedBytes() const { return queued_.size() * pieceBytes_; }
    bool queuePiece();
    void upload(Name buffer, std::size_t from, std::size_t bytes) const;

    AlSoundDevice& device_;
    SoundFormat format_;
    std::vector<std::uint8_t> memory_;
    float gain_ = 1;
    bool wanted_ = false, loop_ = false; // play was called, and how
    std::size_t position_ = 0;           // where it stands, or where its loop was last seen
    Name source_ = 0;
    Name whole_ = 0; // the copy that plays once
    bool wholeOutdated_ = true;
    std::size_t pieceBytes_ = 0;
    std::size_t aheadBytes_ = 0;   // of the cursor, in a loop
    std::vector<Name> queued_;     // in order of their play
    std::vector<Name> free_;
    std::size_t queueStart_ = 0; // position of the first queued piece
};

} // namespace platform
