#pragma once

#include "check/Findings.h"

#include <string>

// file: "sound/shot1.wav"
void checkWavFile(const std::string& file, Findings& findings);
// file: "sound/town.ogg". Decodes all of it.
void checkOggFile(const std::string& file, Findings& findings);
