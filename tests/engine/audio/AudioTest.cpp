#include "audio/Attenuation.h"
#include "audio/AudioManager.h"
#include "engine/audio/OggBytes.h"
#include "audio/OggPlayer.h"
#include "engine/audio/WavBytes.h"
#include "audio/WavFile.h"
#include "fake/FakePlatform.h"
#include "resources/Scene.h"
#include "support/TempData.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

namespace {

using namespace Zelkor;

std::vector<uint8_t> bytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

TEST(Attenuation, SixHundredForEachHalving) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const std::pair<float, int> table[] = {{1, 0},           {0.5f, -600}, {0.25f, -1200}, {0.15f, -1642},
                                           {1e-5f, -9965},   {9e-6f, -10000}, {0, -10000}, {-1, -10000},
                                           {nan, -10000},    {2, 600}};
    for (const auto& [gain, expected] : table)
        EXPECT_EQ(attenuation(gain), expected) << gain;
}

TEST(WavFile, ReadsPcmAndNamesWhatIsWrong) {
    const std::string format = wavFormat(), data = riffChunk("data", "abcde");
    WavError error;
    const auto sound = readWav(bytesOf(wavFile(riffChunk("LIST", "odd") + format + data)), error);
    ASSERT_TRUE(sound);
    EXPECT_EQ(sound->data, bytesOf("abcd")); // whole blocks
    EXPECT_EQ(sound->format.samplesPerSecond, 22050);
    const std::string extension = std::string("\x16\0\x10\0\x3\0\0\0\x01\0", 10) + std::string(14, 'g');
    std::string extensible = wavFormat(-2, 2) + extension;
    extensible[4] = 16 + 24; // the chunk's size
    EXPECT_TRUE(readWav(bytesOf(wavFile(extensible + data)), error));

    const struct {
        std::string file;
        WavError error;
    } broken[] = {
        {"", WavError::notWave},
        {riffChunk("RIFF", "AVI " + format + data), WavError::notWave},
        {wavFile(data + format), WavError::noFormat},
        {wavFile(riffChunk("fmt ", "short") + data), WavError::noFormat},
        {wavFile(format.substr(0, 15)), WavError::noFormat},
        {wavFile(wavFormat(-2) + data), WavError::noFormat},
        {wavFile(wavFormat(3) + data), WavError::notPcm},
        {wavFile(wavFormat(1, 6) + data), WavError::badFormat},
        {wavFile(wavFormat(1, 1, 22050, 24) + data), WavError::badFormat},
        {wavFile(wavFormat(1, 1, 7) + data), WavError::badFormat},
        {wavFile(wavFormat(1, 2, 22050, 16, 3) + data), WavError::badFormat},
        {wavFile(format), WavError::noData},
        {wavFile(format + riffChunk("LIST", "", 0x7FFFFFF0) + data), WavError::noData},
        {wavFile(format + riffChunk("data", "abcd", 5)), WavError::cutShort},
        {wavFile(format + riffChunk("data", "abcd", 0xFFFFFFFF)), WavError::cutShort},
        {wavFile(format + riffChunk("data", "a")), WavError::empty},
    };
    for (const auto& [file, expected] : broken) {
        EXPECT_FALSE(readWav(bytesOf(file), error));
        EXPECT_STREQ(wavErrorText(error), wavErrorText(expected));
    }
}

class Audio : public ::testing::Test {
  protected:
    Audio() { platform.sound.present = true; }
    void writeWav(const std::string& name) {
        data.write("sound/" + name + ".wav", wavFile(wavFormat() + riffChunk("data", name + "----")));
    }
    platform::FakeSound& sound(std::size_t index) { return *platform.sound.sounds.at(index); }
    void update(float seconds, int steps) {
        for (int i = 0; i < steps; ++i)
            audio.updateAudio(seconds);
    }

    TempData data;
    platform::FakePlatform platform;
    AudioManager audio;
};

TEST_F(Audio, EffectsAreLoadedOncePlayedAtTheirLevelAndRestarted) {
    writeWav("shot");
    audio.initAudio();
    EXPECT_EQ(audio.soundIndex("shot"), 0);
    EXPECT_EQ(audio.soundIndex("Shot"), 1); // no such file
    EXPECT_EQ(audio.soundIndex("shot"), 0);
    ASSERT_EQ(platform.sound.sounds.size(), 1u);
    EXPECT_EQ(sound(0).bytes, bytesOf("shot----"));
    EXPECT_EQ(sound(0).format.samplesPerSecond, 22050);

    audio.soundVolume = 0.5f;
    EXPECT_EQ(audio.playSound("shot", 1), 1);
    EXPECT_EQ(sound(0).volume, -1642); // 600 log2 0.15
    sound(0).cursor = 4;
    EXPECT_EQ(audio.playSound("shot", 0), 1);
    EXPECT_EQ(sound(0).volume, -10000);
    EXPECT_EQ(sound(0).cursor, 0u);
    EXPECT_EQ(sound(0).plays, 2);
    EXPECT_FALSE(sound(0).looping);
    audio.playSound("shot", 100);
    EXPECT_EQ(sound(0).volume, 0);
    for (const int index : {-1, 1, 2})
        EXPECT_EQ(audio.playIndex(index, 1), -1) << index;
    platform.sound.playsFail = true;
    EXPECT_EQ(audio.playIndex(0, 1), -1);
}

TEST_F(Audio, VariantsArePickedInTurnsNobodyCanTell) {
    for (const char* name : {"hit", "hit_2", "hit_4", "hit_5", "hit_6"})
        writeWav(name);
    audio.initAudio();
    for (int i = 0; i < 400; ++i)
        audio.playSound("hit", 1);
    ASSERT_EQ(audio.sounds()[0].variantCount, 4); // without a third, and no sixth
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_GT(sound(i).plays, 60) << i;
        EXPECT_LT(sound(i).plays, 140) << i;
    }
}

TEST_F(Audio, BrokenFilesAreNamedAndWhatFailsIsLeftOut) {
    data.write("sound/torn.wav", wavFile(wavFormat() + riffChunk("data", "abcd", 99)));
    data.write("sound/text.wav", "hello");
    writeWav("fine");
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(audio.soundIndex("early"), 0); // no device yet, no message
    audio.initAudio();
    for (const char* name : {"torn", "text", "gone", "../gone"})
        audio.soundIndex(name);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "Failed to read WAV data: 0X10\n"
              "Failed reading WAV file: 0X2 (data/sound/text.wav)\n"
              "Failed reading WAV file: 0X1 (data/sound/gone.wav)\n"
              "Failed reading WAV file: 0X1 (data/sound/../gone.wav)\n");
    platform.sound.locksFail = true;
    EXPECT_EQ(audio.playSound("fine", 1), -1);
    EXPECT_EQ(audio.sounds().back().variantCount, 0);

    AudioManager second, third;
    platform.sound.locksFail = false;
    platform.sound.mixFormatFails = true; // effects, but no music
    data.write("sound/song.ogg", oggBytes(3000));
    second.initAudio();
    EXPECT_EQ(second.playSound("fine", 1), 1);
    const std::size_t before = platform.sound.sounds.size();
    second.playMusic("song");
    second.updateAudio(2);
    EXPECT_EQ(platform.sound.sounds.size(), before);
    platform.sound.present = false;
    third.initAudio();
    EXPECT_EQ(third.playSound("fine", 1), -1);
    third.playMusic("song");
    third.updateAudio(2);
    EXPECT_EQ(third.musicName, "song");
}

TEST_F(Audio, FarSoundsFade) {
    EXPECT_EQ(audio.distanceFactor({9, 9, 9}), 1);
    Camera camera;
    camera.position = {10, 0, 100};
    audio.listener = &camera;
    const std::pair<float, float> inWorld[] = {{0, 1}, {0.8f, 1}, {1.05f, 0.5f}, {1.3f, 0}, {5, 0}};
    for (const auto& [away, factor] : inWorld)
        EXPECT_NEAR(audio.distanceFactor({10, away, 100}), factor, 1e-4f) << away;
    audio.screenSpaceListener = true;
    // At the depth of 100 half the picture is 100 tan 15 degrees high and 16/9 of that wide.
    const float halfHeight = 26.794919f, halfWidth = halfHeight * 16 / 9;
    const std::pair<float, float> onScreen[] = {{0, 1}, {0.9f, 1}, {1.0f, 0.85f}, {-1.2f, 0.55f}, {1.6f, 0}};
    for (const auto& [away, factor] : onScreen) {
        EXPECT_NEAR(audio.distanceFactor({10 + away * halfWidth, 0, 0}), factor, 1e-3f) << away;
        EXPECT_NEAR(audio.distanceFactor({10, away * halfHeight, 0}), factor, 1e-3f) << away;
    }
    writeWav("far");
    audio.initAudio();
    audio.playSoundAt("far", {10 + 1.2f * halfWidth, 0, 0}, 1);
    EXPECT_NEAR(sound(0).volume, attenuation(0.3f * 0.55f), 1);
}

TEST_F(Audio, TracksFadeOutBeforeTheNextStarts) {
    data.write("sound/one.ogg", oggBytes(3000));
    data.write("sound/two.ogg", oggBytes(3000, 220, 1));
    data.write("sound/broken.ogg", oggBytes(3000).substr(0, 200));
    audio.initAudio();
    audio.musicVolume = 0.5f;
    audio.playMusic("one");
    update(0.25f, 3);
    EXPECT_TRUE(platform.sound.sounds.empty());
    update(0.25f, 1);
    ASSERT_EQ(platform.sound.sounds.size(), 1u);
    EXPECT_TRUE(sound(0).playing && sound(0).looping);
    EXPECT_EQ(sound(0).volume, -600);
    EXPECT_EQ(audio.musicGain, 1);
    audio.setMusicGain(0.5f);
    EXPECT_EQ(sound(0).volume, -1200);
    audio.setMusicVolume(1);
    EXPECT_EQ(sound(0).volume, -600);

    audio.playMusic("one"); // goes on
    update(0.25f, 8);
    EXPECT_EQ(platform.sound.sounds.size(), 1u);
    audio.playMusic("nobody hears it");
    update(0.25f, 2);
    EXPECT_EQ(sound(0).volume, -600);
    audio.playMusic("two"); // the countdown begins again
    update(0.25f, 3);
    EXPECT_EQ(sound(0).volume, -1200);
    EXPECT_TRUE(sound(0).playing);
    update(0.25f, 1);
    EXPECT_TRUE(sound(0).released);
    ASSERT_EQ(platform.sound.sounds.size(), 2u);
    EXPECT_EQ(sound(1).format.channels, 1);
    EXPECT_EQ(sound(1).volume, 0);

    audio.playMusic("");
    update(0.0625f, 1);
    EXPECT_TRUE(sound(1).playing);
    update(0.0625f, 1);
    EXPECT_FALSE(sound(1).playing);
    audio.playMusic("two");
    update(1, 1);
    EXPECT_TRUE(sound(2).playing);
    audio.fadeOutMusic(1);
    update(0.75f, 1);
    EXPECT_TRUE(sound(2).playing);
    update(0.25f, 1);
    EXPECT_FALSE(sound(2).playing);
    for (const char* silent : {"broken", "missing", "../sound/one"}) {
        audio.playMusic(silent);
        update(1, 2);
        EXPECT_EQ(platform.sound.sounds.size(), 3u) << silent;
        EXPECT_EQ(audio.musicName, silent);
    }
    EXPECT_GT(platform.sound.updatedSeconds, 0);
}

// A player whose buffer is heard byte by byte, as a device would.
class Ring : public Audio {
  protected:
    std::vector<uint8_t> hear(std::size_t bytes) {
        constexpr std::size_t step = 4 * 4410;
        std::vector<uint8_t> heard;
        while (heard.size() < bytes && player.playing()) {
            player.refill();
            platform::FakeSound& ring = *platform.sound.sounds.back();
            for (std::size_t i = 0; i < step; ++i)
                heard.push_back(ring.bytes[(ring.cursor + i) % ring.bytes.size()]);
            ring.cursor = (ring.cursor + step) % ring.bytes.size();
        }
        return heard;
    }
    // The whole file, from its beginning.
    std::vector<uint8_t> decoded(const std::string& file) {
        OggStream stream;
        std::vector<uint8_t> bytes(8 << 20);
        EXPECT_TRUE(stream.open(openDataFile(file)));
        bytes.resize(stream.read(bytes.data(), bytes.size()));
        return bytes;
    }
    std::unique_ptr<platform::SoundDevice> device = platform.sound.open();
    OggPlayer player{*device};
};

TEST_F(Ring, PlaysALoopedTrackSampleForSample) {
    for (const int samples : {500'000, 7000}) { // longer than three segments, and shorter than one
        SCOPED_TRACE(samples);
        data.write("sound/track.ogg", oggBytes(samples));
        const auto track = decoded("sound/track.ogg");
        ASSERT_EQ(track.size(), static_cast<std::size_t>(samples) * 4);
        ASSERT_TRUE(player.open("sound/track.ogg"));
        player.play();
        const auto heard = hear(20 * OggPlayer::segmentBytes);
        // A short track's first segment is filled up with silence; from the second on it goes round.
        std::size_t from = 0;
        if (track.size() < OggPlayer::segmentBytes) {
            ASSERT_EQ(std::memcmp(heard.data(), track.data(), track.size()), 0);
            from = OggPlayer::segmentBytes;
        }
        std::size_t wrong = 0;
        for (std::size_t i = from; i < heard.size(); ++i)
            wrong += heard[i] != track[(i - from) % track.size()];
        EXPECT_EQ(wrong, 0u);
        EXPECT_LE(platform.sound.sounds.back()->locks, 23);
    }
}

TEST_F(Ring, TrackThatDoesNotLoopStops) {
    data.write("sound/track.ogg", oggBytes(500'000)); // ends in the fourth segment
    const auto track = decoded("sound/track.ogg");
    ASSERT_TRUE(player.open("sound/track.ogg"));
    player.play();
    player.loop = false;
    const auto heard = hear(20 * OggPlayer::segmentBytes);
    EXPECT_FALSE(player.playing());
    EXPECT_FALSE(platform.sound.sounds.back()->playing);
    // The end was decoded while the second was heard; two segments later it stops.
    ASSERT_EQ(heard.size() / OggPlayer::segmentBytes, 3u);
    EXPECT_EQ(std::memcmp(heard.data(), track.data(), 3 * OggPlayer::segmentBytes), 0);
}

TEST_F(Ring, BrokenTracksEndQuietly) {
    const std::string track = oggBytes(300'000);
    std::string holed = track;
    holed.erase(holed.size() / 2, 5000); // pages gone
    data.write("sound/holed.ogg", holed);
    data.write("sound/chained.ogg", track + oggBytes(1000, 440, 1)); // two channels, then one
    data.write("sound/nothing.ogg", oggBytes(0));
    data.write("sound/sound.ogg", track);
    EXPECT_EQ(oggProblem("sound/sound.ogg"), "");
    for (const char* file : {"holed", "chained", "nothing"}) {
        const std::string name = std::string("sound/") + file + ".ogg";
        EXPECT_NE(oggProblem(name), "") << name;
        if (player.open(name)) player.play();
        hear(8 * OggPlayer::segmentBytes); // comes back
    }
    platform.sound.buffersFail = true;
    EXPECT_FALSE(player.open("sound/sound.ogg"));
    player.play();
    player.setVolume(1);
    EXPECT_FALSE(player.playing());
}

} // namespace
