#include "stage/StageMap.h"

#include <algorithm>
#include <cmath>

namespace forge {
namespace {

using Colour = Zelkor::Vec3; // 0..1

constexpr Colour paper{0.96f, 0.94f, 0.89f}, gridLine{0.89f, 0.87f, 0.82f}, rulerLine{0.80f, 0.78f, 0.71f};
constexpr Colour solidTile{0.69f, 0.58f, 0.42f}, ladder{0.47f, 0.63f, 0.43f}, ladderTop{0.27f, 0.51f, 0.24f},
    deadlyTile{0.78f, 0.20f, 0.16f};
constexpr Colour scenery{0.84f, 0.78f, 0.67f}, standing{0.35f, 0.67f, 0.35f}, leap{0.43f, 0.55f, 0.78f};
constexpr Colour areaBorder{0.12f, 0.35f, 0.67f}, exitZone{0.90f, 0.55f, 0.12f}, ride{0.72f, 0.45f, 0.80f},
    actor{0.59f, 0.16f, 0.55f}, heroMark{0.00f, 0.00f, 0.00f}, zone{0.24f, 0.67f, 0.67f};

class MapPainter {
  public:
    static constexpr int pixelsPerCell = 10;
    static constexpr int margin = 6; // cells around the tiles

    explicit MapPainter(const StageGrid& on)
        : picture((on.width() + 2 * margin) * pixelsPerCell, (on.height() + 2 * margin) * pixelsPerCell),
          grid(on) {
        box(0, 0, picture.width - 1, picture.height - 1, paper);
    }

    void rulers() {
        for (int i = 0; i <= picture.width; i += pixelsPerCell) {
            const int column = grid.firstColumn() + i / pixelsPerCell - margin;
            box(i, 0, i, picture.height - 1, column % 10 == 0 ? rulerLine : gridLine);
        }
        for (int i = 0; i <= picture.height; i += pixelsPerCell) {
            const int fromTop = i / pixelsPerCell;
            const int row = grid.firstRow() + grid.height() + margin - 1 - fromTop;
            box(0, i, picture.width - 1, i, row % 10 == 0 ? rulerLine : gridLine);
        }
    }

    void cell(int column, int row, const Colour& colour) {
        const Zelkor::Vec2 centre{grid.columnX(column), grid.rowY(row)};
        fill({centre.x - 4.5f, centre.y - 4.5f}, {centre.x + 4.5f, centre.y + 4.5f}, colour);
    }

    void fill(const Zelkor::Vec2& min, const Zelkor::Vec2& max, const Colour& colour) {
        box(pixelX(min.x), pixelY(max.y), pixelX(max.x), pixelY(min.y), colour);
    }

    void frame(const Zelkor::Vec2& min, const Zelkor::Vec2& max, const Colour& colour) {
        const int left = pixelX(min.x), right = pixelX(max.x), top = pixelY(max.y), bottom = pixelY(min.y);
        for (int i = 0; i < 2; ++i) {
            box(left, top + i, right, top + i, colour);
            box(left, bottom - i, right, bottom - i, colour);
            box(left + i, top, left + i, bottom, colour);
            box(right - i, top, right - i, bottom, colour);
        }
    }

    void dot(const Zelkor::Vec2& at, int radius, const Colour& colour) {
        const int x = pixelX(at.x), y = pixelY(at.y);
        box(x - radius, y - radius, x + radius, y + radius, colour);
    }

    void title(const std::string& text) { picture.label(2, picture.height - 14, text); }

    // Cells of the play plane are named by their column and row every ten.
    void names() {
        for (int column = 0; column < grid.width(); column += 10)
            picture.label((column + margin) * pixelsPerCell + 2, 2,
                          std::to_string(grid.firstColumn() + column));
    }

    Canvas picture;

  private:
    int pixelX(float x) const {
        const float cells = (x - grid.columnX(grid.firstColumn())) / cellSize + 0.5f + margin;
        return static_cast<int>(std::floor(cells * pixelsPerCell));
    }

    int pixelY(float y) const {
        const float cells = (grid.rowY(grid.firstRow() + grid.height() - 1) - y) / cellSize + 0.5f + margin;
        return static_cast<int>(std::floor(cells * pixelsPerCell));
    }

    // Corners included; what lies outside the picture is left out.
    void box(int left, int top, int right, int bottom, const Colour& colour) {
        for (int y = top; y <= bottom; ++y)
            for (int x = left; x <= right; ++x)
                picture.set(x, y, colour);
    }

    const StageGrid& grid;
};

void paintTiles(MapPainter& painter, const StageGrid& grid) {
    for (int row = grid.firstRow(); row < grid.firstRow() + grid.height(); ++row) {
        for (int column = grid.firstColumn(); column < grid.firstColumn() + grid.width(); ++column) {
            if (!grid.tile(column, row)) continue;
            const Colour& colour = grid.deadly(column, row)      ? deadlyTile
                                   : grid.solid(column, row)     ? solidTile
                                   : grid.ladderTop(column, row) ? ladderTop
                                                                 : ladder;
            painter.cell(column, row, colour);
        }
    }
}

void paintEvents(MapPainter& painter, const Stage& stage) {
    for (const StageEvent& event : stage.events) {
        if (event.box) {
            const bool camera = event.keyword == "CameraBounds", edge = event.keyword == "CameraEdge";
            painter.frame(event.box->first, event.box->second, camera ? areaBorder : edge ? exitZone : zone);
        }
        if (event.at) {
            const bool isHero = event.keyword == "SpawnPlayer";
            painter.dot({event.at->x, event.at->y + cellSize / 2}, 4, isHero ? heroMark : actor);
        }
    }
}

void paintRides(MapPainter& painter, const ReachResult& reach) {
    for (const Ride& each : reach.rides)
        for (const Zelkor::Vec2& place : each.places)
            if (each.hold == Ride::Hold::Rungs)
                painter.dot(place, 1, ride);
            else
                painter.fill({place.x - each.half, place.y - 1}, {place.x + each.half, place.y}, ride);
}

} // namespace

Canvas drawStageMap(const Stage& stage, const StageGrid& grid, const ReachResult& reach) {
    MapPainter painter(grid);
    painter.rulers();
    painter.names();
    for (const StageTile& tile : stage.scenery)
        painter.dot({tile.position.x, tile.position.y}, 3, scenery);
    paintTiles(painter, grid);
    for (const auto& path : reach.jumps)
        for (const Zelkor::Vec2& point : path)
            painter.dot(point, 0, leap);
    paintRides(painter, reach);
    for (const Standing& place : reach.standings)
        painter.dot({place.feet.x, place.feet.y + 1}, place.ride < 0 ? 2 : 1, standing);
    paintEvents(painter, stage);
    painter.title(reach.endReached
                      ? "END REACHED"
                      : "END NOT REACHED, FARTHEST COLUMN " + std::to_string(reach.farthestColumn));
    return std::move(painter.picture);
}

} // namespace forge
