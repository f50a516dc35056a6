#include "gui/HealthBar.h"

#include "gui/GuiPanel.h"
#include "math/Math.h"

#include <algorithm>

using namespace Zelkor;

namespace {

constexpr float left = 0.975f, top = 0.15f, width = 0.005f; // of the screen
constexpr float fillSpeed = 0.6f;                           // of the screen's height, per second

} // namespace

HealthBar::HealthBar(GuiPanel& parent)
    : parent_(parent), bar_(*parent.createChild(GuiKind::rect, left, top, 0, width, 0)) {
    bar_.colour = {201 / 255.0f, 75 / 255.0f, 39 / 255.0f, 1};
    bar_.visible = false;
}

HealthBar::~HealthBar() {
    parent_.removeChild(&bar_);
}

void HealthBar::show(bool filling) {
    bar_.visible = true;
    filling_ = filling;
    if (filling) bar_.height = 0;
}

void HealthBar::hide() {
    bar_.visible = false;
}

bool HealthBar::visible() const {
    return bar_.visible;
}

float HealthBar::height() const {
    return bar_.height;
}

void HealthBar::update(float share, float dt) {
    if (!bar_.visible) return;
    if (filling_) {
        shown_ = share;
        bar_.height = std::min(bar_.height + fillSpeed * dt, share * fullHeight);
        filling_ = bar_.height < share * fullHeight;
        return;
    }
    const float eased = dt * share + (1 - dt) * shown_;
    shown_ = moveTowards(shown_, eased, dt);
    bar_.height = std::max(0.0f, shown_ * fullHeight);
}
