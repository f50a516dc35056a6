// The profiler, always measuring, with its text overlay; and line segments drawn over the scene for one
// frame.
#pragma once

#include "core/ProfileSections.h"

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace Zelkor {

class GuiWorkspace;
struct ColouredLine;
struct Vec3;

// One row of the frame's profile. Rows stand in the order in which they were first opened, parents before
// children. A section looks for its row only below the one that is open, so that the same id opened inside
// two sections usually has two rows.
struct ProfileRow {
    int id = 0;             // a ProfileId, 0: free
    int parent = -1;        // index of the enclosing row, -1 at the top
    std::int64_t start = 0; // counter value at the last begin
    double accumulated = 0; // counter ticks of all begins
    int calls = 0;
    int depth = 0; // of nesting; set in finishedFrame only
};

// The overlay, one line a row, each ended by "\n".
struct OverlayColumns {
    std::string names, calls, microseconds, microsecondsPerCall;
};

class DebugManager {
  public:
    static constexpr int maxRows = 100;
    static constexpr int overlayPeriod = 10; // frames from one text to the next

    DebugManager();
    ~DebugManager();
    DebugManager(const DebugManager&) = delete;

    // After the renderer is there: reads the counter's frequency and starts the first frame.
    void startUp();

    // Sections nest: each begin has its end. Without a free row the begin is ignored, and its end closes the
    // enclosing section.
    void beginSection(ProfileId id);
    void endSection();

    // Kept for this frame; ignored while drawingEnabled is false. Colour: red, green, blue 0..1.
    void addDebugLine(const Vec3& from, const Vec3& to, const Vec3& colour);
    // Hands the lines to the renderer.
    void renderDebug();
    std::span<const ColouredLine> lines() const;

    // Once a frame: closes "frame", refreshes the overlay, forgets rows and lines, opens "frame" again.
    void endFrame();

    // The overlay as it is drawn; null before startUp or without an overlay manager.
    const GuiWorkspace* overlayWorkspace() const { return overlayWorkspace_.get(); }
    // The text of the overlay. It changes every overlayPeriod frames, and only while showProfiler is set.
    const OverlayColumns& overlayColumns() const { return overlay_; }
    // The rows of the frame that ended at the last endFrame, until the next one.
    std::span<const ProfileRow> finishedFrame() const;
    // The rows of the frame in progress.
    std::span<const ProfileRow> rows() const;
    // 0 before startUp.
    double microseconds(double ticks) const;

    bool drawingEnabled = true;
    bool showProfiler = false;

  private:
    void refreshOverlay();
    void showOverlay();

    std::array<ProfileRow, maxRows> rows_;
    std::array<ProfileRow, maxRows> finished_;
    int current_ = -1; // row of the innermost open section
    int parent_ = -1;  // and of the one around it
    int finishedCount_ = 0;
    int overlayCountdown_ = 0; // frames since the text was rebuilt
    double ticksPerMicrosecond_ = 0;
    OverlayColumns overlay_;
    std::unique_ptr<GuiWorkspace> overlayWorkspace_;
    std::vector<ColouredLine> lines_; // reused from frame to frame
};

} // namespace Zelkor
