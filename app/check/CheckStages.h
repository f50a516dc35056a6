#pragma once

#include "check/Findings.h"

#include <string>

// file: "levels/level000.level".
void checkLevelFile(const std::string& file, Findings& findings);
// file: "levels/level000.event".
void checkEventFile(const std::string& file, Findings& findings);
// file: "units/tiles/area1/tiledef.txt".
void checkTileDefFile(const std::string& file, Findings& findings);
