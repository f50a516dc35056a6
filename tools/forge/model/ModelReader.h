// Reads a .model source. docs/formats/model.md describes it.
#pragma once

#include "model/Model.h"

#include <string>
#include <vector>

namespace forge {

struct ModelSource {
    Model model;
    std::vector<std::string> files; // everything read, for the build's dependencies
};

// Throws SourceError.
ModelSource readModel(const std::string& path, const std::vector<std::string>& includeFolders = {});

} // namespace forge
