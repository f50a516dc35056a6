#include "sdl/WaveFile.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace platform {

namespace {

constexpr std::uint32_t headerBytes = 44;
constexpr std::uint32_t channels = 2, bytesPerSample = 2;
constexpr std::uint32_t largestData = 0xFFFFFFFFu - headerBytes; // of what the header can count

} // namespace

std::unique_ptr<WaveFile> WaveFile::create(const std::filesystem::path& path, int samplesPerSecond) {
    std::FILE* file = std::fopen(path.string().c_str(), "wb");
    if (!file) return nullptr;
    std::unique_ptr<WaveFile> wave(new WaveFile(file));
    wave->samplesPerSecond_ = static_cast<std::uint32_t>(samplesPerSecond);
    wave->writeHeader();
    return wave;
}

WaveFile::~WaveFile() {
    std::fclose(file_);
}

void WaveFile::append(std::span<const float> samples) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(samples.size() * bytesPerSample);
    for (const float sample : samples) {
        const long value = std::clamp(std::lround(sample * 32767.0f), -32768L, 32767L);
        bytes.push_back(static_cast<std::uint8_t>(value & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(value >> 8 & 0xFF));
    }
    if (bytes.size() > largestData - dataBytes_) return;
    std::fseek(file_, 0, SEEK_END);
    dataBytes_ += static_cast<std::uint32_t>(std::fwrite(bytes.data(), 1, bytes.size(), file_));
    writeHeader();
}

void WaveFile::writeHeader() {
    std::vector<std::uint8_t> header;
    const auto text = [&](const char* word) { header.insert(header.end(), word, word + 4); };
    const auto number = [&](std::uint32_t value, int bytes) {
        for (int i = 0; i < bytes; ++i)
            header.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    };
    text("RIFF");
    number(headerBytes - 8 + dataBytes_, 4);
    text("WAVE");
    text("fmt ");
    number(16, 4);
    number(1, 2); // PCM
    number(channels, 2);
    number(samplesPerSecond_, 4);
    number(samplesPerSecond_ * channels * bytesPerSample, 4);
    number(channels * bytesPerSample, 2);
    number(bytesPerSample * 8, 2);
    text("data");
    number(dataBytes_, 4);
    std::rewind(file_);
    std::fwrite(header.data(), 1, header.size(), file_);
    std::fflush(file_);
}

} // namespace platform
