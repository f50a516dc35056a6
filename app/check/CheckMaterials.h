#pragma once

#include "check/Findings.h"

#include <set>
#include <string>

// file: "materials/robot.material". The names of the materials it defines are added to defined.
void checkMaterialFile(const std::string& file, Findings& findings, std::set<std::string>& defined);
