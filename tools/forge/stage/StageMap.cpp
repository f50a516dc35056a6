#include "stage/StageMap.h"

#include <png.h>

#include <algorithm>
#include <cmath>

namespace forge {
namespace {

struct Colour {
    int r, g, b;
};

constexpr Colour paper{244, 240, 228}, gridLine{228, 223, 208}, rulerLine{205, 198, 180};
constexpr Colour solidTile{176, 148, 108}, ladder{120, 160, 110}, ladderTop{70, 130, 60},
    deadlyTile{200, 50, 40};
constexpr Colour scenery{214, 200, 172}, standing{90, 170, 90}, leap{110, 140, 200};
constexpr Colour areaBorder{30, 90, 170}, exitZone{230, 140, 30}, actor{150, 40, 140}, heroMark{0, 0, 0},
    zone{60, 170, 170};

class MapPainter {
  public:
    static constexpr int pixelsPerCell = 10;
    static constexpr int margin = 6; // cells around the tiles

    explicit MapPainter(const StageGrid& on) : grid(on) {
        picture.width = (grid.width() + 2 * margin) * pixelsPerCell;
        picture.height = (grid.height() + 2 * margin) * pixelsPerCell;
        picture.rgb.resize(static_cast<std::size_t>(picture.width) *
                           static_cast<std::size_t>(picture.height) * 3);
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

    void cell(int column, int row, Colour colour) {
        const Zelkor::Vec2 centre{grid.columnX(column), grid.rowY(row)};
        fill({centre.x - 4.5f, centre.y - 4.5f}, {centre.x + 4.5f, centre.y + 4.5f}, colour);
    }

    void fill(const Zelkor::Vec2& min, const Zelkor::Vec2& max, Colour colour) {
        box(pixelX(min.x), pixelY(max.y), pixelX(max.x), pixelY(min.y), colour);
    }

    void frame(const Zelkor::Vec2& min, const Zelkor::Vec2& max, Colour colour) {
        const int left = pixelX(min.x), right = pixelX(max.x), top = pixelY(max.y), bottom = pixelY(min.y);
        for (int i = 0; i < 2; ++i) {
            box(left, top + i, right, top + i, colour);
            box(left, bottom - i, right, bottom - i, colour);
            box(left + i, top, left + i, bottom, colour);
            box(right - i, top, right - i, bottom, colour);
        }
    }

    void dot(const Zelkor::Vec2& at, int radius, Colour colour) {
        const int x = pixelX(at.x), y = pixelY(at.y);
        box(x - radius, y - radius, x + radius, y + radius, colour);
    }

    MapPicture picture;

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
    void box(int left, int top, int right, int bottom, Colour colour) {
        for (int y = std::max(top, 0); y <= std::min(bottom, picture.height - 1); ++y) {
            for (int x = std::max(left, 0); x <= std::min(right, picture.width - 1); ++x) {
                const auto at = static_cast<std::size_t>(y * picture.width + x) * 3;
                picture.rgb[at] = static_cast<std::uint8_t>(colour.r);
                picture.rgb[at + 1] = static_cast<std::uint8_t>(colour.g);
                picture.rgb[at + 2] = static_cast<std::uint8_t>(colour.b);
            }
        }
    }

    const StageGrid& grid;
};

void paintTiles(MapPainter& painter, const StageGrid& grid) {
    for (int row = grid.firstRow(); row < grid.firstRow() + grid.height(); ++row) {
        for (int column = grid.firstColumn(); column < grid.firstColumn() + grid.width(); ++column) {
            if (!grid.tile(column, row)) continue;
            const Colour colour = grid.deadly(column, row)      ? deadlyTile
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

} // namespace

MapPicture drawStageMap(const Stage& stage, const StageGrid& grid, const ReachResult& reach) {
    MapPainter painter(grid);
    painter.rulers();
    for (const StageTile& tile : stage.scenery)
        painter.dot({tile.position.x, tile.position.y}, 3, scenery);
    paintTiles(painter, grid);
    for (const auto& path : reach.jumps)
        for (const Zelkor::Vec2& point : path)
            painter.dot(point, 0, leap);
    for (const Standing& place : reach.standings)
        painter.dot({grid.columnX(place.column), grid.rowY(place.row) - 4}, 2, standing);
    paintEvents(painter, stage);
    return std::move(painter.picture);
}

bool writePng(const MapPicture& picture, const std::string& file) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGB;
    return png_image_write_to_file(&image, file.c_str(), 0, picture.rgb.data(), 0, nullptr) != 0;
}

} // namespace forge
