// Whether a stage can be finished: a search over the places where the hero can stand or be carried, joined by
// walking, climbing, riding and by every jump he can make.
#pragma once

#include "stage/HeroNumbers.h"
#include "stage/Rides.h"
#include "stage/Stage.h"
#include "stage/StageGrid.h"

#include <vector>

namespace forge {

struct Standing {
    int column = 0, row = 0;  // the cell of the feet
    int area = -1;            // index among the camera areas
    int ride = -1, place = 0; // not on the ground: what carries him, and where
    Zelkor::Vec2 feet;
};

struct ReachResult {
    bool endReached = false;
    std::vector<Standing> standings; // every place he can get to, the start first
    std::vector<std::vector<Zelkor::Vec2>>
        jumps; // one path of the feet for each place first reached through the air
    int farthestColumn = 0;
    std::vector<Ride> rides; // that the stage has
};

// The stage must have passed checkStage. Doors count as open, and every ride is waited for.
ReachResult searchReach(const Stage& stage, const StageGrid& grid);

} // namespace forge
