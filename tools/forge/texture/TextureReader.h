// Reads a .texture source: one generator and its parameters. docs/formats/texture-source.md describes them.
#pragma once

#include "texture/Image.h"

#include <string>
#include <vector>

namespace forge {

struct TextureSource {
    Image image;
    std::vector<std::string> files; // everything read, for the build's dependencies
};

// includeFolders: where `include` and fonts are also looked for. Throws SourceError.
TextureSource readTexture(const std::string& path, const std::vector<std::string>& includeFolders = {});

} // namespace forge
