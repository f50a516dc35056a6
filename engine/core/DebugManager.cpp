#include "core/DebugManager.h"

#include "Platform.h"
#include "core/EngineManagers.h"
#include "gui/GuiWorkspace.h"
#include "gui/OverlayManager.h"
#include "render/Renderer.h"

namespace Zelkor {

namespace {

// Where the columns of the overlay stand, in fractions of the screen.
constexpr float columnsX[] = {0.01f, 0.31f, 0.41f, 0.51f};
constexpr float overlayTop = 0.01f, overlayDepth = 40, columnWidth = 0.2f, columnHeight = 1.2f;
constexpr float overlayTextHeight = 0.04f;
// Pencil on a sheet laid over the picture.
constexpr Vec4 overlayColour{0.16f, 0.16f, 0.2f, 1}, sheetColour{1, 1, 1, 0.6f};
constexpr float sheetWidth = 0.63f;

} // namespace

DebugManager::DebugManager() = default;
DebugManager::~DebugManager() = default;

void DebugManager::startUp() {
    showProfiler = false;
    overlayCountdown_ = 0;
    ticksPerMicrosecond_ = static_cast<double>(platform::current()->counterFrequency()) / 1'000'000;
    if (engineManagers() && engineManagers()->overlayManager)
        overlayWorkspace_ = std::make_unique<GuiScreenWorkspace>(true);
    endFrame();
}

void DebugManager::beginSection(ProfileId id) {
    const int number = static_cast<int>(id);
    int row = current_ + 1;
    while (row < maxRows && rows_[row].id != 0 && rows_[row].id != number)
        ++row;
    if (row >= maxRows) return;

    ProfileRow& opened = rows_[row];
    opened.id = number;
    opened.parent = current_;
    ++opened.calls;
    parent_ = current_;
    current_ = row;
    // Last, so that the search is not part of what is measured.
    opened.start = platform::current()->counter();
}

void DebugManager::endSection() {
    const std::int64_t now = platform::current()->counter();
    if (current_ >= 0) rows_[current_].accumulated += static_cast<double>(now - rows_[current_].start);
    current_ = parent_;
    parent_ = current_ >= 0 ? rows_[current_].parent : -1;
}

void DebugManager::addDebugLine(const Vec3& from, const Vec3& to, const Vec3& colour) {
    if (drawingEnabled) lines_.push_back({from, to, colour});
}

void DebugManager::renderDebug() {
    if (!drawingEnabled) return;
    beginSection(ProfileId::renderDebug);
    if (!lines_.empty())
        engineManagers()->renderer->drawLines(lines_.data(), static_cast<int>(lines_.size()));
    endSection();
}

std::span<const ColouredLine> DebugManager::lines() const {
    return lines_;
}

void DebugManager::endFrame() {
    lines_.clear();
    endSection();
    finished_ = rows_;
    finishedCount_ = static_cast<int>(rows().size());
    for (int row = 0; row < finishedCount_; ++row) {
        const int parent = finished_[row].parent;
        finished_[row].depth = parent < 0 ? 0 : finished_[parent].depth + 1;
    }
    if (overlayWorkspace_) overlayWorkspace_->root.visible = showProfiler;
    if (showProfiler) refreshOverlay();
    rows_.fill({});
    current_ = parent_ = -1;
    beginSection(ProfileId::frame);
}

// Not every frame: building the text would be the most expensive thing it shows.
void DebugManager::refreshOverlay() {
    if (++overlayCountdown_ < overlayPeriod) return;
    overlayCountdown_ = 0;
    overlay_ = {};
    for (const ProfileRow& row : finishedFrame()) {
        const double spent = microseconds(row.accumulated);
        overlay_.names += std::string(static_cast<std::size_t>(row.depth), '_');
        overlay_.names += profileName(row.id);
        overlay_.names += '\n';
        overlay_.calls += std::to_string(row.calls) + '\n';
        overlay_.microseconds += std::to_string(static_cast<std::int64_t>(spent)) + '\n';
        overlay_.microsecondsPerCall += std::to_string(static_cast<std::int64_t>(spent / row.calls)) + '\n';
    }
    showOverlay();
}

void DebugManager::showOverlay() {
    if (!overlayWorkspace_) return;
    const EngineManagers& engine = *engineManagers();
    engine.overlayManager->bringToFront(*overlayWorkspace_);
    overlayWorkspace_->root.deleteChildren();
    const auto lines = static_cast<float>(finishedFrame().size());
    overlayWorkspace_->root
        .createChild(GuiKind::rect, 0, 0, overlayDepth - 1, sheetWidth,
                     2 * overlayTop + lines * overlayTextHeight)
        ->colour = sheetColour;
    const std::string* texts[] = {&overlay_.names, &overlay_.calls, &overlay_.microseconds,
                                  &overlay_.microsecondsPerCall};
    for (std::size_t column = 0; column < std::size(texts); ++column) {
        GuiObject& text = *overlayWorkspace_->root.createChild(GuiKind::text, columnsX[column], overlayTop,
                                                               overlayDepth, columnWidth, columnHeight);
        text.setFont("FONT2");
        text.setTextParam(overlayTextHeight);
        text.setCharHeight(1 / engine.renderer->aspect);
        text.setText(*texts[column]);
        text.colour = overlayColour;
    }
}

std::span<const ProfileRow> DebugManager::finishedFrame() const {
    return {finished_.data(), static_cast<std::size_t>(finishedCount_)};
}

std::span<const ProfileRow> DebugManager::rows() const {
    std::size_t used = 0;
    while (used < rows_.size() && rows_[used].id != 0)
        ++used;
    return {rows_.data(), used};
}

double DebugManager::microseconds(double ticks) const {
    return ticksPerMicrosecond_ > 0 ? ticks / ticksPerMicrosecond_ : 0;
}

} // namespace Zelkor
