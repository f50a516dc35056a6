#include "stage/StageGrid.h"

#include <algorithm>
#include <cmath>

namespace forge {

StageGrid::StageGrid(const Stage& stage) : origin(stage.origin) {
    if (stage.tiles.empty()) throw SourceError(stage.end, "the stage has no tiles");
    int right = stage.tiles[0].column, top = stage.tiles[0].row;
    left = right;
    bottom = top;
    for (const StageTile& each : stage.tiles) {
        left = std::min(left, each.column);
        bottom = std::min(bottom, each.row);
        right = std::max(right, each.column + each.kind->width - 1);
        top = std::max(top, each.row + each.kind->height - 1);
    }
    columns = right - left + 1;
    rows = top - bottom + 1;
    cells.resize(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows));
    for (const StageTile& each : stage.tiles)
        enter(each);
    checkStretching();
}

std::size_t StageGrid::index(int column, int row) const {
    return static_cast<std::size_t>((row - bottom) * columns + column - left);
}

bool StageGrid::inside(int column, int row) const {
    return column >= left && column < left + columns && row >= bottom && row < bottom + rows;
}

void StageGrid::enter(const StageTile& tile) {
    for (int row = tile.row; row < tile.row + tile.kind->height; ++row) {
        for (int column = tile.column; column < tile.column + tile.kind->width; ++column) {
            const StageTile*& cell = cells[index(column, row)];
            if (cell)
                throw SourceError(tile.place,
                                  "'" + tile.kind->name + "' overlaps '" + cell->kind->name + "'");
            cell = &tile;
        }
    }
}

// The game stretches one mesh over a run of equal tiles. A tile that stretches both ways merges a whole
// patch, and a patch that is no rectangle would lose cells from the picture.
void StageGrid::checkStretching() const {
    std::vector<bool> seen(cells.size());
    for (std::size_t start = 0; start < cells.size(); ++start) {
        const StageTile* first = cells[start];
        if (!first || seen[start] || !first->kind->stretchX || !first->kind->stretchY) continue;
        std::vector<std::pair<int, int>> patch{{first->column, first->row}};
        seen[index(first->column, first->row)] = true;
        int minColumn = first->column, maxColumn = minColumn, minRow = first->row, maxRow = minRow;
        for (std::size_t i = 0; i < patch.size(); ++i) {
            const auto [c, r] = patch[i];
            minColumn = std::min(minColumn, c);
            maxColumn = std::max(maxColumn, c);
            minRow = std::min(minRow, r);
            maxRow = std::max(maxRow, r);
            for (const auto& [dc, dr] : {std::pair{1, 0}, {-1, 0}, {0, 1}, {0, -1}}) {
                const StageTile* next = tile(c + dc, r + dr);
                if (!next || next->kind != first->kind || seen[index(c + dc, r + dr)]) continue;
                seen[index(c + dc, r + dr)] = true;
                patch.emplace_back(c + dc, r + dr);
            }
        }
        if (static_cast<int>(patch.size()) != (maxColumn - minColumn + 1) * (maxRow - minRow + 1))
            throw SourceError(first->place, "this patch of '" + first->kind->name +
                                                "' stretches both ways and must be a rectangle");
    }
}

const StageTile* StageGrid::tile(int column, int row) const {
    return inside(column, row) ? cells[index(column, row)] : nullptr;
}

int StageGrid::type(int column, int row) const {
    const StageTile* found = tile(column, row);
    return found ? found->kind->type : 0;
}

bool StageGrid::deadly(int column, int row) const {
    const int bits = type(column, row);
    return (bits & tile_type::deadly) && (bits & (tile_type::solid | tile_type::ladderTop));
}

int StageGrid::columnOf(float x) const {
    return static_cast<int>(std::lround((x - origin.x) / cellSize));
}

int StageGrid::rowOf(float y) const {
    return static_cast<int>(std::lround((y - origin.y) / cellSize));
}

} // namespace forge
