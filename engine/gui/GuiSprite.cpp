#include "gui/GuiSprite.h"

#include "core/EngineManagers.h"
#include "gui/GuiShapes.h"
#include "render/Renderer.h"

#include <algorithm>
#include <cmath>

namespace Zelkor {

namespace {

// Frames of no duration may redirect in circles; one step plays no more of them than this.
constexpr int maxFramesAStep = 256;

float duration(const SpriteFrame& frame) {
    return std::max(frame.duration, 0.0f);
}

// Edges of one of count cells side by side, so that the centres of its outermost texels are drawn at its
// edges and none of a neighbour is. Drawing maps 0 and 1 to the centres of the texture's outermost texels.
struct Span {
    float from, to;
};

Span cellSpan(int cell, int count, int texels) {
    const float size = 1 / static_cast<float>(count), start = static_cast<float>(cell) * size;
    if (texels <= count) return {start, start + size}; // unknown, or no two texels for each
    const auto all = static_cast<float>(texels);
    return {start * all / (all - 1), ((start + size) * all - 1) / (all - 1)};
}

} // namespace

void GuiSprite::setDefinition(const SpriteDef* def) {
    def_ = def;
    playing_ = nullptr;
    animationName_.clear();
    finished_ = false;
    if (!def) return;
    texture_ = def->texture;
    width = def->width;
    height = def->height;
    showCell(0);
    if (!def->animations.empty()) begin(def->animations.front());
}

void GuiSprite::setTexture(const std::string& name) {
    texture_ = engineManagers()->renderer->getTexture(name);
    showCell(cell_);
}

bool GuiSprite::setAnimation(const std::string& name) {
    const SpriteAnimation* animation = def_ ? def_->animation(name) : nullptr;
    if (!animation) return false;
    if (animation != playing_ || finished_) begin(*animation);
    return true;
}

void GuiSprite::begin(const SpriteAnimation& animation) {
    playing_ = &animation;
    animationName_ = animation.name;
    time_ = 0;
    frame_ = 0;
    finished_ = animation.frames.empty() && animation.redirect.empty();
    if (!animation.frames.empty()) showCell(animation.frames.front().cell);
}

// Time that would only come round to the frame it started from.
float GuiSprite::skipWholeLoops(float seconds) const {
    if (!playing_->loop) return seconds;
    float round = 0;
    for (const SpriteFrame& frame : playing_->frames)
        round += duration(frame);
    return round > 0 && seconds >= round ? std::fmod(seconds, round) : seconds;
}

void GuiSprite::advance(float seconds) {
    if (!playing_ || finished_) return;
    time_ += skipWholeLoops(std::max(seconds * speed, 0.0f));
    for (int step = 0; step < maxFramesAStep; ++step) {
        const auto& frames = playing_->frames;
        if (frame_ < frames.size()) {
            const float length = duration(frames[frame_]);
            if (time_ < length) break;
            const bool last = frame_ + 1 == frames.size();
            const SpriteAnimation* next =
                last && !playing_->loop ? def_->animation(playing_->redirect) : nullptr;
            if (last && !playing_->loop && !next) {
                finished_ = true;
                break;
            }
            time_ -= length;
            if (next) {
                const float rest = time_;
                begin(*next);
                time_ = rest;
            } else {
                frame_ = last ? 0 : frame_ + 1;
            }
        } else { // an animation without frames
            const SpriteAnimation* next = def_->animation(playing_->redirect);
            if (!next) {
                finished_ = true;
                return;
            }
            const float rest = time_;
            begin(*next);
            time_ = rest;
        }
    }
    if (frame_ < playing_->frames.size() && playing_->frames[frame_].cell != cell_)
        showCell(playing_->frames[frame_].cell);
}

void GuiSprite::showCell(int cell) {
    cell_ = cell;
    const int columns = def_ ? std::max(def_->framesX, 1) : 1, rows = def_ ? std::max(def_->framesY, 1) : 1;
    int wide = 0, high = 0;
    if (texture_ >= 0) engineManagers()->renderer->getTextureSize(texture_, wide, high);
    const long long cells = static_cast<long long>(columns) * rows;
    const auto shown = static_cast<int>(std::clamp<long long>(cell, 0, std::min<long long>(cells, 1 << 30) - 1));
    const Span across = cellSpan(shown % columns, columns, wide), down = cellSpan(shown / columns, rows, high);
    corners_ = cornersOf(across.from, down.from, across.to, down.to);
}

} // namespace Zelkor
