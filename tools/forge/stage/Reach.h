// Whether a stage can be finished: a search over the places where the hero can stand, joined by walking and
// by every jump he can make.
#pragma once

#include "stage/Stage.h"
#include "stage/StageGrid.h"

#include <vector>

namespace forge {

// The hero's movement, in world units and seconds.
namespace hero {
inline constexpr float runSpeed = 45;
inline constexpr float jumpSpeed = 85;
inline constexpr float heldGravity = 60, gravity = 300;
inline constexpr float holdTime = 0.35f;
inline constexpr float fallSpeed = 130;
inline constexpr float halfWidth = 4.5f, height = 18;
inline constexpr float airGain = 150, airLoss = 50; // towards the stick, and against or without it
} // namespace hero

struct Standing {
    int column = 0, row = 0; // the cell of the feet
    int area = -1;           // index among the camera areas
};

struct ReachResult {
    bool endReached = false;
    std::vector<Standing> standings; // every place he can get to, the start first
    std::vector<std::vector<Zelkor::Vec2>>
        jumps; // one path of the feet for each place first reached through the air
    int farthestColumn = 0;
};

// The stage must have passed checkStage. Ladders are not climbed and moving platforms not used.
ReachResult searchReach(const Stage& stage, const StageGrid& grid);

} // namespace forge
