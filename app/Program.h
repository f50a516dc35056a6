// The life of the process: start-up, the main loop and shutdown.
#pragma once

#include "Options.h"

#include <filesystem>

namespace platform {
class Platform;
}

// The data folder the options name or, without one, the first that exists of "data" in the working directory,
// beside the executable or one folder above it, and the installed one.
std::filesystem::path findDataFolder(const Options& options, const std::filesystem::path& executableFolder);

// Runs the program on the current platform. Returns the process's exit code.
int runProgram(platform::Platform& system, const Options& options);
