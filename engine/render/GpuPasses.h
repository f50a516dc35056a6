// Where the graphics processor spends a frame: each pass of the picture under its own name. Costs nothing
// while nobody measures.
#pragma once

#include "render/GpuTimer.h"

#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace Zelkor {

// While one exists, it measures every GpuPass. Only one at a time.
class GpuPasses {
  public:
    GpuPasses();
    ~GpuPasses();
    GpuPasses(const GpuPasses&) = delete;

    struct Time {
        std::string name;
        std::optional<double> microseconds; // none: nothing new is finished
    };
    // The oldest measurement not taken yet of every pass there has been, in the order of their first use.
    std::vector<Time> take();

  private:
    friend class GpuPass;
    GpuTimer& timer(const char* name);

    struct Entry {
        std::string name;
        GpuTimer timer;
    };
    std::deque<Entry> entries_; // timers stay where they are
};

// Measures from here to the end of the scope.
class GpuPass {
  public:
    explicit GpuPass(const char* name);
    ~GpuPass();
    GpuPass(const GpuPass&) = delete;

  private:
    GpuTimer* timer_;
};

} // namespace Zelkor
