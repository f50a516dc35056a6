// A grid of pictures from one texture, of which only the cells in view are drawn.
#pragma once

#include "gui/GuiObject.h"

#include <cstdint>
#include <functional>

namespace Zelkor {

class GuiTileArray final : public GuiObject {
  public:
    static constexpr std::int16_t empty = -1;
    // From the units of the array's parent to the screen: x and y in 0..1 inside the view.
    using Projection = std::function<Vec2(const Vec3&)>;

    GuiTileArray(const Vec3& at, float wide, float high)
        : GuiObject(GuiKind::tileArray, at, wide, high), axisX{wide, 0, 0}, axisY{0, high, 0} {}

    // All cells empty. None for counts below 1.
    void resize(int columns, int rows);
    int columns() const { return columns_; }
    int rows() const { return rows_; }
    // Cells outside the grid are empty and stay so.
    std::int16_t tile(int column, int row) const;
    void setTile(int column, int row, std::int16_t tile);

    void setTexture(const std::string& name) override;
    int textureHandle() const override { return texture_; }

    // Centre of a cell relative to the object's own place, before its rotation.
    Vec3 cellCentre(int column, int row) const;
    // Corners of a tile in the texture.
    GuiCorners tileCorners(std::int16_t tile) const;

    // Fills the list of cells to draw: those reached from the cell nearest to the middle of the view through
    // four neighbours without leaving the view by more than margin, empty ones left out.
    void findVisibleCells(const Projection& project, float margin);
    // As row * columns + column.
    const std::vector<int>& visibleCells() const { return visible_; }

    Vec3 origin;               // centre of the first cell
    Vec3 axisX, axisY;         // the way from the first column or row to one past the last
    int tilesX = 1, tilesY = 1; // tiles in the texture

  private:
    int nearestCell(const Projection& project) const;
    bool contains(int column, int row) const {
        return column >= 0 && row >= 0 && column < columns_ && row < rows_;
    }

    int texture_ = -1;
    int columns_ = 0, rows_ = 0;
    std::vector<std::int16_t> tiles_;
    std::vector<bool> visited_;
    std::vector<int> visible_, pending_;
    int start_ = 0; // cell nearest to the middle of the view when it was last looked for
};

} // namespace Zelkor
