#include "Orbit.h"

#include "VirtualKeys.h"

#include "core/TimerManager.h"
#include "render/GlRenderer.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

using namespace Zelkor;

namespace viewer {

namespace {

constexpr float degreesAPixel = 0.4f;
constexpr float zoomANotch = 1.15f;
constexpr float flickerSeconds = 0.09f;

} // namespace

Orbit::Orbit(platform::Platform& system, Studio& studio, Exhibit& exhibit, const std::string& clip)
    : system_(system), studio_(studio), exhibit_(exhibit), clips_(exhibit.clips()) {
    const auto found = std::find(clips_.begin(), clips_.end(), clip);
    if (found != clips_.end()) clip_ = static_cast<int>(found - clips_.begin());
    chooseClip(0);
}

void Orbit::chooseClip(int step) {
    if (clips_.empty()) return;
    const int count = static_cast<int>(clips_.size());
    clip_ = (clip_ + step + count) % count;
    const std::string& name = clips_[static_cast<std::size_t>(clip_)];
    exhibit_.play(name, 0);
    std::printf("%s, %.2f s\n", name.c_str(), static_cast<double>(exhibit_.length(name)));
    std::fflush(stdout);
}

bool Orbit::press(int key) {
    switch (key) {
    case platform::key::escape:
        return false;
    case platform::key::right:
        chooseClip(1);
        break;
    case platform::key::left:
        chooseClip(-1);
        break;
    case platform::key::space:
        paused_ = !paused_;
        break;
    default:
        break;
    }
    return true;
}

bool Orbit::handle(const platform::Message& message) {
    using platform::MessageKind;
    studio_.renderer().handleMessage(message);
    if (message.kind == MessageKind::quit) exitCode_ = message.code;
    if (message.kind == MessageKind::quit || message.kind == MessageKind::close) return false;
    if (message.kind == MessageKind::mouseButton && message.code == 0) dragging_ = message.down;
    if (message.kind == MessageKind::wheel)
        zoom_ = std::clamp(zoom_ * (message.delta > 0 ? zoomANotch : 1 / zoomANotch), 0.1f, 40.0f);
    if (message.kind == MessageKind::key && message.down) return press(message.code);
    return true;
}

void Orbit::drag() {
    const auto cursor = studio_.renderer().window()->cursorPosition();
    if (!cursor) return;
    if (dragging_) {
        yaw_ += static_cast<float>(cursor->x - cursor_.x) * degreesAPixel;
        pitch_ =
            std::clamp(pitch_ + static_cast<float>(cursor->y - cursor_.y) * degreesAPixel, -89.0f, 89.0f);
    }
    cursor_ = *cursor;
}

int Orbit::run(int frames) {
    TimerManager& timers = TimerManager::instance();
    float sinceRedraw = 0;
    for (int frame = 0, drawing = 0; frames < 0 || frame < frames; ++frame) {
        platform::Message message;
        while (system_.pollMessage(message))
            if (!handle(message)) return exitCode_;
        timers.beginFrame();
        timers.findTimer("main")->paused = paused_ ? 1.0f : 0.0f;
        while (timers.substepsLeft > 0)
            timers.stepTimers();
        sinceRedraw += timers.frameSeconds;
        if (sinceRedraw > flickerSeconds) {
            sinceRedraw = 0;
            studio_.redraw(++drawing);
        }
        drag();
        exhibit_.turn(yaw_, pitch_);
        exhibit_.update();
        studio_.aim(exhibit_.centre(), zoom_);
        studio_.draw();
        studio_.renderer().present();
    }
    return exitCode_;
}

} // namespace viewer
