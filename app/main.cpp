#include "CheckData.h"
#include "Options.h"
#include "Program.h"

#include "io/DataFiles.h"
#include "sdl/SdlPlatform.h"

#include <cstdio>

namespace {

constexpr int exitNoDisplay = 2;

} // namespace

int main(int argc, char** argv) {
    int exitCode = 0;
    const auto options = parseCommandLine(argc, argv, exitCode);
    if (!options) return exitCode;

    const bool headless = options->headless || options->checkData;
    if (!headless && !platform::SdlPlatform::displayAvailable()) {
        std::fputs("rustpike: there is no display to open a window on. --headless plays without one.\n",
                   stderr);
        return exitNoDisplay;
    }
    platform::SdlPlatform system({.headless = headless, .soundFile = options->soundFile});
    platform::setCurrent(&system);
    Zelkor::setDataFolder(findDataFolder(*options, system.programFolder()));
    return options->checkData ? checkData() : runProgram(system, *options);
}
