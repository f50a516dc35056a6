// Reads a .font source: which outlines become which font of the game. docs/formats/font.md describes it.
#pragma once

#include "font/FontSheet.h"

#include <string>
#include <vector>

namespace forge {

struct FontSource {
    FontSettings settings;
    std::vector<std::string> files; // every file read
};

// outlineFolder: where the files of outlines are named from. Throws SourceError.
FontSource readFont(const std::string& path, const std::string& outlineFolder);

} // namespace forge
