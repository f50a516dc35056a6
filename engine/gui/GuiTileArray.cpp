#include "gui/GuiTileArray.h"

#include "core/EngineManagers.h"
#include "gui/GuiShapes.h"
#include "render/Renderer.h"

#include <algorithm>

namespace Zelkor {

void GuiTileArray::resize(int columns, int rows) {
    const bool any = columns > 0 && rows > 0;
    columns_ = any ? columns : 0;
    rows_ = any ? rows : 0;
    tiles_.assign(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_), empty);
    visible_.clear();
    start_ = any ? rows_ / 2 * columns_ + columns_ / 2 : 0;
}

std::int16_t GuiTileArray::tile(int column, int row) const {
    return contains(column, row) ? tiles_[static_cast<std::size_t>(row * columns_ + column)] : empty;
}

void GuiTileArray::setTile(int column, int row, std::int16_t tile) {
    if (contains(column, row)) tiles_[static_cast<std::size_t>(row * columns_ + column)] = tile;
}

void GuiTileArray::setTexture(const std::string& name) {
    texture_ = engineManagers()->renderer->getTexture(name);
}

Vec3 GuiTileArray::cellCentre(int column, int row) const {
    return origin + static_cast<float>(column) / static_cast<float>(columns_) * axisX +
           static_cast<float>(row) / static_cast<float>(rows_) * axisY;
}

GuiCorners GuiTileArray::tileCorners(std::int16_t tile) const {
    const int across = std::max(tilesX, 1), down = std::max(tilesY, 1);
    const float wide = 1 / static_cast<float>(across), high = 1 / static_cast<float>(down);
    const float left = static_cast<float>(tile % across) * wide, top = static_cast<float>(tile / across) * high;
    return cornersOf(left, top, left + wide, top + high);
}

// Downhill over eight neighbours from the cell of the last time: views move little from frame to frame.
int GuiTileArray::nearestCell(const Projection& project) const {
    const auto distance = [&](int column, int row) {
        const Vec2 at = project(cellCentre(column, row));
        return (at.x - 0.5f) * (at.x - 0.5f) + (at.y - 0.5f) * (at.y - 0.5f);
    };
    int column = start_ % columns_, row = start_ / columns_;
    float best = distance(column, row);
    for (bool better = true; better;) {
        better = false;
        const int fromColumn = column, fromRow = row;
        for (int dy = -1; dy <= 1; ++dy)
            for (int dx = -1; dx <= 1; ++dx) {
                if (!contains(fromColumn + dx, fromRow + dy)) continue;
                const float d = distance(fromColumn + dx, fromRow + dy);
                if (!(d < best)) continue;
                best = d;
                column = fromColumn + dx;
                row = fromRow + dy;
                better = true;
            }
    }
    return row * columns_ + column;
}

void GuiTileArray::findVisibleCells(const Projection& project, float margin) {
    visible_.clear();
    if (tiles_.empty()) return;
    visited_.assign(tiles_.size(), false);
    const auto inView = [&](int cell) {
        const Vec2 at = project(cellCentre(cell % columns_, cell / columns_));
        return at.x >= -margin && at.x <= 1 + margin && at.y >= -margin && at.y <= 1 + margin;
    };
    const auto reach = [&](int column, int row) {
        if (!contains(column, row)) return;
        const int cell = row * columns_ + column;
        if (visited_[static_cast<std::size_t>(cell)]) return;
        visited_[static_cast<std::size_t>(cell)] = true;
        if (inView(cell)) pending_.push_back(cell);
    };
    start_ = nearestCell(project);
    pending_.clear();
    reach(start_ % columns_, start_ / columns_);
    for (std::size_t next = 0; next < pending_.size(); ++next) {
        const int cell = pending_[next], column = cell % columns_, row = cell / columns_;
        if (tiles_[static_cast<std::size_t>(cell)] != empty) visible_.push_back(cell);
        reach(column - 1, row);
        reach(column + 1, row);
        reach(column, row - 1);
        reach(column, row + 1);
    }
}

} // namespace Zelkor
