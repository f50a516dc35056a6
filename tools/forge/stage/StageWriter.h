// The two files the game reads a stage from.
#pragma once

#include "stage/Stage.h"
#include "stage/StageGrid.h"

#include <string>

namespace forge {

// "level" and the number in three digits: the name of both files.
std::string stageFileName(const Stage& stage);
std::string levelText(const Stage& stage, const StageGrid& grid);
// Every trigger must name an event.
std::string eventText(const Stage& stage);

} // namespace forge
