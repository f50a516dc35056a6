// Files appear whole or not at all: written beside their place, then renamed.
#pragma once

#include "write/MeshFile.h"

#include <string>
#include <vector>

namespace forge {

// Makes the folders on the way. Throws std::runtime_error when the disk refuses.
void writeFile(const std::string& path, const Bytes& bytes);
Bytes readFile(const std::string& path);

// "OUT: IN IN ..." for the build to read; blanks in names escaped.
void writeDepfile(const std::string& path, const std::string& output, const std::vector<std::string>& inputs);

} // namespace forge
