#include "stage/Rides.h"

#include "stage/HeroNumbers.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace forge {
namespace {

using Zelkor::Vec2;

constexpr float placeStep = 5; // between places along a path, world units
constexpr float boxOffset = 5; // from a platform's origin to the middle and the upper side of its box

float param(const StageEvent& event, int index, float otherwise) {
    for (const auto& [number, value] : event.params)
        if (number == index) otherwise = value;
    return otherwise;
}

std::vector<Vec2> straight(const Vec2& from, const Vec2& direction, float length) {
    std::vector<Vec2> line;
    const int steps = static_cast<int>(std::ceil(std::min(std::fabs(length), 5000.0f) / placeStep));
    for (int i = 0; i <= steps; ++i) {
        const float way = steps ? length * static_cast<float>(i) / static_cast<float>(steps) : 0;
        line.push_back({from.x + direction.x * way, from.y + direction.y * way});
    }
    return line;
}

Vec2 boardPlace(const Vec2& origin) {
    return {origin.x + boxOffset, origin.y + boxOffset};
}

using Rides = std::vector<Ride>;

void moving(const StageEvent& event, const StageGrid&, Rides& rides) {
    Ride ride;
    const bool shroom = event.mesh == "tiles/forest/p1shroom";
    const Vec2 at = shroom ? Vec2{event.at->x, event.at->y + 2} : boardPlace({event.at->x, event.at->y});
    if (shroom) ride.half = 5;
    if (event.actor == "BounceShroom") ride.jumpSpeed = hero::bounceSpeed;
    ride.addLine(straight(at, event.direction, param(event, 0, 60)));
    rides.push_back(std::move(ride));
}

void circling(const StageEvent& event, const StageGrid&, Rides& rides) {
    constexpr float degrees = Zelkor::pi / 180;
    const bool swings = param(event, 2, 0) != 0;
    const float radius = param(event, 7, 30);
    const float first = swings ? param(event, 5, -90) * degrees : 0;
    const float arc = swings ? param(event, 6, 90) * degrees - first : 2 * Zelkor::pi;
    const int steps = std::max(1, static_cast<int>(std::fabs(arc * radius) / placeStep));
    std::vector<Vec2> line;
    for (int i = 0; i < steps + (swings ? 1 : 0); ++i) {
        const float angle = first + arc * static_cast<float>(i) / static_cast<float>(steps);
        line.push_back({event.at->x + radius * std::sin(angle), event.at->y + radius * std::cos(angle)});
    }
    Ride ride;
    ride.addLine(line, !swings);
    rides.push_back(std::move(ride));
}

// It falls soon after it is stepped on: only where it waits can one rely on it.
void falling(const StageEvent& event, const StageGrid&, Rides& rides) {
    Ride ride;
    ride.addLine({boardPlace({event.at->x, event.at->y})});
    rides.push_back(std::move(ride));
}

// A plank that lies level; a turning one is level now and then.
void plank(const StageEvent& event, const StageGrid&, Rides& rides) {
    Ride ride;
    ride.half = 25;
    ride.addLine({{event.at->x, event.at->y + 10}});
    rides.push_back(std::move(ride));
}

void clockTile(const StageEvent& event, const StageGrid&, Rides& rides) {
    Ride ride;
    ride.half = cellSize / 2;
    ride.addLine({{event.at->x, event.at->y + cellSize / 2}});
    rides.push_back(std::move(ride));
}

// From where it lies to the walls on both sides. It is as thick as the room between its middle and the
// ground.
void rolling(const StageEvent& event, const StageGrid& grid, Rides& rides) {
    constexpr float farthest = 400;
    int floor = grid.rowOf(event.at->y);
    const int column = grid.columnOf(event.at->x);
    while (floor > grid.firstRow() && !grid.solid(column, floor))
        --floor;
    const float radius = event.at->y - grid.rowY(floor) - cellSize / 2;
    if (radius <= 0) return;
    const float limit = param(event, 1, 0);
    std::vector<Vec2> line;
    for (const float side : {-1.0f, 1.0f}) {
        for (float way = 0; way <= (limit > 0 ? limit : farthest); way += placeStep) {
            const Vec2 place{event.at->x + side * way, event.at->y + radius};
            if (grid.solid(grid.columnOf(place.x + side * radius), grid.rowOf(event.at->y + 5 - radius)))
                break;
            if (side > 0 && way == 0) continue;
            line.push_back(place);
        }
        if (side < 0) std::reverse(line.begin(), line.end());
    }
    Ride ride;
    ride.half = radius / 2;
    ride.addLine(line);
    rides.push_back(std::move(ride));
}

// Along the rail tiles that hang together with the nearest within two cells.
void trolley(const StageEvent& event, const StageGrid& grid, Rides& rides) {
    const auto isRail = [&](int c, int r) { return grid.type(c, r) == tile_type::deadly; };
    const int column = grid.columnOf(event.at->x), row = grid.rowOf(event.at->y);
    std::vector<std::pair<int, int>> cells;
    for (int reach = 0; reach <= 2 && cells.empty(); ++reach)
        for (int r = row - reach; r <= row + reach; ++r)
            for (int c = column - reach; c <= column + reach; ++c)
                if (cells.empty() && isRail(c, r)) cells.emplace_back(c, r);
    Ride ride;
    std::set<std::pair<int, int>> seen(cells.begin(), cells.end());
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const auto [c, r] = cells[i];
        ride.places.push_back(boardPlace({grid.columnX(c), grid.rowY(r)}));
        for (int dr = -1; dr <= 1; ++dr)
            for (int dc = -1; dc <= 1; ++dc) {
                if (!isRail(c + dc, r + dr) || !seen.insert({c + dc, r + dr}).second) continue;
                cells.emplace_back(c + dc, r + dr);
                const int from = static_cast<int>(i), to = static_cast<int>(cells.size()) - 1;
                ride.ways.insert(ride.ways.end(), {{from, to}, {to, from}});
            }
    }
    if (cells.empty()) ride.addLine({boardPlace({event.at->x, event.at->y})});
    rides.push_back(std::move(ride));
}

// Feet on the rungs of a ladder whose foot's middle is there.
std::vector<Vec2> rungs(const Vec2& foot, float end) {
    std::vector<Vec2> line;
    for (float y = foot.y - hero::restBelow; y < end; y += hero::rungStep)
        line.push_back({foot.x, y});
    return line;
}

// Every rung at every place of the ladder's path.
void movingLadder(const StageEvent& event, const StageGrid&, Rides& rides) {
    const float height = std::min(param(event, 0, 40), 5000.0f);
    Ride ride;
    ride.hold = Ride::Hold::Rungs;
    int before = -1;
    for (const Vec2& foot : straight({event.at->x, event.at->y}, event.direction, param(event, 1, 0))) {
        const int first = static_cast<int>(ride.places.size());
        ride.addLine(rungs(foot, foot.y + height - hero::belowOpenEnd));
        for (int i = first; before >= 0 && i < static_cast<int>(ride.places.size()); ++i)
            ride.ways.insert(ride.ways.end(), {{i, before + i - first}, {before + i - first, i}});
        before = first;
    }
    rides.push_back(std::move(ride));
}

void ladderOfTiles(int column, int lowest, const StageGrid& grid, Rides& rides) {
    int end = lowest;
    while (grid.type(column, end) == tile_type::ladder)
        ++end;
    Ride ride;
    ride.hold = Ride::Hold::Rungs;
    const bool topped = grid.ladderTop(column, end);
    if (topped) ride.top = {column, end + 1};
    ride.addLine(rungs({grid.columnX(column), grid.rowY(lowest)},
                       grid.rowY(end) - (topped ? hero::belowTop : hero::belowOpenEnd)));
    if (!ride.places.empty()) rides.push_back(std::move(ride));
}

// Every track's places in a row; from one track to the next the cart flies.
void mineCart(const StageEvent& event, const std::vector<CartTrack>& tracks, Rides& rides) {
    constexpr float reach = 15; // of the rails around where it is spawned
    Ride ride;
    ride.hold = Ride::Hold::Cart;
    ride.half = cart::halfWidth;
    float nearest = reach;
    for (const CartTrack& track : tracks) {
        const float length = track.points.back().x - track.points.front().x;
        for (const Vec2& at : straight(track.points.front(), {1, 0}, length)) {
            const int here = static_cast<int>(ride.places.size());
            const float rails = track.heightAt(at.x).value_or(track.points.back().y);
            ride.places.push_back({at.x, rails + cart::floorHeight});
            if (at.x > track.points.front().x) ride.ways.emplace_back(here - 1, here);
            const float away = std::hypot(at.x - event.at->x, rails - event.at->y);
            if (away >= nearest) continue;
            nearest = away;
            ride.boardAt = here;
        }
    }
    if (ride.boardAt >= 0) rides.push_back(std::move(ride));
}

struct RideKind {
    const char* actor;
    void (*add)(const StageEvent&, const StageGrid&, Rides&);
};

constexpr RideKind kinds[] = {
    {"MovingPlatform", moving},    {"BounceShroom", moving},        {"CircleingPlatform", circling},
    {"FallPlatform", falling},     {"RotatingPlatform", plank},     {"DisappearingTile", clockTile},
    {"CylinderPlatform", rolling}, {"ControlledPlatform", trolley}, {"MovingLadder", movingLadder},
};

} // namespace

void Ride::addLine(const std::vector<Vec2>& line, bool closed) {
    const int first = static_cast<int>(places.size()), count = static_cast<int>(line.size());
    places.insert(places.end(), line.begin(), line.end());
    for (int i = 0; i < count - (closed ? 0 : 1); ++i) {
        const int from = first + i, to = first + (i + 1) % count;
        ways.insert(ways.end(), {{from, to}, {to, from}});
    }
}

std::vector<Ride> collectRides(const Stage& stage, const StageGrid& grid,
                               const std::vector<CartTrack>& tracks) {
    Rides rides;
    for (int column = grid.firstColumn(); column < grid.firstColumn() + grid.width(); ++column)
        for (int row = grid.firstRow(); row < grid.firstRow() + grid.height(); ++row)
            if (grid.type(column, row) == tile_type::ladder &&
                grid.type(column, row - 1) != tile_type::ladder)
                ladderOfTiles(column, row, grid, rides);
    for (const StageEvent& event : stage.events) {
        if (event.actor == "Minecart") mineCart(event, tracks, rides);
        for (const RideKind& kind : kinds)
            if (event.actor == kind.actor) kind.add(event, grid, rides);
    }
    return rides;
}

} // namespace forge
