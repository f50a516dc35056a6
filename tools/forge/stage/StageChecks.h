// What a stage must have and must not have, whatever it looks like.
#pragma once

#include "stage/Stage.h"
#include "stage/StageGrid.h"

#include <vector>

namespace forge {

// The menu that ends a stage.
inline constexpr int stageClearMenu = 8;

// Throws SourceError for the first fault: a trigger or a start to nothing, an event nothing ever sets off, a
// hero or enemy inside solid cells, a missing hero, camera area or end.
void checkStage(const Stage& stage, const StageGrid& grid);

// The events that lead to the stage-clear menu, itself included, by index.
std::vector<bool> eventsLeadingToEnd(const Stage& stage);

} // namespace forge
