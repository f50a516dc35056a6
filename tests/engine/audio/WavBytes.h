#pragma once

#include <cstdint>
#include <string>

// A chunk of a RIFF file; claimed is the size it says it has.
inline std::string riffChunk(const std::string& tag, const std::string& data, std::int64_t claimed = -1) {
    const auto size = static_cast<std::uint32_t>(claimed < 0 ? static_cast<std::int64_t>(data.size()) : claimed);
    std::string bytes = tag;
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(size >> shift & 0xFF);
    return bytes + data + (data.size() % 2 ? std::string(1, '\0') : "");
}

inline std::string wavFormat(int tag = 1, int channels = 1, int rate = 22050, int bits = 16, int block = 0) {
    std::string bytes;
    const auto number = [&](int value, int count) {
        for (int i = 0; i < count; ++i)
            bytes += static_cast<char>(value >> 8 * i & 0xFF);
    };
    number(tag, 2);
    number(channels, 2);
    number(rate, 4);
    number(rate * channels * bits / 8, 4);
    number(block ? block : channels * bits / 8, 2);
    number(bits, 2);
    return riffChunk("fmt ", bytes);
}

inline std::string wavFile(const std::string& chunks) {
    return riffChunk("RIFF", "WAVE" + chunks);
}
