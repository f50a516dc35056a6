// Writes what the game is doing, for tests and tools: one JSON object a traced frame, one a line.
#pragma once

#include "render/GpuPasses.h"
#include "render/Lightness.h"

#include <filesystem>
#include <fstream>

class Game;

class TraceWriter {
  public:
    TraceWriter(const std::filesystem::path& file, int every);
    bool failed() const { return !out_; }
    // After the frame has run.
    void write(int frame, const Game& game);

  private:
    std::ofstream out_;
    int every_;
};

// What the picture of each frame looks like in numbers, all of them 0..1: its lightness, the share of ragged pixels,
// and what has changed since the frame before: by pixels (mean square), as a whole, in the worst of sixteen blocks.
class MeasureWriter {
  public:
    explicit MeasureWriter(const std::filesystem::path& file);
    bool failed() const { return !out_; }
    void write(int frame, const Zelkor::Image& picture);

  private:
    std::ofstream out_;
    Zelkor::Lightness before_;
};

// The profiler's sections of each frame, CPU microseconds, and the GPU's where the driver measures them, for the
// frame and for each pass of the picture.
class ProfileWriter {
  public:
    explicit ProfileWriter(const std::filesystem::path& file);
    bool failed() const { return !out_; }
    void beforeFrame() { gpu_.begin(); }
    void write(int frame);

  private:
    std::ofstream out_;
    Zelkor::GpuTimer gpu_;
    Zelkor::GpuPasses passes_;
};
