#include "stage/Reach.h"

#include "stage/HeroFlight.h"
#include "stage/StageChecks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>
#include <tuple>

namespace forge {
namespace {

using Zelkor::Vec2;
using Key = std::tuple<int, int, int, int, int>;

Key keyOf(const Standing& s) {
    return {s.column, s.row, s.area, s.ride, s.place};
}

// The camera areas in event order, with the event index of each.
struct Areas {
    std::vector<CameraArea> list;
    std::map<std::string, int> byEvent;
};

Areas collectAreas(const Stage& stage) {
    Areas areas;
    for (const StageEvent& event : stage.events) {
        if (event.keyword != "CameraBounds") continue;
        areas.byEvent[event.name] = static_cast<int>(areas.list.size());
        areas.list.push_back({event.box->first, event.box->second, {}});
    }
    for (const StageEvent& event : stage.events) {
        if (event.keyword != "CameraBounds") continue;
        for (const NamedTarget& target : event.triggers) {
            const StageEvent& zone = stage.events[static_cast<std::size_t>(stage.eventIndex(target.name))];
            if (zone.keyword != "CameraEdge") continue;
            AreaExit exit{zone.number, zone.box->first, zone.box->second, -1};
            for (const NamedTarget& next : zone.triggers)
                if (areas.byEvent.count(next.name)) exit.to = areas.byEvent[next.name];
            areas.list[static_cast<std::size_t>(areas.byEvent[event.name])].exits.push_back(exit);
        }
    }
    return areas;
}

class Search {
  public:
    Search(const Stage& from, const StageGrid& on)
        : stage(from), grid(on), areas(collectAreas(from)), tracks(collectTracks(from)),
          rides(collectRides(from, on, tracks)), flight(on, areas.list, rides) {}

    ReachResult run() {
        visit(startingPlace(), {});
        for (std::size_t i = 0; i < result.standings.size(); ++i) {
            const Standing here = result.standings[i];
            if (here.ride < 0)
                onGround(here);
            else
                onRide(here, rides[static_cast<std::size_t>(here.ride)]);
        }
        result.rides = std::move(rides);
        return std::move(result);
    }

  private:
    Standing startingPlace() const {
        Standing start;
        for (const StageEvent& event : stage.events) {
            if (event.keyword != "SpawnPlayer") continue;
            start.column = grid.columnOf(event.at->x);
            start.row = grid.rowOf(event.at->y + 1);
        }
        while (!flight.standable(start.column, start.row) && start.row > grid.firstRow())
            --start.row;
        start.area = 0;
        for (const NamedTarget& target : stage.startup)
            if (const auto area = areas.byEvent.find(target.name); area != areas.byEvent.end())
                start.area = area->second;
        return start;
    }

    void visit(Standing place, std::vector<Vec2> path) {
        if (!seen.insert(keyOf(place)).second) return;
        if (place.ride < 0) place.feet = {grid.columnX(place.column), grid.rowY(place.row) - cellSize / 2};
        result.standings.push_back(place);
        result.farthestColumn = std::max(result.farthestColumn, grid.columnOf(place.feet.x));
        for (const Vec2& point : path)
            noteEnd(point);
        noteEnd(place.feet);
        if (!path.empty()) result.jumps.push_back(std::move(path));
    }

    // Where there is room for him, and the camera lets him go there.
    void visitRide(int ride, int place, int area, std::vector<Vec2> path) {
        Standing there{0, 0, area, ride, place, {}};
        there.feet = rides[static_cast<std::size_t>(ride)].places[static_cast<std::size_t>(place)];
        if (!flight.roomFor(there.feet)) return;
        Vec2 held = there.feet;
        float speed = 0;
        if (!flight.keepInArea(held, speed, there.area)) return;
        if (std::fabs(held.x - there.feet.x) < cellSize / 2) visit(there, std::move(path));
    }

    // The end is reached where a box that leads to it is entered.
    void noteEnd(const Vec2& feet) {
        for (const auto& [min, max] : endBoxes)
            if (feet.x > min.x && feet.x < max.x && feet.y > min.y && feet.y < max.y)
                result.endReached = true;
    }

    void onGround(const Standing& here) {
        for (const int direction : {-1, 1}) {
            walk(here, direction);
            leapAll(here, cellSize / 2, hero::jumpSpeed, direction);
        }
        // What comes by this cell: a board at his feet, rungs at his hands.
        for (const float aside : {-4.0f, -2.0f, 0.0f, 2.0f, 4.0f}) {
            const Vec2 at{here.feet.x + aside, here.feet.y};
            flight.ridesAt(at, at, true, met);
            for (const auto& [ride, place] : met)
                visitRide(ride, place, here.area, {});
        }
        for (std::size_t i = 0; i < rides.size(); ++i)
            if (rides[i].top == std::pair{here.column, here.row})
                visitRide(static_cast<int>(i), static_cast<int>(rides[i].places.size()) - 1, here.area, {});
    }

    void onRide(const Standing& here, const Ride& ride) {
        for (const auto& [from, to] : ride.ways)
            if (from == here.place) visitRide(here.ride, to, here.area, {});
        if (ride.hold == Ride::Hold::Cart) return drive(here, ride);
        for (const int direction : {-1, 1}) {
            if (ride.hold == Ride::Hold::Board)
                leapAll(here, ride.half, ride.jumpSpeed, direction);
            else
                letGo(here, direction);
        }
        if (ride.top && here.place + 1 == static_cast<int>(ride.places.size()))
            visit({ride.top->first, ride.top->second, here.area, -1, 0, {}}, {});
    }

    void walk(const Standing& here, int direction) {
        Standing next = here;
        next.column += direction;
        if (!flight.standable(next.column, next.row)) return;
        Vec2 feet{grid.columnX(next.column), grid.rowY(next.row) - cellSize / 2};
        const float wanted = feet.x;
        float speed = 0;
        if (!flight.keepInArea(feet, speed, next.area)) return;
        if (std::fabs(feet.x - wanted) < cellSize / 2) visit(next, {});
    }

    // He takes off from the middle of the cell or board or with his middle over its edge, running or
    // standing.
    void leapAll(const Standing& here, float half, float jumpSpeed, int direction) {
        constexpr std::array<float, 6> holds{0.0f, 0.05f, 0.12f, 0.2f, 0.28f, hero::holdTime};
        const float side = static_cast<float>(direction);
        for (const float offset : {0.0f, half}) {
            for (const float speed : {hero::runSpeed, 0.0f}) {
                Leap leap;
                leap.start = {here.feet.x + side * offset, here.feet.y};
                leap.speed = {side * speed, jumpSpeed};
                for (const float hold : holds) {
                    leap.hold = hold;
                    thumbs(here, leap, direction);
                }
                leap.start.x = here.feet.x + side * (half + hero::halfWidth);
                leap.speed.y = leap.hold = 0;
                if (offset > 0) thumbs(here, leap, direction);
            }
        }
    }

    void letGo(const Standing& here, int direction) {
        Leap leap;
        leap.start = here.feet;
        leap.handsFree = hero::climbPause;
        thumbs(here, leap, direction);
    }

    void thumbs(const Standing& here, Leap leap, int direction) {
        struct Thumb {
            int first, then;
            float turn;
        };
        const std::array<Thumb, 6> all{{{direction, direction, 0},
                                        {direction, 0, 0.3f},
                                        {direction, 0, 0.55f},
                                        {direction, -direction, 0.3f},
                                        {direction, -direction, 0.55f},
                                        {0, direction, 0.3f}}};
        for (const Thumb& thumb : all) {
            leap.firstDirection = thumb.first;
            leap.thenDirection = thumb.then;
            leap.turnTime = thumb.turn;
            tryLeap(here.area, leap);
        }
    }

    void tryLeap(int area, const Leap& leap) {
        Standing landing;
        const bool landed = flight.fly(area, leap, landing);
        for (const Catch& ride : flight.catches()) {
            if (seen.count({0, 0, ride.area, ride.ride, ride.place})) continue;
            const auto from = flight.path().begin();
            visitRide(ride.ride, ride.place, ride.area,
                      {from, from + static_cast<std::ptrdiff_t>(ride.steps)});
        }
        if (landed && !seen.count(keyOf(landing))) visit(landing, flight.path());
    }

    // A rider stays in the cart, which jumps for him, until a wall throws him out.
    void drive(const Standing& here, const Ride& ride) {
        const Vec2 rails{here.feet.x, here.feet.y - cart::floorHeight};
        if (wallStopsCart(grid, rails)) return thrownOut(rails, here.area);
        const auto track = std::find_if(tracks.begin(), tracks.end(), [&](const CartTrack& each) {
            const auto height = each.heightAt(rails.x);
            return height && std::fabs(*height - rails.y) < 1;
        });
        if (track == tracks.end()) return;
        const float slope = track->slopeAt(rails.x);
        const float lowest = areas.list[static_cast<std::size_t>(here.area)].min.y - 20;
        const bool atEnd = rails.x >= track->points.back().x - 0.1f;
        std::vector<Vec2> path;
        for (const float hold : {-1.0f, 0.0f, 0.12f, 0.2f, hero::holdTime}) {
            if (hold < 0 && !atEnd) continue;
            const auto landing = flyCart(tracks, grid, rails, slope, hold, lowest, path);
            if (!landing) continue;
            if (landing->wall)
                thrownOut(landing->place, here.area);
            else
                landCart(here, ride, landing->place, path);
        }
    }

    void landCart(const Standing& here, const Ride& ride, const Vec2& rails, const std::vector<Vec2>& path) {
        int nearest = 0;
        const auto away = [&](int i) {
            const Vec2& place = ride.places[static_cast<std::size_t>(i)];
            return std::hypot(place.x - rails.x, place.y - cart::floorHeight - rails.y);
        };
        for (int i = 1; i < static_cast<int>(ride.places.size()); ++i)
            if (away(i) < away(nearest)) nearest = i;
        visitRide(here.ride, nearest, here.area, path);
    }

    void thrownOut(const Vec2& rails, int area) {
        Leap leap;
        leap.start = {rails.x, rails.y + cart::floorHeight};
        leap.speed = {hero::thrownSpeed, hero::jumpSpeed};
        for (const int direction : {-1, 0, 1}) {
            leap.firstDirection = leap.thenDirection = direction;
            tryLeap(area, leap);
        }
    }

    std::vector<std::pair<Vec2, Vec2>> collectEndBoxes() const {
        std::vector<std::pair<Vec2, Vec2>> boxes;
        const std::vector<bool> ending = eventsLeadingToEnd(stage);
        for (std::size_t i = 0; i < ending.size(); ++i) {
            const StageEvent& event = stage.events[i];
            if (!ending[i]) continue;
            if (event.keyword == "PlayerRect") boxes.push_back(*event.box);
            // Whoever must die for the end must be met: a place beside him will do.
            if (event.keyword == "SpawnEnemy")
                boxes.push_back({{event.at->x - 30, event.at->y - 10}, {event.at->x + 30, event.at->y + 40}});
        }
        return boxes;
    }

    const Stage& stage;
    const StageGrid& grid;
    Areas areas;
    std::vector<CartTrack> tracks;
    std::vector<Ride> rides;
    HeroFlight flight;
    std::vector<std::pair<Vec2, Vec2>> endBoxes = collectEndBoxes();
    std::set<Key> seen;
    std::vector<std::pair<int, int>> met;
    ReachResult result;
};

} // namespace

ReachResult searchReach(const Stage& stage, const StageGrid& grid) {
    return Search(stage, grid).run();
}

} // namespace forge
