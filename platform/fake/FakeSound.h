// A sound card that a test scripts and inspects. Nothing moves by itself: the test sets the cursors.
#pragma once

#include "Platform.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

namespace platform {

// What the card remembers of a buffer, also after its owner has let go of it.
struct FakeSound {
    SoundFormat format;
    std::vector<std::uint8_t> bytes;
    std::size_t cursor = 0;
    bool playing = false, looping = false, released = false;
    int volume = SoundBuffer::maxVolume;
    int plays = 0, locks = 0;
};

struct FakeSoundCard {
    // --- Set by the test ---
    bool present = false;
    bool mixFormatFails = false, buffersFail = false, locksFail = false, playsFail = false;

    // --- Read by the test ---
    std::vector<std::shared_ptr<FakeSound>> sounds; // in order of creation
    float updatedSeconds = 0;
    bool audible = true;

    // Null when there is none.
    std::unique_ptr<SoundDevice> open();
};

class FakeSoundBuffer final : public SoundBuffer {
  public:
    FakeSoundBuffer(const FakeSoundCard& card, std::shared_ptr<FakeSound> sound)
        : card_(card), sound_(std::move(sound)) {}
    ~FakeSoundBuffer() override {
        sound_->playing = false;
        sound_->released = true;
    }
    bool play(bool loop) override {
        if (card_.playsFail) return false;
        sound_->playing = true;
        sound_->looping = loop;
        ++sound_->plays;
        return true;
    }
    bool stop() override {
        sound_->playing = false;
        return true;
    }
    bool playing() const override { return sound_->playing; }
    bool setPosition(std::size_t bytes) override {
        sound_->cursor = bytes;
        return true;
    }
    std::size_t position() const override { return sound_->cursor; }
    bool setVolume(int hundredthsOfDecibel) override {
        sound_->volume = hundredthsOfDecibel;
        return true;
    }
    std::size_t size() const override { return sound_->bytes.size(); }
    bool lock(std::size_t offset, std::size_t bytes, LockedSound& part) override {
        if (card_.locksFail || offset >= size() || bytes > size()) return false;
        const std::size_t first = std::min(bytes, size() - offset);
        part = {sound_->bytes.data() + offset, first, sound_->bytes.data(), bytes - first};
        ++sound_->locks;
        return true;
    }
    bool unlock(const LockedSound&) override { return true; }

  private:
    const FakeSoundCard& card_;
    std::shared_ptr<FakeSound> sound_;
};

class FakeSoundDevice final : public SoundDevice {
  public:
    explicit FakeSoundDevice(FakeSoundCard& card) : card_(card) {}
    bool setMixFormat(const SoundFormat&) override { return !card_.mixFormatFails; }
    std::unique_ptr<SoundBuffer> createBuffer(const SoundFormat& format, std::size_t bytes) override {
        if (card_.buffersFail) return nullptr;
        card_.sounds.push_back(std::make_shared<FakeSound>());
        card_.sounds.back()->format = format;
        card_.sounds.back()->bytes.resize(bytes);
        return std::make_unique<FakeSoundBuffer>(card_, card_.sounds.back());
    }
    void update(float seconds) override { card_.updatedSeconds += seconds; }
    void setAudible(bool audible) override { card_.audible = audible; }

  private:
    FakeSoundCard& card_;
};

inline std::unique_ptr<SoundDevice> FakeSoundCard::open() {
    return present ? std::make_unique<FakeSoundDevice>(*this) : nullptr;
}

} // namespace platform
