// `forge stage`: a stage source to the two files the game reads.
#pragma once

#include <string>

namespace forge {

struct StageJob {
    std::string source;    // a .stage
    std::string outFolder; // receives levelNNN.level and levelNNN.event
    std::string assets;    // where tiles are looked up; empty: the folder that holds the source's folder
    std::string map;       // a .png to draw the stage to; empty: none
};

// Prints one line about the stage. Throws SourceError for a faulty stage, std::runtime_error for a file that
// cannot be read or written.
void compileStage(const StageJob& job);

} // namespace forge
