// What the mixer makes of sounds, recorded into a wave file and measured sample by sample.
#include "sdl/AlSoundDevice.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>

#include <unistd.h>

namespace {

using namespace platform;

constexpr int rate = 44100;

class AlSound : public ::testing::Test {
  protected:
    AlSound() : device(AlSoundDevice::openFile(path)) {}
    ~AlSound() override {
        device.reset();
        std::filesystem::remove(path);
    }

    std::unique_ptr<SoundBuffer> buffer(int channels, const std::vector<std::int16_t>& samples) {
        auto result = device->createBuffer({channels, rate, 16}, samples.size() * 2);
        write(*result, 0, samples);
        return result;
    }
    static void write(SoundBuffer& to, std::size_t at, const std::vector<std::int16_t>& samples) {
        LockedSound part;
        ASSERT_TRUE(to.lock(at, samples.size() * 2, part));
        std::memcpy(part.first, samples.data(), part.firstBytes);
        std::memcpy(part.second, samples.data() + part.firstBytes / 2, part.secondBytes);
        ASSERT_TRUE(to.unlock(part));
    }
    void run(float seconds) {
        for (int step = 0; step < static_cast<int>(seconds * 50 + 0.5f); ++step)
            device->update(0.02f);
    }
    // The left channel of what has been recorded since the last call.
    std::vector<int> heard() {
        std::ifstream file(path, std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
        std::vector<int> left;
        for (std::size_t at = 44 + taken; at + 3 < bytes.size(); at += 4) {
            std::int16_t pair[2];
            std::memcpy(pair, &bytes[at], 4);
            EXPECT_EQ(pair[0], pair[1]);
            left.push_back(pair[0]);
        }
        taken = bytes.size() - 44;
        return left;
    }

    std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("rustpike-al-" + std::to_string(::getpid()) + ".wav");
    std::unique_ptr<AlSoundDevice> device;
    std::size_t taken = 0;
};

int peak(const std::vector<int>& samples) {
    int highest = 0;
    for (const int sample : samples)
        highest = std::max(highest, std::abs(sample));
    return highest;
}

int steepest(const std::vector<int>& samples) {
    int step = 0;
    for (std::size_t i = 1; i < samples.size(); ++i)
        step = std::max(step, std::abs(samples[i] - samples[i - 1]));
    return step;
}

// Whole periods of 441 Hz.
std::vector<std::int16_t> tone(int periods, int channels = 1) {
    std::vector<std::int16_t> samples;
    for (int i = 0; i < periods * 100; ++i)
        samples.insert(samples.end(), static_cast<std::size_t>(channels),
                       static_cast<std::int16_t>(std::lround(16000 * std::sin(i * 2 * M_PI / 100))));
    return samples;
}
constexpr int toneSlope = 1010; // 16000 * 2 pi / 100

TEST_F(AlSound, PlaysOnceAtItsLevelAndStartsAgain) {
    ASSERT_TRUE(device);
    std::vector<std::int16_t> ramp(4410);
    for (std::size_t i = 0; i < ramp.size(); ++i)
        ramp[i] = static_cast<std::int16_t>(i * 4);
    auto sound = buffer(1, ramp);
    ASSERT_TRUE(sound->setVolume(-600)); // 20 log10(gain) = -6
    ASSERT_TRUE(sound->play(false));
    run(0.2f);
    const auto once = heard();
    for (const std::size_t i : {1000u, 2500u, 4400u})
        EXPECT_NEAR(once[i], static_cast<double>(i) * 4 * 0.501187, 2) << i;
    EXPECT_EQ(peak({once.begin() + 4420, once.end()}), 0);
    EXPECT_FALSE(sound->playing());
    EXPECT_EQ(sound->position(), 0u);

    sound->setVolume(0);
    sound->play(false);
    run(0.06f);
    EXPECT_NEAR(static_cast<double>(sound->position()), 2646 * 2, 4);
    sound->setPosition(0); // in the middle of its play
    EXPECT_TRUE(sound->play(false));
    run(0.02f);
    const auto again = heard();
    EXPECT_NEAR(again[2646 + 500], 500 * 4, 8);
    const std::size_t stoppedAt = sound->position();
    sound->stop();
    EXPECT_EQ(sound->position(), stoppedAt);
    run(0.04f);
    heard();
    run(0.04f);
    EXPECT_EQ(peak(heard()), 0);
    sound->play(false);
    run(0.04f); // the mixer fades in what starts in its middle
    EXPECT_NEAR(heard()[1200], static_cast<double>(stoppedAt) * 2 + 4800, 8);

    auto bytes = device->createBuffer({2, rate, 8}, 8820);
    LockedSound part;
    ASSERT_TRUE(bytes->lock(0, 8820, part));
    std::memset(part.first, 192, 8820);
    bytes->unlock(part);
    sound->stop();
    run(0.02f);
    heard();
    bytes->play(false);
    run(0.04f);
    EXPECT_NEAR(heard().back(), 16384, 2);
    device->setAudible(false);
    run(0.04f);
    EXPECT_EQ(heard().back(), 0);
    EXPECT_TRUE(bytes->playing());
    for (const SoundFormat& odd : {SoundFormat{3, rate, 16}, SoundFormat{2, rate, 24}, SoundFormat{2, 0, 16}})
        EXPECT_FALSE(device->createBuffer(odd, 48));
    EXPECT_FALSE(device->createBuffer({2, rate, 16}, 46));
}

TEST_F(AlSound, LoopsWithoutASeamAndIsHeardRewritten) {
    ASSERT_TRUE(device);
    for (const int periods : {20, 441 * 4}) { // shorter than a piece of its queue, and longer than the queue
        SCOPED_TRACE(periods);
        auto ring = buffer(2, tone(periods, 2));
        heard();
        ring->play(true);
        run(10);
        const auto samples = heard();
        ASSERT_NEAR(static_cast<double>(samples.size()), 441000, 1);
        EXPECT_NEAR(peak(samples), 16000, 2);
        EXPECT_LE(steepest(samples), toneSlope);
        for (std::size_t i = 0; i + 100 < samples.size(); ++i)
            ASSERT_NEAR(samples[i], samples[i + 100], 2) << i;
        EXPECT_NEAR(static_cast<double>(ring->position()), 441000 % (periods * 100) * 4, 4);

        // Far ahead of the cursor, and right in front of it.
        const std::size_t size = ring->size();
        for (const std::size_t ahead : {size / 4 * 3, size / 20}) {
            write(*ring, (ring->position() + ahead) / 4 * 4 % size, std::vector<std::int16_t>(100, 30000));
            run(static_cast<float>(size) / 4 / rate + 0.1f);
            EXPECT_NEAR(peak(heard()), 30000, 2) << ahead;
            write(*ring, 0, tone(periods, 2));
            run(0.1f);
            heard();
        }
        ring->stop();
        run(0.1f);
    }
}

TEST_F(AlSound, LoopGoesOnAfterAStallAndOnAnotherDevice) {
    ASSERT_TRUE(device);
    auto ring = buffer(1, tone(441 * 10)); // 10 seconds
    ring->play(true);
    run(1);
    heard();
    device->update(1.5f); // loading
    EXPECT_LE(steepest(heard()), toneSlope);
    device->update(5);
    auto samples = heard();
    EXPECT_EQ(peak({samples.end() - 100, samples.end()}), 0);
    const std::size_t starved = ring->position();
    EXPECT_TRUE(ring->playing());
    run(0.1f);
    EXPECT_EQ(peak(heard()), 16000);
    EXPECT_LT(ring->position() - starved, 4u * rate);

    const std::size_t before = ring->position();
    auto effect = buffer(1, tone(100));
    effect->play(false);
    ASSERT_TRUE(device->reopen());
    EXPECT_FALSE(effect->playing());
    EXPECT_NEAR(static_cast<double>(ring->position()), static_cast<double>(before), 4);
    run(0.1f);
    EXPECT_EQ(peak(heard()), 16000);
    ring->stop();
    EXPECT_TRUE(effect->play(false));
    run(0.1f);
    EXPECT_EQ(peak(heard()), 16000);
}

TEST_F(AlSound, MoreSoundsThanTheMixerHasSourcesFor) {
    ASSERT_TRUE(device);
    std::vector<std::unique_ptr<SoundBuffer>> sounds;
    int played = 0;
    for (int i = 0; i < 400; ++i) {
        sounds.push_back(buffer(1, tone(5)));
        played += sounds.back()->play(false);
    }
    EXPECT_GT(played, 200);
    EXPECT_LT(played, 400);
    run(0.1f);
    EXPECT_TRUE(sounds.back()->play(false)); // with the source of one that has ended
    EXPECT_TRUE(sounds.front()->play(false));
}

} // namespace
