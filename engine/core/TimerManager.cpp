#include "core/TimerManager.h"

#include "Platform.h"

#include <algorithm>
#include <cassert>
#include <memory>

namespace Zelkor {

namespace {

constexpr float maxStepSeconds = 1.0f / 30;
constexpr float twoStepFrame = 1.0f / 30; // frames longer than this are cut in two,
constexpr float threeStepFrame = 0.05f;   // and than this in three

std::unique_ptr<TimerManager>& singleton() {
    static std::unique_ptr<TimerManager> manager;
    return manager;
}

} // namespace

TimerManager& TimerManager::instance() {
    auto& manager = singleton();
    if (!manager) manager.reset(new TimerManager);
    return *manager;
}

void TimerManager::reset() {
    singleton().reset();
}

TimerManager::TimerManager() {
    assert(platform::current());
    addTimer("main");
    lastClock_ = platform::current()->milliseconds();
}

GameTimer& TimerManager::addTimer(std::string_view name) {
    return timers_.emplace_back(GameTimer{.name = std::string(name)});
}

GameTimer* TimerManager::findTimer(std::string_view name) {
    const auto found = std::find_if(timers_.begin(), timers_.end(),
                                    [name](const GameTimer& timer) { return timer.name == name; });
    return found == timers_.end() ? nullptr : &*found;
}

void TimerManager::beginFrame() {
    const std::int64_t now = platform::current()->milliseconds();
    // Two frames within one tick of the clock still have to move on.
    if (now == lastClock_) --lastClock_;
    frameSeconds = fixedFrameSeconds > 0 ? fixedFrameSeconds : static_cast<float>(now - lastClock_) / 1000;
    lastClock_ = now;

    if (frameSeconds > threeStepFrame)
        substepsLeft = 3;
    else if (frameSeconds > twoStepFrame)
        substepsLeft = 2;
    else
        substepsLeft = 1;
    stepSeconds = std::min(frameSeconds / static_cast<float>(substepsLeft), maxStepSeconds);
}

void TimerManager::stepTimers() {
    for (GameTimer& timer : timers_) {
        timer.delta = timer.paused != 0 ? 0 : std::min(timer.scale * stepSeconds, timer.maxDelta);
        timer.total += timer.delta;
    }
    --substepsLeft;
}

} // namespace Zelkor
