#include "fx/Billboards.h"

#include "fx/ParticleSystem.h"
#include "render/Material.h"

#include <algorithm>
#include <cmath>

namespace Zelkor {

namespace {

// Particles are turned and coloured so many at a time, in loops the compiler makes vector code of.
constexpr int blockSize = 64;

struct Block {
    float cosines[blockSize], sines[blockSize];
    std::uint32_t colours[blockSize];
};

// In this order of operands, what is no number is 0.
std::uint32_t toByte(float value) {
    return static_cast<std::uint32_t>(static_cast<int>(std::min(std::max(0.0f, value), 1.0f) * 255 + 0.5f));
}

// The direction of the flight as the viewer of the play plane sees it; to the right without any.
void turnAlongVelocity(const float* __restrict vx, const float* __restrict vy, int count, Block& block) {
    for (int i = 0; i < count; ++i) {
        const float square = vx[i] * vx[i] + vy[i] * vy[i];
        const float scale = 1 / std::sqrt(std::max(square, 1e-30f));
        block.cosines[i] = square > 0 ? vx[i] * scale : 1;
        block.sines[i] = vy[i] * scale;
    }
}

// Of an angle in turns, -1..1, to a thousandth: a parabola a half-wave, and its square to round it.
float sineOfTurns(float turns) {
    const float half = turns - (turns > 0.5f ? 1.0f : 0.0f) + (turns < -0.5f ? 1.0f : 0.0f);
    const float wave = 8 * half - 16 * half * std::abs(half);
    return wave + 0.225f * (wave * std::abs(wave) - wave);
}

void turnByAngle(const float* __restrict angles, int count, Block& block) {
    constexpr float most = 1e6f; // turns that still fit an integer
    for (int i = 0; i < count; ++i) {
        const float turns = std::min(std::max(-most, angles[i] * (0.5f / pi)), most);
        const float part = turns - static_cast<float>(static_cast<int>(turns));
        const float ahead = part + 0.25f;
        block.sines[i] = sineOfTurns(part);
        block.cosines[i] = sineOfTurns(ahead - (ahead > 1 ? 1.0f : 0.0f));
    }
}

void colour(const ParticleSystem& system, int first, int count, bool fadeColour, Block& block) {
    using P = ParticleSystem;
    const float* __restrict red = system.row(P::red) + first;
    const float* __restrict green = system.row(P::green) + first;
    const float* __restrict blue = system.row(P::blue) + first;
    const float* __restrict alpha = system.row(P::alpha) + first;
    for (int i = 0; i < count; ++i) {
        const float share = fadeColour ? alpha[i] : 1;
        block.colours[i] = toByte(red[i] * share) | toByte(green[i] * share) << 8 |
                           toByte(blue[i] * share) << 16 | toByte(alpha[i]) << 24;
    }
}

// Added colours take no account of alpha by themselves.
bool addsColour(int blendMode) {
    return blendMode == static_cast<int>(BlendMode::add) || blendMode == static_cast<int>(BlendMode::brighten);
}

} // namespace

std::uint32_t billboardColour(const Vec4& colour) {
    return toByte(colour.x) | toByte(colour.y) << 8 | toByte(colour.z) << 16 | toByte(colour.w) << 24;
}

int buildBillboards(const ParticleSystem& system, const Vec3& right, const Vec3& up,
                    std::vector<BillboardVertex>& vertices) {
    using P = ParticleSystem;
    const ParticleSetDesc& desc = system.desc();
    const Vec3 towards = cross(right, up) * desc.pivot.z;
    const bool fadeColour = addsColour(desc.blendMode);
    const std::size_t most = static_cast<std::size_t>(system.live()) * 4;
    if (vertices.size() < most) vertices.resize(most);
    BillboardVertex* out = vertices.data();
    const BillboardVertex* const end = out + most;
    Block block;
    for (int first = 0; first < system.used(); first += blockSize) {
        const int count = std::min(blockSize, system.used() - first);
        const auto row = [&](P::Row which) { return system.row(which) + first; };
        if (desc.speedAligned)
            turnAlongVelocity(row(P::velocityX), row(P::velocityY), count, block);
        else
            turnByAngle(row(P::angle), count, block);
        colour(system, first, count, fadeColour, block);
        const float *xs = row(P::x), *ys = row(P::y), *zs = row(P::z), *ages = row(P::age);
        const float *widths = row(P::width), *heights = row(P::height);
        for (int i = 0; i < count && out < end; ++i) {
            if (ages[i] < 0) continue;
            const float c = block.cosines[i], s = block.sines[i];
            const Vec3 across = right * (c * widths[i]) + up * (s * widths[i]);
            const Vec3 along = up * (c * heights[i]) - right * (s * heights[i]);
            const Vec3 corner = Vec3{xs[i], ys[i], zs[i]} + towards - across * (desc.pivot.x + 0.5f) -
                                along * (desc.pivot.y - 0.5f);
            const std::uint32_t tint = block.colours[i];
            out[0] = {corner, {0, 0}, tint};
            out[1] = {corner - along, {0, 1}, tint};
            out[2] = {corner - along + across, {1, 1}, tint};
            out[3] = {corner + across, {1, 0}, tint};
            out += 4;
        }
    }
    return static_cast<int>(out - vertices.data()) / 4;
}

} // namespace Zelkor
