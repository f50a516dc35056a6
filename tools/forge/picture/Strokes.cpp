#include "picture/Strokes.h"

#include "mesh/Noise.h"

#include <algorithm>
#include <cmath>

namespace forge {

// A cheap stand-in for the hatch texture: enough to judge how strokes lie on a surface.
float strokeInk(const Zelkor::Vec2& uv, float tone) {
    const auto layer = [&](float along, float across, float threshold) {
        const float noise = valueNoise({uv.x, uv.y, 0}, 3);
        const float wave = std::sin((along * uv.x + across * uv.y) * 2 * Zelkor::pi + noise);
        return std::clamp((wave - 1 + 2 * std::clamp(threshold, 0.0f, 1.0f)) * 3, 0.0f, 1.0f);
    };
    return 0.85f * std::max(layer(1.2f, 1.8f, 0.8f - tone), layer(-1.5f, 1.3f, 0.4f - tone));
}

} // namespace forge
