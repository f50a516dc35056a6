// `forge stage`: a stage source to the two files the game reads.
#pragma once

#include <string>
#include <vector>

namespace forge {

// arguments: IN OUT_DIR [--assets DIR] [--map FILE.png]. IN is a .stage source; OUT_DIR receives
// levelNNN.level and levelNNN.event. The assets folder is the one IN stands in a folder of, unless given.
// Prints one line about the stage. Throws SourceError for a faulty stage, std::runtime_error for a file that
// cannot be read or written.
void stageCommand(const std::vector<std::string>& arguments);

} // namespace forge
