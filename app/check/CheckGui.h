#pragma once

#include "check/Findings.h"

#include <string>

// file: "spritedef/mapmarker.spritedef".
void checkSpriteDefFile(const std::string& file, Findings& findings);
// file: "sample.fnt".
void checkFontFile(const std::string& file, Findings& findings);
