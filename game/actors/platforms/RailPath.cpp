#include "actors/platforms/RailPath.h"

#include "resources/Scene.h"
#include "world/TileGrid.h"

#include <algorithm>
#include <array>
#include <cmath>

using namespace Zelkor;

namespace {

constexpr const char* stopUnit = "town/platformrails/stop";
constexpr int searchCells = 2;

// Sides before corners, so that a bend is followed tile by tile.
constexpr std::array<Vec3, 8> neighbours{
    {{1, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}, {1, 1, 0}, {1, -1, 0}, {-1, 1, 0}, {-1, -1, 0}}};

bool isRail(const TileGrid& grid, const Vec3& point) {
    const TileRecord* record = grid.tileAt(point, TileType::rail);
    return record && record->type == TileType::rail;
}

bool contains(const std::vector<Vec3>& points, const Vec3& point) {
    return std::find(points.begin(), points.end(), point) != points.end();
}

bool findRail(const TileGrid& grid, Vec3& place) {
    const Vec3 wanted = place, middle = grid.cellCentre(place);
    float nearest = INFINITY;
    for (int row = -searchCells; row <= searchCells; ++row)
        for (int column = -searchCells; column <= searchCells; ++column) {
            const Vec3 cell = middle + tileSize * Vec3{static_cast<float>(column), static_cast<float>(row), 0};
            if (!isRail(grid, cell) || distance(cell, wanted) >= nearest) continue;
            nearest = distance(cell, wanted);
            place = cell;
        }
    return nearest < INFINITY;
}

// Appends the rails that follow the last of points.
void walk(const TileGrid& grid, std::vector<Vec3>& points) {
    Vec3 heading;
    for (bool found = true; found;) {
        found = false;
        const Vec3 here = points.back();
        const auto step = [&](const Vec3& way) {
            const Vec3 next = here + tileSize * way;
            if (found || !isRail(grid, next) || contains(points, next)) return;
            points.push_back(next);
            heading = way;
            found = true;
        };
        if (points.size() > 1) step(heading);
        for (const Vec3& way : neighbours)
            step(way);
    }
}

} // namespace

RailPath::RailPath(const TileGrid* grid, const Vec3& place) {
    Vec3 rail{place.x, place.y, 0};
    if (grid && findRail(*grid, rail)) {
        points_ = {rail};
        walk(*grid, points_);
        closed_ = points_.size() > 3 && distance(points_.front(), points_.back()) < 1.5f * tileSize;
        if (!closed_) { // from wherever that was, to one end, and from there to the other
            points_ = {points_.back()};
            walk(*grid, points_);
            if (points_.front().x < points_.back().x) std::reverse(points_.begin(), points_.end());
        } else {
            points_.push_back(points_.front());
        }
    } else {
        points_ = {rail};
    }
    for (Vec3& point : points_)
        point.z = place.z;
    lengths_ = {0};
    for (std::size_t i = 1; i < points_.size(); ++i)
        lengths_.push_back(lengths_.back() + distance(points_[i - 1], points_[i]));
}

RailPath::~RailPath() {
    for (const Stop& stop : stops_)
        stop.scene->removeUnit(stop.unit);
}

Vec3 RailPath::at(float way) const {
    const auto next = std::upper_bound(lengths_.begin(), lengths_.end(), way);
    if (next == lengths_.begin()) return points_.front();
    if (next == lengths_.end()) return points_.back();
    const auto i = static_cast<std::size_t>(next - lengths_.begin());
    const float share = (way - lengths_[i - 1]) / (lengths_[i] - lengths_[i - 1]);
    return (1 - share) * points_[i - 1] + share * points_[i];
}

void RailPath::showStop(Scene& scene, bool atStart) {
    stops_.push_back({&scene, scene.createUnit(stopUnit, atStart ? points_.front() : points_.back())});
}
