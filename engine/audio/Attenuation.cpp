#include "audio/Attenuation.h"

#include "Platform.h"

#include <algorithm>
#include <cmath>

namespace Zelkor {

int attenuation(float gain) {
    constexpr double perHalving = -600, silence = platform::SoundBuffer::minVolume;
    if (!(gain > 0)) return platform::SoundBuffer::minVolume;
    const double level = perHalving * std::log(static_cast<double>(gain)) / std::log(0.5);
    return static_cast<int>(std::max(silence, std::min(level, -silence)));
}

} // namespace Zelkor
