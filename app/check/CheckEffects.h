#pragma once

#include "check/Findings.h"

#include <set>
#include <string>

// file: "effects/bullet_hit.effect". materials: the names that material files define.
void checkEffectFile(const std::string& file, Findings& findings, const std::set<std::string>& materials);
