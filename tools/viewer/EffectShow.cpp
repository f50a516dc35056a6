#include "EffectShow.h"

#include "Sheet.h"
#include "VirtualKeys.h"

#include "core/EngineManagers.h"
#include "core/TimerManager.h"
#include "fx/ParticleManager.h"
#include "picture/Canvas.h"
#include "render/GlRenderer.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>

using namespace Zelkor;

namespace viewer {

namespace {

constexpr float frameSeconds = 1.0f / 60;
constexpr float floorTop = -8;       // world units
constexpr float repeatSeconds = 2.5f; // a shown effect starts again
constexpr float zoomANotch = 1.15f;
constexpr int labelHeight = 16;
constexpr int framesARedraw = 6; // 0.1 s

// The frame of a moment: dense at first, for a flash is gone after three.
int frameOf(int moment) {
    return static_cast<int>(std::lround(static_cast<double>(moment) + 1 + 0.0195 * std::pow(moment, 3)));
}

ParticleManager& particles() {
    return *engineManagers()->particleManager;
}

} // namespace

bool EffectShow::Floor::solidTileAt(const Vec3& point, SolidTile& tile) const {
    if (point.y > floorTop) return false;
    tile.position = {10 * std::round(point.x / 10), floorTop - 5, 0};
    return true;
}

EffectShow::EffectShow(Studio& studio, const EffectOptions& options) : studio_(studio), options_(options) {
    if (options_.zoom <= 0) options_.zoom = 1;
    studio_.scene.showsEffects = true;
    particles().setTiles(&floor_);
    TimerManager::instance().fixedFrameSeconds = frameSeconds;
}

EffectShow::~EffectShow() {
    particles().clear();
    particles().setTiles(nullptr);
    studio_.scene.showsEffects = false;
}

bool EffectShow::allThere() const {
    for (const std::string& name : options_.effects)
        if (particles().loadEffect(name).sets.empty()) {
            std::fprintf(stderr, "rustpike-viewer: there is no effect %s\n", name.c_str());
            return false;
        }
    return true;
}

void EffectShow::start() {
    particles().clear();
    place_ = {};
    age_ = 0;
    instance_ = particles().createEffect(options_.effects[static_cast<std::size_t>(effect_)], place_);
}

void EffectShow::step() {
    TimerManager& timers = TimerManager::instance();
    timers.beginFrame();
    while (timers.substepsLeft > 0) {
        timers.stepTimers();
        const float dt = timers.findTimer("main")->delta;
        age_ += dt;
        place_.x += options_.drift * dt;
        instance_->setPosition(place_);
        particles().update();
    }
}

void EffectShow::draw(int redraw) {
    studio_.redraw(redraw);
    studio_.aim(place_, options_.zoom);
    studio_.draw();
}

bool EffectShow::writeStrips() {
    if (!allThere()) return false;
    const int rows = static_cast<int>(options_.effects.size()), high = options_.size + labelHeight;
    forge::Canvas strips(options_.moments * options_.size, rows * high, 244);
    for (effect_ = 0; effect_ < rows; ++effect_) {
        start();
        for (int moment = 0, frame = 0; moment < options_.moments; ++moment) {
            for (; frame < frameOf(moment); ++frame)
                step();
            studio_.renderer().present(); // clears
            draw(frame / framesARedraw);
            const int left = moment * options_.size, top = effect_ * high;
            strips.paste(crop(studio_.renderer().readFramebuffer(), options_.size), left, top + labelHeight);
            const std::string number = std::to_string(frame);
            strips.label(left + 4, top + 3,
                         moment == 0 ? options_.effects[static_cast<std::size_t>(effect_)] : number);
        }
    }
    try {
        forge::writePng(options_.file, strips);
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "rustpike-viewer: %s\n", problem.what());
        return false;
    }
    return true;
}

bool EffectShow::handle(const platform::Message& message) {
    using platform::MessageKind;
    studio_.renderer().handleMessage(message);
    if (message.kind == MessageKind::quit) exitCode_ = message.code;
    if (message.kind == MessageKind::quit || message.kind == MessageKind::close) return false;
    if (message.kind == MessageKind::wheel)
        options_.zoom = std::clamp(options_.zoom * (message.delta > 0 ? zoomANotch : 1 / zoomANotch), 0.1f, 40.0f);
    if (message.kind != MessageKind::key || !message.down) return true;
    const int count = static_cast<int>(options_.effects.size());
    if (message.code == platform::key::right) effect_ = (effect_ + 1) % count;
    if (message.code == platform::key::left) effect_ = (effect_ + count - 1) % count;
    if (message.code == platform::key::right || message.code == platform::key::left ||
        message.code == platform::key::space)
        start();
    return message.code != platform::key::escape;
}

int EffectShow::run(platform::Platform& system, int frames) {
    if (!allThere()) return 1;
    TimerManager::instance().fixedFrameSeconds = 0; // by the clock
    start();
    float seconds = 0;
    for (int frame = 0; frames < 0 || frame < frames; ++frame) {
        platform::Message message;
        while (system.pollMessage(message))
            if (!handle(message)) return exitCode_;
        if (age_ > repeatSeconds) start();
        step();
        seconds += TimerManager::instance().frameSeconds;
        draw(static_cast<int>(seconds / (framesARedraw * frameSeconds)));
        studio_.renderer().present();
    }
    return exitCode_;
}

} // namespace viewer
