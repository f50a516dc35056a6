// Wave files (RIFF, PCM).
#pragma once

#include "Platform.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace Zelkor {

struct WavSound {
    platform::SoundFormat format;
    std::vector<uint8_t> data; // whole blocks, at least one
};

// The numbers are those that the messages show.
enum class WavError : unsigned {
    none = 0,
    unreadable = 1,  // no such file
    notWave = 2,     // no RIFF file of the form WAVE
    noFormat = 3,    // no format before the data, or one that is cut short
    notPcm = 4,      // a coding other than plain numbers
    badFormat = 5,   // not 1 or 2 channels of 8 or 16 bits, or at a rate out of reach
    noData = 6,      // no data chunk
    cutShort = 0x10, // the data is longer than the file
    empty = 0x11,    // less data than one sample
};

// What opening the file finds; the others are found in its data.
constexpr bool isOpeningError(WavError error) {
    return error != WavError::none && error < WavError::cutShort;
}
const char* wavErrorText(WavError error);

// Nothing on an error. Of data that ends in a broken block, the whole blocks.
std::optional<WavSound> readWav(std::span<const uint8_t> bytes, WavError& error);

} // namespace Zelkor
