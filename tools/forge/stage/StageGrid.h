// The play plane of a stage, cell by cell, as the hero meets it.
#pragma once

#include "stage/Stage.h"

#include <vector>

namespace forge {

class StageGrid {
  public:
    // Throws SourceError where two tiles claim one cell, or where stretchable tiles would not merge into
    // whole rectangles.
    explicit StageGrid(const Stage& stage);

    int firstColumn() const { return left; }
    int firstRow() const { return bottom; }
    int width() const { return columns; }
    int height() const { return rows; }

    // Null for an empty cell and outside.
    const StageTile* tile(int column, int row) const;
    // 0 for an empty cell and outside.
    int type(int column, int row) const;
    bool solid(int column, int row) const { return (type(column, row) & tile_type::solid) != 0; }
    bool deadly(int column, int row) const;
    // Ground from above that can be jumped through from below.
    bool ladderTop(int column, int row) const {
        return (type(column, row) & ~tile_type::bridge) == tile_type::ladderTop;
    }

    // The cell of a world point.
    int columnOf(float x) const;
    int rowOf(float y) const;
    float columnX(int column) const { return origin.x + cellSize * static_cast<float>(column); }
    float rowY(int row) const { return origin.y + cellSize * static_cast<float>(row); }

  private:
    void enter(const StageTile& tile);
    void checkStretching() const;
    std::size_t index(int column, int row) const;
    bool inside(int column, int row) const;

    Zelkor::Vec2 origin;
    int left = 0, bottom = 0, columns = 0, rows = 0;
    std::vector<const StageTile*> cells;
};

} // namespace forge
