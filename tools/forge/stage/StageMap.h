// A whole stage at a glance: cells by kind, camera areas, exits, events, and the places the hero can get to.
#pragma once

#include "picture/Canvas.h"
#include "stage/Reach.h"
#include "stage/Stage.h"
#include "stage/StageGrid.h"

namespace forge {

Canvas drawStageMap(const Stage& stage, const StageGrid& grid, const ReachResult& reach);

} // namespace forge
