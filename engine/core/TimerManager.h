// Turns the wall clock into one to three update substeps a frame, and keeps the named timers that the game
// pauses and scales one by one.
#pragma once

#include <cstdint>
#include <list>
#include <string>
#include <string_view>

namespace Zelkor {

// What is paused or slowed reads its own timer; what must keep moving reads "main".
struct GameTimer {
    std::string name;
    double total = 0;      // seconds
    float delta = 0;       // seconds of the current substep
    float scale = 1;       // of the substep
    float paused = 0;      // 0: running; else delta stays 0
    float maxDelta = 0.3f; // seconds
};

class TimerManager {
  public:
    // Created at the first call, with the timer "main" and the clock of platform::current() read once.
    static TimerManager& instance();
    // For tests: the next instance() is a new one. Timers found before are gone.
    static void reset();

    // Names are not checked for duplicates. The timer stays where it is for the life of the manager.
    GameTimer& addTimer(std::string_view name);
    // The first timer of that name, null if there is none.
    GameTimer* findTimer(std::string_view name);
    // In registration order.
    std::list<GameTimer>& timers() { return timers_; }

    // Once a frame: measures the wall time since the last call and divides it into substeps.
    void beginFrame();
    // Once a substep: advances every timer.
    void stepTimers();

    int substepsLeft = 0;        // of this frame; run one while it is above 0
    float stepSeconds = 0;       // length of one substep, at most 1/30
    float frameSeconds = 0;      // wall time between the last two beginFrame calls
    float fixedFrameSeconds = 0; // above 0: every frame lasts this long, whatever the clock says

  private:
    TimerManager();

    std::list<GameTimer> timers_;
    std::int64_t lastClock_; // milliseconds
};

} // namespace Zelkor
