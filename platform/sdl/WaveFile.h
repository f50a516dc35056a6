// Writes a wave file: stereo, 16 bits. What has been written so far is a whole file at any time.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <span>

namespace platform {

class WaveFile {
  public:
    // Null when the file cannot be written.
    static std::unique_ptr<WaveFile> create(const std::filesystem::path& path, int samplesPerSecond);
    ~WaveFile();
    WaveFile(const WaveFile&) = delete;

    // Interleaved samples, -1..1; louder ones are cut off there.
    void append(std::span<const float> samples);

  private:
    explicit WaveFile(std::FILE* file) : file_(file) {}
    void writeHeader();

    std::FILE* file_;
    std::uint32_t samplesPerSecond_ = 0;
    std::uint32_t dataBytes_ = 0;
};

} // namespace platform
