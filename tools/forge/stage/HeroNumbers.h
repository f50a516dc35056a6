// The hero's movement as the search knows it, in world units and seconds.
#pragma once

namespace forge::hero {

inline constexpr float timeStep = 1.0f / 60;
inline constexpr float runSpeed = 45;
inline constexpr float jumpSpeed = 85;
inline constexpr float bounceSpeed = 131.75f; // a jump off a shroom
inline constexpr float heldGravity = 60, gravity = 300;
inline constexpr float holdTime = 0.35f;
inline constexpr float fallSpeed = 130;
inline constexpr float halfWidth = 4.5f, height = 18;
inline constexpr float airGain = 150, airLoss = 50;      // towards the stick, and against or without it
inline constexpr float thrownSpeed = 45;                 // across, out of a cart that a wall has stopped
inline constexpr float rungStep = 4.5f, restBelow = 2;   // of feet on a ladder, from the middle of its foot
inline constexpr float belowTop = 13, belowOpenEnd = 25; // where a ladder ends for feet
inline constexpr float ladderAside = 2;                  // from its middle, to grab it
inline constexpr float climbPause = 0.3f;                // before he can grab the next

} // namespace forge::hero
