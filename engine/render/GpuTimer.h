// Measures the time the graphics processor takes for what is drawn between begin and end. Results come a few
// frames later, without waiting. Where the context has no timer queries, nothing is measured.
#pragma once

#include <array>
#include <cstddef>
#include <optional>

namespace Zelkor {

class GpuTimer {
  public:
    GpuTimer() = default;
    ~GpuTimer();
    GpuTimer(const GpuTimer&) = delete;

    // Of the current context.
    static bool supported();

    // A context must be current, always the same one.
    void begin();
    void end();
    // The oldest finished measurement that has not been taken yet, in microseconds.
    std::optional<double> takeMicroseconds();

  private:
    static constexpr std::size_t depth = 8; // measurements under way; further ones are dropped

    struct Query {
        unsigned begin = 0, end = 0;
    };
    std::array<Query, depth> queries_{};
    std::size_t oldest_ = 0, pending_ = 0;
    bool running_ = false;
};

} // namespace Zelkor
