#pragma once

#include <algorithm>
#include <cmath>

namespace forge {

template <class Visit>
void walkStroke(const Stroke& stroke, const Visit& visit) {
    const int steps = std::max(2, static_cast<int>(stroke.length));
    float x = stroke.start.x, y = stroke.start.y;
    for (int i = 0; i <= steps; ++i) {
        const float t = static_cast<float>(i) / static_cast<float>(steps);
        // A quick touch down, a long lift off.
        const float in = std::min(1.0f, t / 0.12f), out = std::min(1.0f, (1 - t) / 0.45f);
        const float waver =
            1 + stroke.unevenness * valueNoise({static_cast<float>(i) * 0.09f, 0.5f, 0.5f}, stroke.seed);
        const float pressure = std::clamp(std::sqrt(in) * std::pow(out, 0.7f) * waver, 0.0f, 1.0f);
        const float radius = stroke.halfWidth * (0.45f + 0.55f * pressure);
        const int reach = static_cast<int>(std::ceil(radius)) + 1;
        const int cx = static_cast<int>(std::floor(x)), cy = static_cast<int>(std::floor(y));
        for (int dy = -reach; dy <= reach; ++dy)
            for (int dx = -reach; dx <= reach; ++dx) {
                const float away = std::hypot(static_cast<float>(cx + dx) + 0.5f - x,
                                              static_cast<float>(cy + dy) + 0.5f - y);
                const float edge = std::clamp(radius + 0.5f - away, 0.0f, 1.0f);
                if (edge > 0) visit(cx + dx, cy + dy, pressure * edge);
            }
        const float direction = stroke.angle + stroke.bend * (t - 0.5f);
        const float step = stroke.length / static_cast<float>(steps);
        x += std::cos(direction) * step;
        y += std::sin(direction) * step;
    }
}

} // namespace forge
