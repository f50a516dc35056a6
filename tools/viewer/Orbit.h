// The viewer's window: one unit, turned by the mouse, its clips one after the other.
#pragma once

#include "Exhibit.h"
#include "Studio.h"

#include "Platform.h"

#include <string>
#include <vector>

namespace viewer {

// Drag turns, the wheel moves closer; left and right choose the clip, space stops the time, escape ends.
class Orbit {
  public:
    Orbit(platform::Platform& system, Studio& studio, Exhibit& exhibit, const std::string& clip);
    // Until the window is closed, or for so many frames; below 0: no end. Returns the exit code.
    int run(int frames);

  private:
    // False: the program ends.
    bool handle(const platform::Message& message);
    bool press(int key);
    void drag();
    void chooseClip(int step);

    platform::Platform& system_;
    Studio& studio_;
    Exhibit& exhibit_;
    std::vector<std::string> clips_;
    int clip_ = 0;
    bool dragging_ = false;
    bool paused_ = false;
    platform::ClientPoint cursor_{};
    float yaw_ = 90, pitch_ = 0; // degrees
    float zoom_ = 3;
    int exitCode_ = 0;
};

} // namespace viewer
