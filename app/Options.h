// The command line.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

struct ScreenshotRequest {
    std::filesystem::path file;
    int frame = 0;
};

struct WindowSize {
    int width = 0, height = 0;
};

struct Options {
    std::filesystem::path data; // empty: look for it
    std::filesystem::path settings; // the folder of the settings file; empty: the player's own
    bool headless = false;
    std::optional<WindowSize> size;
    std::optional<bool> fullscreen;
    std::optional<int> stage;
    std::string stageName; // instead of a number: a file under data/levels
    std::optional<int> frames;
    float step = 0; // seconds of every frame; 0 for the wall clock
    std::optional<uint32_t> seed;
    std::filesystem::path input, record;
    std::vector<ScreenshotRequest> screenshots;
    std::filesystem::path trace;
    int traceEvery = 1;
    int drawEvery = 1;
    std::filesystem::path profile, measure;
    std::filesystem::path soundFile;
    bool checkData = false;
    // The picture, in this run only.
    std::optional<bool> postProcessing, flicker;
    std::optional<int> superSample, viewSize;
    std::optional<float> fade; // held, 0..1
    bool noShaders = false;    // as on a machine without them
    bool showProfiler = false;
};

// None when the program should end at once, with exitCode: after --help or --version (0) or a bad line (1),
// whose message has been printed.
std::optional<Options> parseCommandLine(int argc, const char* const* argv, int& exitCode);
