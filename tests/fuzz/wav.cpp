#include "FuzzTarget.h"

#include "audio/WavFile.h"

using namespace Zelkor;

int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    WavError error = WavError::none;
    const auto sound = readWav({data, size}, error);
    fuzzCheck(sound.has_value() == (error == WavError::none));
    if (sound) {
        const auto block = static_cast<std::size_t>(sound->format.blockAlign());
        fuzzCheck(!sound->data.empty() && sound->data.size() % block == 0 && sound->data.size() <= size);
    }
    return 0;
}
