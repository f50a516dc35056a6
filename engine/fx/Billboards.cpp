#include "fx/Billboards.h"

#include "fx/ParticleSystem.h"
#include "render/Material.h"

#include <algorithm>
#include <cmath>

namespace Zelkor {

namespace {

struct Turn {
    float cosine, sine;
};

std::uint8_t toByte(float value) {
    return static_cast<std::uint8_t>(std::min(std::max(value, 0.0f), 1.0f) * 255 + 0.5f);
}

// Without an angle: the direction of the flight as the viewer of the play plane sees it.
Turn alongVelocity(float vx, float vy) {
    const float speed = std::sqrt(vx * vx + vy * vy);
    return speed > 0 ? Turn{vx / speed, vy / speed} : Turn{1, 0};
}

// Added colours take no account of alpha by themselves.
bool addsColour(int blendMode) {
    return blendMode == static_cast<int>(BlendMode::add) || blendMode == static_cast<int>(BlendMode::brighten);
}

} // namespace

int buildBillboards(const ParticleSystem& system, const Vec3& right, const Vec3& up,
                    std::vector<BillboardVertex>& vertices) {
    using P = ParticleSystem;
    const ParticleSetDesc& desc = system.desc();
    const auto row = [&](P::Row which) { return system.row(which); };
    const float *xs = row(P::x), *ys = row(P::y), *zs = row(P::z), *ages = row(P::age);
    const float *vxs = row(P::velocityX), *vys = row(P::velocityY), *angles = row(P::angle);
    const float *widths = row(P::width), *heights = row(P::height), *alphas = row(P::alpha);
    const float *reds = row(P::red), *greens = row(P::green), *blues = row(P::blue);
    const Vec3 towards = cross(right, up) * desc.pivot.z;
    const bool fadeColour = addsColour(desc.blendMode);

    const std::size_t most = static_cast<std::size_t>(system.live()) * 4;
    if (vertices.size() < most) vertices.resize(most);
    BillboardVertex* out = vertices.data();
    BillboardVertex* const end = out + most;
    for (int i = 0; i < system.used() && out < end; ++i) {
        if (ages[i] < 0) continue;
        const Turn turn = desc.speedAligned ? alongVelocity(vxs[i], vys[i])
                                            : Turn{std::cos(angles[i]), std::sin(angles[i])};
        const Vec3 across = (right * turn.cosine + up * turn.sine) * widths[i];
        const Vec3 along = (up * turn.cosine - right * turn.sine) * heights[i];
        const Vec3 middle =
            Vec3{xs[i], ys[i], zs[i]} + towards - across * desc.pivot.x - along * desc.pivot.y;
        const Vec3 halfAcross = across * 0.5f, halfAlong = along * 0.5f;
        const float share = fadeColour ? alphas[i] : 1;
        const std::array<std::uint8_t, 4> colour{toByte(reds[i] * share), toByte(greens[i] * share),
                                                 toByte(blues[i] * share), toByte(alphas[i])};
        out[0] = {middle - halfAcross + halfAlong, {0, 0}, colour};
        out[1] = {middle - halfAcross - halfAlong, {0, 1}, colour};
        out[2] = {middle + halfAcross - halfAlong, {1, 1}, colour};
        out[3] = {middle + halfAcross + halfAlong, {1, 0}, colour};
        out += 4;
    }
    return static_cast<int>(out - vertices.data()) / 4;
}

} // namespace Zelkor
