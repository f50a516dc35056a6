#pragma once

namespace Zelkor {

// Hundredths of a decibel below full level of a gain: 600 for each halving, so 0 at 1 and -600 at 0.5, rounded
// towards zero. Not below -10000, which is silence; above 0 for gains above 1. Silence also for what is no gain.
int attenuation(float gain);

} // namespace Zelkor
