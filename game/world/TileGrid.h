// The tiles of a stage and the world's collision model: a uniform grid of square cells, 10 world units wide,
// that holds every tile of the play plane (z exactly 0). Tiles off the plane are drawn only.
#pragma once

#include "fx/ParticleSystem.h"
#include "math/Math.h"
#include "world/LevelFile.h"

#include <list>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace Zelkor {
class Scene;
class TokenReader;
class Unit;
} // namespace Zelkor

// Collision kinds of a tile, tested against the mask of every query. The grid attaches no meaning to them.
namespace TileType {
inline constexpr int solid = 1;
inline constexpr int ladder = 2;
inline constexpr int ladderTop = 4;
inline constexpr int deadly = 8; // together with solid or ladderTop
inline constexpr int rail = 8;   // alone: what rail followers look for
inline constexpr int bridge = 0x100;
inline constexpr int any = 0xFFFF;
} // namespace TileType

inline constexpr float tileSize = 10; // world units

struct TileRecord {
    std::string name;
    Zelkor::Unit* unit = nullptr; // none for blocks added by addSolidCell
    Zelkor::Vec3 size{1, 1, 1};   // cells, after merging
    Zelkor::Vec3 position;        // of the anchor: the lowest and leftmost tile of a merged run
    int type = TileType::solid;
    bool stretchX = false, stretchY = false;
    std::list<std::unique_ptr<TileRecord>>::iterator place; // in the grid's records
    int levelIndex = -1;                                    // of its unit among the level's units

    // World y of the upper side.
    float surfaceHeight() const { return position.y + 10 * size.y - 5; }
};

struct RayHit {
    bool hit = false;
    TileRecord* record = nullptr;
    Zelkor::Vec3 point;
};

class TileGrid : public Zelkor::SolidTiles {
  public:
    // Units of tiles are created in scene, which must outlive the grid. levelUnits is the session's list of
    // level units: the grid keeps it up to date, and nothing else changes it.
    TileGrid(Zelkor::Scene& scene, std::vector<Zelkor::Unit*>& levelUnits);
    ~TileGrid() override;
    TileGrid(const TileGrid&) = delete;

    // The definitions of the ten tile sets, in their fixed order.
    void loadTileSets();
    // Reads "data/levels/" + name + ".level" and builds the stage's tiles. A missing file leaves no tiles and
    // a 0 x 0 grid.
    void loadLevel(const std::string& name, bool forPlay);
    void readLevel(Zelkor::TokenReader& reader, bool forPlay);
    void placeTile(const std::string& name, const Zelkor::Vec3& position, const Zelkor::Quat& rotation,
                   bool forPlay);
    // Enters a placed tile into the grid. A tile that stretches swallows the units of the run it joins, in
    // whatever order the tiles of the run come; one that stretches along both axes fills the rectangle
    // around the tiles it meets.
    void registerTile(Zelkor::Unit* unit);
    // Stores a record in a cell, growing the grid when the cell lies outside. Growing to the left or
    // downwards renumbers the cells. Nothing is stored where the grid would exceed maxGridCells.
    void setCell(int column, int row, TileRecord* record);

    // None outside the grid, for an empty cell, or when the record's type has no bit of mask.
    TileRecord* tileAt(const Zelkor::Vec3& point, int mask) const;
    // What particles bounce off.
    bool solidTileAt(const Zelkor::Vec3& point, Zelkor::SolidTile& tile) const override;
    // The x where the run of occupied cells through (x, y) ends; direction < 1 looks left. x itself when the
    // point lies outside the grid.
    float edgeOfRun(float x, float y, int direction, int extraRows) const;
    // The first cell of type 1 on the way; the ray gives up after 100 cells.
    RayHit castRay(const Zelkor::Vec3& from, const Zelkor::Vec3& to) const;

    // An invisible block of type 1 over the cell of (x, y).
    void addSolidCell(float x, float y);
    // Takes such a block away again; nothing where there is none.
    void removeSolidCell(float x, float y);
    // Clears every cell of the record and deletes it; its unit stays.
    void removeRecord(TileRecord* record);
    // Deletes the unit, and the record of the tile if it stands in the grid.
    void removeTileUnit(Zelkor::Unit* unit);
    // Breaks the bridge tile at the point, if there is one, into two falling planks. A force above 10000
    // looks for a bridge among the solid tiles.
    void breakBridge(const Zelkor::Vec3& point, float force);
    // The same in every cell of the grid that is no farther than radius from the point.
    void breakBridges(const Zelkor::Vec3& point, float radius, float force);

    // The middle of the cell around a point, also outside the grid; z 0.
    Zelkor::Vec3 cellCentre(const Zelkor::Vec3& point) const;
    float originX() const { return originX_; }
    float originY() const { return originY_; }
    int width() const { return width_; }
    int height() const { return height_; }
    const std::vector<TileDef>& defs() const { return defs_; }
    const std::list<std::unique_ptr<TileRecord>>& records() const { return records_; }

  private:
    struct CellRange {
        int left = 0, bottom = 0, right = -1, top = -1; // inclusive
    };

    int columnOf(float x) const;
    int rowOf(float y) const;
    bool contains(int column, int row) const;
    TileRecord*& cell(int column, int row);
    TileRecord* cell(int column, int row) const;
    bool occupied(int column, int row) const;
    // Grows the grid as far as the cell needs and gives the cell its new number. False: it would be too
    // large.
    bool include(int& column, int& row);

    void clear();
    TileRecord& addRecord(TileRecord record);
    TileRecord describe(Zelkor::Unit& unit) const;
    int followRun(Zelkor::Vec3& end, const Zelkor::Vec3& step, const TileRecord& tile,
                  std::vector<TileRecord*>& met) const;
    void mergeRun(TileRecord& tile, Zelkor::Vec3& scale, std::vector<TileRecord*>& met) const;
    void enter(TileRecord& record);
    CellRange cellsAround(const TileRecord& record) const;
    bool covers(const TileRecord& record) const;
    void swallow(TileRecord& record);
    int levelIndexOf(const Zelkor::Unit* unit) const;
    void removeUnit(Zelkor::Unit* unit, int levelIndex);
    int wallInRow(int column, int row, int step, int edge) const;

    Zelkor::Scene& scene_;
    std::vector<Zelkor::Unit*>& levelUnits_;
    float originX_ = 0, originY_ = 0; // centre of cell (0, 0)
    int width_ = 0, height_ = 0;
    std::vector<TileRecord*> cells_; // row-major
    std::list<std::unique_ptr<TileRecord>> records_;
    std::vector<TileRecord*> levelRecords_; // of levelUnits_, one each; none for scenery
    bool loading_ = false;                  // tiles get their materials when all runs are complete
    std::vector<TileDef> defs_;
    std::unordered_map<std::string, int> defByName_; // the first of each name
};
