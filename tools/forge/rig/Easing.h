// The ways from one key to the next.
#pragma once

#include <string>

namespace forge {

enum class Easing {
    Smooth, // a spline through the neighbouring keys as well
    Linear,
    In,         // starts slowly
    Out,        // stops slowly
    InOut,      // both
    Snap,       // most of the way at once, then settles
    Overshoot,  // past the goal and back
    Anticipate, // backwards first
    Bounce,     // drops onto the goal
    Hold,       // stays, then jumps
};

inline constexpr const char* easingNames = "smooth linear in out inout snap overshoot anticipate bounce hold";

// False for an unknown name.
bool easingNamed(const std::string& name, Easing& out);

// Progress 0..1 to the share of the way; 0 at 0 and 1 at 1. Smooth is linear here: its curve needs
// neighbours.
float eased(Easing easing, float u);

} // namespace forge
