#include "audio/WavFile.h"

#include "io/ByteReader.h"

#include <string_view>

namespace Zelkor {

namespace {

constexpr int pcm = 1, extensible = -2; // format tags; the second has the real one further on
constexpr int slowest = 1000, fastest = 192000; // samples a second

std::string_view tagAt(std::span<const uint8_t> bytes, std::size_t at) {
    return {reinterpret_cast<const char*>(bytes.data()) + at, 4};
}

WavError readFormat(std::span<const uint8_t> chunk, platform::SoundFormat& format) {
    ByteReader reader(chunk);
    int tag = reader.i16();
    format.channels = reader.i16();
    format.samplesPerSecond = reader.i32();
    reader.skip(4); // bytes a second
    const int blockAlign = reader.i16();
    format.bitsPerSample = reader.i16();
    if (reader.failed()) return WavError::noFormat;
    if (tag == extensible) {
        reader.skip(8); // size, valid bits, speakers
        tag = reader.i16();
        if (reader.failed()) return WavError::noFormat;
    }
    if (tag != pcm) return WavError::notPcm;
    const bool good = (format.channels == 1 || format.channels == 2) &&
                      (format.bitsPerSample == 8 || format.bitsPerSample == 16) &&
                      format.samplesPerSecond >= slowest && format.samplesPerSecond <= fastest &&
                      blockAlign == format.blockAlign();
    return good ? WavError::none : WavError::badFormat;
}

} // namespace

const char* wavErrorText(WavError error) {
    switch (error) {
    case WavError::none:
        return "";
    case WavError::unreadable:
        return "cannot be read";
    case WavError::notWave:
        return "no wave file";
    case WavError::noFormat:
        return "no format before the data";
    case WavError::notPcm:
        return "not PCM";
    case WavError::badFormat:
        return "not 1 or 2 channels of 8 or 16 bits at 1000 to 192000 samples a second";
    case WavError::noData:
        return "no data";
    case WavError::cutShort:
        return "the data is cut short";
    case WavError::empty:
        return "not one sample";
    }
    return "";
}

std::optional<WavSound> readWav(std::span<const uint8_t> bytes, WavError& error) {
    constexpr std::size_t formHeader = 12, chunkHeader = 8;
    error = WavError::notWave;
    if (bytes.size() < formHeader || tagAt(bytes, 0) != "RIFF" || tagAt(bytes, 8) != "WAVE") return {};

    WavSound sound;
    bool hasFormat = false;
    error = WavError::noData;
    for (std::size_t at = formHeader; bytes.size() - at >= chunkHeader;) {
        const std::string_view tag = tagAt(bytes, at);
        const auto size = static_cast<uint32_t>(ByteReader(bytes.subspan(at + 4)).i32());
        at += chunkHeader;
        const std::size_t left = bytes.size() - at;
        if (tag == "fmt ") {
            error = size > left ? WavError::noFormat : readFormat(bytes.subspan(at, size), sound.format);
            if (error != WavError::none) return {};
            hasFormat = true;
            error = WavError::noData;
        }
        if (tag == "data") {
            const auto block = static_cast<std::size_t>(sound.format.blockAlign());
            error = !hasFormat     ? WavError::noFormat
                    : size > left  ? WavError::cutShort
                    : size < block ? WavError::empty
                                   : WavError::none;
            if (error != WavError::none) return {};
            const auto data = bytes.subspan(at, size - size % block);
            sound.data.assign(data.begin(), data.end());
            return sound;
        }
        const std::size_t padded = static_cast<std::size_t>(size) + size % 2; // chunks begin at even places
        if (padded > left) break;
        at += padded;
    }
    return {};
}

} // namespace Zelkor
