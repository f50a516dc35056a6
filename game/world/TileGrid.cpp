#include "world/TileGrid.h"

#include "actors/ThingyManager.h"
#include "animation/SkeletonInstance.h"
#include "game/Game.h"
#include "io/DataFiles.h"
#include "io/TokenReader.h"
#include "render/MaterialManager.h"
#include "resources/Scene.h"
#include "resources/Unit.h"

#include <algorithm>
#include <cmath>

using namespace Zelkor;

namespace {

constexpr const char* tileSets[] = {"area1", "train", "tiles1", "tiles2", "tiles6",
                                    "cave",  "space", "forest", "fort",   "base"};

constexpr float smallestStretch = 0.1f; // cells; a run of anything smaller is left as it is
constexpr float rayBorder = 5.1f;       // from the centre of a cell: just over its side
constexpr int rayMaxSteps = 100;
constexpr float bridgeForce = 10000; // above it any solid bridge breaks
constexpr const char* bridgeName = "tiles/tiles6/bridge";
constexpr const char* plankName = "tiles/tiles6/bridge_plank";

// Far outside any grid, and still safe to calculate with.
constexpr float farCell = 1 << 24;

// To the nearest, halves away from zero.
int cellIndex(float cells) {
    if (!(cells > -farCell)) return -static_cast<int>(farCell);
    if (!(cells < farCell)) return static_cast<int>(farCell);
    return static_cast<int>(std::round(cells));
}

int cellsAcross(float size) {
    return static_cast<int>(std::ceil(std::min(size, farCell)));
}

float truncated(float origin) {
    return static_cast<float>(static_cast<int>(origin));
}

// Over a stretched unit the texture repeats instead of stretching.
void repeatTexture(Unit& unit) {
    if (unit.scale.x == 1 && unit.scale.y == 1) return;
    for (RenderItem& item : unit.items) {
        MaterialManager::setShaderParam(item.ownMaterial(), "scaleX", unit.scale.x);
        MaterialManager::setShaderParam(item.ownMaterial(), "scaleY", unit.scale.y);
    }
}

} // namespace

TileGrid::TileGrid(Scene& scene, std::vector<Unit*>& levelUnits) : scene_(scene), levelUnits_(levelUnits) {}

TileGrid::~TileGrid() {
    clear();
}

// --- Cells ------------------------------------------------------------------------------------------------

int TileGrid::columnOf(float x) const {
    return cellIndex((x - originX_) / tileSize);
}

int TileGrid::rowOf(float y) const {
    return cellIndex((y - originY_) / tileSize);
}

bool TileGrid::contains(int column, int row) const {
    return column >= 0 && column < width_ && row >= 0 && row < height_;
}

TileRecord*& TileGrid::cell(int column, int row) {
    return cells_[static_cast<std::size_t>(row) * width_ + column];
}

TileRecord* TileGrid::cell(int column, int row) const {
    return cells_[static_cast<std::size_t>(row) * width_ + column];
}

bool TileGrid::occupied(int column, int row) const {
    return contains(column, row) && cell(column, row);
}

TileRecord* TileGrid::tileAt(const Vec3& point, int mask) const {
    const int column = columnOf(point.x), row = rowOf(point.y);
    if (!contains(column, row)) return nullptr;
    TileRecord* record = cell(column, row);
    return record && (record->type & mask) != 0 ? record : nullptr;
}

Vec3 TileGrid::cellCentre(const Vec3& point) const {
    return {originX_ + tileSize * static_cast<float>(columnOf(point.x)),
            originY_ + tileSize * static_cast<float>(rowOf(point.y)), 0};
}

bool TileGrid::solidTileAt(const Vec3& point, SolidTile& tile) const {
    const TileRecord* record = tileAt(point, TileType::solid);
    if (record) tile = {record->position, record->size.x, record->size.y};
    return record != nullptr;
}

void TileGrid::setCell(int column, int row, TileRecord* record) {
    if (include(column, row)) cell(column, row) = record;
}

bool TileGrid::include(int& column, int& row) {
    if (contains(column, row)) return true;
    const int left = std::max(0, -column), below = std::max(0, -row);
    const long long newWidth = std::max(width_, column + 1) + left;
    const long long newHeight = std::max(height_, row + 1) + below;
    if (newWidth * newHeight > maxGridCells) return false;

    std::vector<TileRecord*> grown(static_cast<std::size_t>(newWidth * newHeight), nullptr);
    for (int r = 0; r < height_; ++r) {
        const auto from = cells_.begin() + static_cast<std::ptrdiff_t>(r) * width_;
        std::copy(from, from + width_, grown.begin() + (r + below) * newWidth + left);
    }
    cells_ = std::move(grown);
    width_ = static_cast<int>(newWidth);
    height_ = static_cast<int>(newHeight);
    originX_ = truncated(originX_) - tileSize * static_cast<float>(left);
    originY_ = truncated(originY_) - tileSize * static_cast<float>(below);
    column += left;
    row += below;
    return true;
}

// --- Loading ----------------------------------------------------------------------------------------------

void TileGrid::loadTileSets() {
    for (const char* set : tileSets) {
        const std::string prefix = std::string("tiles/") + set + "/";
        const auto reader = openDataTokens("units/" + prefix + "tiledef.txt");
        if (reader) readTileDefs(*reader, prefix, defs_);
    }
    defByName_.clear();
    for (std::size_t i = 0; i < defs_.size(); ++i)
        defByName_.try_emplace(defs_[i].name, static_cast<int>(i));
}

void TileGrid::loadLevel(const std::string& name, bool forPlay) {
    clear();
    if (const auto reader = openDataTokens("levels/" + name + ".level")) readLevel(*reader, forPlay);
}

void TileGrid::readLevel(TokenReader& reader, bool forPlay) {
    clear();
    const LevelData level = readLevelData(reader);
    originX_ = level.originX;
    originY_ = level.originY;
    width_ = level.width;
    height_ = level.height;
    cells_.assign(static_cast<std::size_t>(width_) * height_, nullptr);
    levelUnits_.reserve(level.tiles.size());
    loading_ = true;
    for (const TilePlacement& tile : level.tiles)
        placeTile(level.names[tile.name], tile.position, {}, forPlay);
    loading_ = false;
    for (const auto& record : records_)
        if (record->unit) repeatTexture(*record->unit);
}

void TileGrid::clear() {
    for (Unit* unit : levelUnits_)
        scene_.removeUnit(unit);
    levelUnits_.clear();
    levelRecords_.clear();
    records_.clear();
    cells_.clear();
    originX_ = originY_ = 0;
    width_ = height_ = 0;
}

void TileGrid::placeTile(const std::string& name, const Vec3& position, const Quat& rotation, bool forPlay) {
    Unit* unit = scene_.createUnit(name, position, rotation);
    if (unit->skeleton) unit->skeleton->play("default");
    levelUnits_.push_back(unit);
    levelRecords_.push_back(nullptr);
    if (position.z == 0 && forPlay) registerTile(unit);
}

// --- Records ----------------------------------------------------------------------------------------------

TileRecord& TileGrid::addRecord(TileRecord record) {
    records_.push_back(std::make_unique<TileRecord>(std::move(record)));
    TileRecord& added = *records_.back();
    added.place = std::prev(records_.end());
    if (added.unit) added.levelIndex = levelIndexOf(added.unit);
    if (added.levelIndex >= 0) levelRecords_[added.levelIndex] = &added;
    return added;
}

TileRecord TileGrid::describe(Unit& unit) const {
    TileRecord record;
    record.name = unit.name();
    record.unit = &unit;
    record.position = unit.position;
    if (const auto found = defByName_.find(record.name); found != defByName_.end()) {
        const TileDef& def = defs_[found->second];
        record.size = def.size;
        record.type = def.type;
        record.stretchX = def.stretchX;
        record.stretchY = def.stretchY;
    }
    return record;
}

void TileGrid::registerTile(Unit* unit) {
    TileRecord tile = describe(*unit);
    Vec3 scale{1, 1, 1};
    std::vector<TileRecord*> met;
    mergeRun(tile, scale, met);

    // A stretched mesh grows around its middle; the meshes of stretched tiles are one cell large.
    unit->position = tile.position + Vec3{(scale.x - 1) * tileSize / 2, (scale.y - 1) * tileSize / 2, 0};
    unit->scale = scale;
    if (!loading_) repeatTexture(*unit);
    unit->updateWorldBox();
    enter(addRecord(std::move(tile)));
    for (TileRecord* record : met)
        swallow(*record);
}

// Widens the tile to the run it joins: its size, its position, and by how much its mesh stretches. met: the
// records of that run.
void TileGrid::mergeRun(TileRecord& tile, Vec3& scale, std::vector<TileRecord*>& met) const {
    const Vec3 size = tile.size, own = tile.position;
    Vec3 anchor = own;
    if (tile.stretchY && size.y >= smallestStretch) {
        const Vec3 up{0, tileSize * size.y, 0};
        Vec3 top = own;
        scale.y += static_cast<float>(followRun(anchor, -up, tile, met));
        scale.y += static_cast<float>(followRun(top, up, tile, met));
    }
    if (tile.stretchX && size.x >= smallestStretch) {
        const Vec3 right{tileSize * size.x, 0, 0};
        Vec3 end = anchor;
        scale.x += static_cast<float>(followRun(anchor, -right, tile, met));
        scale.x += static_cast<float>(followRun(end, right, tile, met));
    }
    tile.size = {size.x * scale.x, size.y * scale.y, size.z};
    tile.position = anchor;
}

// Steps from end over tiles of the same name and type. Returns how many there are; end becomes the last.
int TileGrid::followRun(Vec3& end, const Vec3& step, const TileRecord& tile,
                        std::vector<TileRecord*>& met) const {
    int count = 0;
    for (;;) {
        const Vec3 probe = end + step;
        TileRecord* record = tileAt(probe, tile.type);
        if (!record || record->name != tile.name) return count;
        if (std::find(met.rbegin(), met.rend(), record) == met.rend()) met.push_back(record);
        end = probe;
        ++count;
    }
}

void TileGrid::enter(TileRecord& record) {
    int left = columnOf(record.position.x), bottom = rowOf(record.position.y);
    const int columns = cellsAcross(record.size.x), rows = cellsAcross(record.size.y);
    if (columns <= 0 || rows <= 0 || !include(left, bottom)) return;
    int right = left + columns - 1, top = bottom + rows - 1;
    if (!include(right, top)) return; // upwards and to the right: nothing is renumbered
    for (int row = bottom; row <= top; ++row)
        for (int column = left; column <= right; ++column)
            cell(column, row) = &record;
}

// The cells in which a record can stand: one more on each side than its size says, because growing drops the
// fraction of the origin.
TileGrid::CellRange TileGrid::cellsAround(const TileRecord& record) const {
    const int left = columnOf(record.position.x), bottom = rowOf(record.position.y);
    return {std::max(0, left - 1), std::max(0, bottom - 1),
            std::min(width_ - 1, left + cellsAcross(record.size.x)),
            std::min(height_ - 1, bottom + cellsAcross(record.size.y))};
}

bool TileGrid::covers(const TileRecord& record) const {
    const CellRange range = cellsAround(record);
    for (int row = range.bottom; row <= range.top; ++row)
        for (int column = range.left; column <= range.right; ++column)
            if (cell(column, row) == &record) return true;
    return false;
}

// The record's run has got a new unit. Where the new record does not cover it, it goes on answering queries.
void TileGrid::swallow(TileRecord& record) {
    if (record.unit) removeUnit(record.unit, record.levelIndex);
    record.unit = nullptr;
    record.levelIndex = -1;
    if (!covers(record)) records_.erase(record.place);
}

void TileGrid::addSolidCell(float x, float y) {
    TileRecord block;
    block.position = cellCentre({x, y, 0});
    setCell(columnOf(x), rowOf(y), &addRecord(std::move(block)));
}

void TileGrid::removeSolidCell(float x, float y) {
    TileRecord* block = tileAt({x, y, 0}, TileType::any);
    if (block && !block->unit) removeRecord(block);
}

void TileGrid::removeRecord(TileRecord* record) {
    const CellRange range = cellsAround(*record);
    for (int row = range.bottom; row <= range.top; ++row)
        for (int column = range.left; column <= range.right; ++column)
            if (cell(column, row) == record) cell(column, row) = nullptr;
    if (record->levelIndex >= 0) levelRecords_[record->levelIndex] = nullptr;
    records_.erase(record->place);
}

void TileGrid::removeTileUnit(Unit* unit) {
    const int index = levelIndexOf(unit);
    TileRecord* record = index >= 0 ? levelRecords_[index] : tileAt(unit->position, TileType::any);
    if (record && record->unit == unit) removeRecord(record);
    removeUnit(unit, index);
}

// From the back: it is nearly always the newest unit that is asked for.
int TileGrid::levelIndexOf(const Unit* unit) const {
    const auto found = std::find(levelUnits_.rbegin(), levelUnits_.rend(), unit);
    return static_cast<int>(levelUnits_.rend() - found) - 1;
}

void TileGrid::removeUnit(Unit* unit, int levelIndex) {
    if (levelIndex >= 0) {
        // The last one takes its place in the list, whose order means nothing.
        levelUnits_[levelIndex] = levelUnits_.back();
        levelRecords_[levelIndex] = levelRecords_.back();
        if (levelRecords_[levelIndex]) levelRecords_[levelIndex]->levelIndex = levelIndex;
        levelUnits_.pop_back();
        levelRecords_.pop_back();
    }
    scene_.removeUnit(unit);
}

void TileGrid::breakBridge(const Vec3& point, float force) {
    const TileRecord* record = tileAt(point, force > bridgeForce ? TileType::solid : TileType::bridge);
    if (!record || !record->unit || record->unit->name() != bridgeName) return;
    Unit* bridge = record->unit;
    ThingyManager& actors = *Game::get().thingyManager;
    for (const float side : {-2.5f, 2.5f})
        actors.spawn(SpawnType::tileFall, plankName, bridge->position + Vec3{side, 3, 0});
    removeTileUnit(bridge);
}

void TileGrid::breakBridges(const Vec3& point, float radius, float force) {
    const int reach = static_cast<int>(radius / tileSize) + 1;
    const Vec3 middle = cellCentre(point);
    for (int row = -reach; row <= reach; ++row)
        for (int column = -reach; column <= reach; ++column) {
            const Vec3 cellMiddle =
                middle + Vec3{tileSize * static_cast<float>(column), tileSize * static_cast<float>(row), 0};
            const Vec3 half{tileSize / 2, tileSize / 2, 0};
            Vec3 nearest = clampVec3(point, cellMiddle - half, cellMiddle + half);
            nearest.z = point.z;
            if (distance(nearest, point) <= radius) breakBridge(cellMiddle, force);
        }
}

// --- Queries along cells ----------------------------------------------------------------------------------

float TileGrid::edgeOfRun(float x, float y, int direction, int extraRows) const {
    const int start = columnOf(x), row = rowOf(y);
    if (!contains(start, row)) return x;
    const int step = direction < 1 ? -1 : 1;
    int edge = start;
    while (occupied(edge, row))
        edge += step;
    // A wall above the run ends it earlier.
    for (int above = row + 1; above <= row + extraRows && above < height_; ++above)
        edge = wallInRow(start, above, step, edge);
    return originX_ + tileSize * static_cast<float>(edge) - 5 * static_cast<float>(step);
}

// The first occupied column from column on, at the latest edge or the last column of the grid.
int TileGrid::wallInRow(int column, int row, int step, int edge) const {
    const int last = step < 0 ? 0 : width_ - 1;
    while (column != last && column != edge && !cell(column, row))
        column += step;
    return column;
}

RayHit TileGrid::castRay(const Vec3& from, const Vec3& to) const {
    RayHit result;
    result.point = from;
    const float dx = to.x - from.x, dy = to.y - from.y;
    float left = squareRoot(dx * dx + dy * dy);
    const float directionX = left > 0 ? dx / left : 0, directionY = left > 0 ? dy / left : 0;
    for (int step = 0; step < rayMaxSteps; ++step) {
        Vec3& point = result.point;
        result.record = tileAt(point, TileType::solid);
        result.hit = result.record != nullptr;
        if (result.hit || !(left > 0)) break;

        // To the nearer of the two borders ahead.
        float advance = left;
        const float centreX = originX_ + tileSize * static_cast<float>(columnOf(point.x));
        const float centreY = originY_ + tileSize * static_cast<float>(rowOf(point.y));
        if (directionX != 0)
            advance = std::min(advance, (centreX - point.x) / directionX + rayBorder / absolute(directionX));
        if (directionY != 0)
            advance = std::min(advance, (centreY - point.y) / directionY + rayBorder / absolute(directionY));
        point += Vec3{directionX, directionY, 0} * advance;
        left -= advance;
    }
    return result;
}
