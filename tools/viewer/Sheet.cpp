#include "Sheet.h"

#include "render/GlRenderer.h"

#include <algorithm>
#include <cstdio>
#include <exception>

using namespace Zelkor;

namespace viewer {

namespace {

constexpr float visibleUnits = 96.46f; // height of the game's view at the plane of play
constexpr int labelHeight = 16;

struct Cell {
    int row, column;
    std::string label;
    std::string clip; // empty: at rest
    float seconds = 0;
};

class SheetPainter {
  public:
    SheetPainter(Studio& studio, const SheetOptions& options) : studio_(studio), options_(options) {}

    bool paint() {
        if (options_.silhouette) studio_.drawFlat();
        int row = 0;
        std::vector<Exhibit> exhibits;
        for (const std::string& unit : options_.units) {
            exhibits.emplace_back(studio_.scene, settings(unit));
            if (!exhibits.back().drawable()) {
                std::fprintf(stderr, "rustpike-viewer: there is no unit %s\n", unit.c_str());
                return false;
            }
            exhibits.back().show(false);
        }
        const bool grid = exhibits.size() > 1;
        const int across = grid ? std::min(8, static_cast<int>(exhibits.size())) : 1;
        for (std::size_t i = 0; i < exhibits.size(); ++i) {
            std::vector<Cell> cells =
                grid ? gridCell(exhibits[i], static_cast<int>(i), across) : clipCells(exhibits[i]);
            for (const Cell& cell : cells)
                row = std::max(row, cell.row + 1);
            drawCells(exhibits[i], cells);
        }
        return write(row);
    }

  private:
    ExhibitOptions settings(const std::string& unit) const {
        return {.unit = unit, .scale = options_.scale, .yaw = 0, .held = options_.held};
    }

    std::vector<Cell> gridCell(const Exhibit& exhibit, int index, int across) const {
        const std::vector<std::string> clips = exhibit.clips();
        const std::string clip = !options_.clips.empty() ? options_.clips[0] : clips.empty() ? "" : clips[0];
        return {{index / across, index % across, options_.units[static_cast<std::size_t>(index)], clip, 0}};
    }

    std::vector<Cell> clipCells(const Exhibit& exhibit) const {
        const std::vector<std::string> clips = options_.clips.empty() ? exhibit.clips() : options_.clips;
        if (clips.empty()) { // turned about instead
            std::vector<Cell> cells;
            for (int i = 0; i < options_.moments; ++i)
                cells.push_back({0, i, i == 0 ? options_.units[0] : "", "", static_cast<float>(i)});
            return cells;
        }
        std::vector<Cell> cells;
        for (std::size_t row = 0; row < clips.size(); ++row)
            for (int i = 0; i < options_.moments; ++i)
                cells.push_back({static_cast<int>(row), i, i == 0 ? clips[row] : "", clips[row],
                                 exhibit.length(clips[row]) * static_cast<float>(i) /
                                     static_cast<float>(std::max(options_.moments - 1, 1))});
        return cells;
    }

    void drawCells(Exhibit& exhibit, const std::vector<Cell>& cells) {
        exhibit.show(true);
        if (options_.silhouette) exhibit.blacken();
        const bool figure = !exhibit.clips().empty();
        const float fit = static_cast<float>(options_.size) / 720 * visibleUnits / (2.1f * exhibit.radius());
        const float zoom = options_.zoom > 0 ? options_.zoom : std::min(1.0f, fit);
        studio_.aim(exhibit.centre(), zoom);
        for (const Cell& cell : cells) {
            const float turned =
                cell.clip.empty() && !figure ? cell.seconds * 360 / static_cast<float>(options_.moments) : 0;
            exhibit.turn((options_.yaw > -360 ? options_.yaw : figure ? 90 : 0) + turned, 0);
            if (!cell.clip.empty() && !exhibit.play(cell.clip, cell.seconds))
                std::fprintf(stderr, "rustpike-viewer: there is no clip %s\n", cell.clip.c_str());
            exhibit.update();
            studio_.redraw(cell.column);
            studio_.renderer().present(); // clears
            studio_.draw();
            pictures_.push_back({cell, crop(studio_.renderer().readFramebuffer(), options_.size)});
            columns_ = std::max(columns_, cell.column + 1);
        }
        exhibit.show(false);
    }

    bool write(int rows) const {
        const int high = options_.size + labelHeight;
        forge::Canvas sheet(columns_ * options_.size, rows * high, 244);
        for (const Picture& picture : pictures_) {
            sheet.paste(picture.canvas, picture.cell.column * options_.size,
                        picture.cell.row * high + labelHeight);
            sheet.label(picture.cell.column * options_.size + 4, picture.cell.row * high + 3,
                        picture.cell.label);
        }
        try {
            forge::writePng(options_.file, sheet);
        } catch (const std::exception& problem) {
            std::fprintf(stderr, "rustpike-viewer: %s\n", problem.what());
            return false;
        }
        return true;
    }

    struct Picture {
        Cell cell;
        forge::Canvas canvas;
    };

    Studio& studio_;
    const SheetOptions& options_;
    std::vector<Picture> pictures_;
    int columns_ = 1;
};

} // namespace

forge::Canvas crop(const Image& image, int size) {
    forge::Canvas canvas(size, size);
    const int left = image.width / 2 - size, top = image.height / 2 - size;
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x)
            for (int c = 0; c < 3; ++c) {
                int sum = 0;
                for (int k = 0; k < 4; ++k) {
                    const int sourceX = left + 2 * x + k % 2, sourceY = top + 2 * y + k / 2;
                    if (sourceX < 0 || sourceY < 0 || sourceX >= image.width || sourceY >= image.height)
                        continue;
                    sum += image.pixels[static_cast<std::size_t>((sourceY * image.width + sourceX) * 3 + c)];
                }
                canvas.rgb[static_cast<std::size_t>((y * size + x) * 3 + c)] = static_cast<uint8_t>(sum / 4);
            }
    return canvas;
}

bool writeSheet(Studio& studio, const SheetOptions& options) {
    return SheetPainter(studio, options).paint();
}

} // namespace viewer
