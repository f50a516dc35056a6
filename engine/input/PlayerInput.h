// What one player does in one update substep, whatever device it comes from.
#pragma once

#include "math/Math.h"

#include <cstdint>

namespace Zelkor {

struct PlayerInput {
    static constexpr std::uint32_t jumpMask = 1;
    static constexpr std::uint32_t fireMask = 2;
    static constexpr std::uint32_t startMask = 4;
    static constexpr std::uint32_t backMask = 8;
    static constexpr std::uint32_t acceptMask = 16;

    // Down in this substep.
    bool down(std::uint32_t mask) const { return (buttons & mask) != 0; }
    // Down in this substep and not in the one before.
    bool pressed(std::uint32_t mask) const { return down(mask) && (previousButtons & mask) == 0; }
    bool released(std::uint32_t mask) const { return !down(mask) && (previousButtons & mask) != 0; }

    std::uint32_t buttons = 0;
    std::uint32_t previousButtons = 0; // of the substep before, as the other previous ones
    Vec3 move; // x right, y up; length 1 from keys, a component up to about 2 with a thumb stick added
    Vec3 aim;
    Vec3 previousMove, previousAim;
};

} // namespace Zelkor
