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

using Key = std::tuple<int, int, int>;

Key keyOf(const Standing& s) {
    return {s.column, s.row, s.area};
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
        : stage(from), grid(on), areas(collectAreas(from)), flight(on, areas.list) {}

    ReachResult run() {
        visit(startingPlace(), {});
        for (std::size_t i = 0; i < result.standings.size(); ++i) {
            const Standing here = result.standings[i];
            for (const int direction : {-1, 1}) {
                walk(here, direction);
                leapAll(here, direction);
            }
        }
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

    void visit(const Standing& place, std::vector<Zelkor::Vec2> path) {
        if (!seen.insert(keyOf(place)).second) return;
        result.standings.push_back(place);
        result.farthestColumn = std::max(result.farthestColumn, place.column);
        const Zelkor::Vec2 feet{grid.columnX(place.column), grid.rowY(place.row) - cellSize / 2};
        for (const Zelkor::Vec2& point : path)
            noteEnd(point);
        noteEnd(feet);
        if (!path.empty()) result.jumps.push_back(std::move(path));
    }

    // The end is reached where a box that leads to it is entered.
    void noteEnd(const Zelkor::Vec2& feet) {
        for (const auto& [min, max] : endBoxes)
            if (feet.x > min.x && feet.x < max.x && feet.y > min.y && feet.y < max.y)
                result.endReached = true;
    }

    void walk(const Standing& here, int direction) {
        Standing next = here;
        next.column += direction;
        if (!flight.standable(next.column, next.row)) return;
        Zelkor::Vec2 feet{grid.columnX(next.column), grid.rowY(next.row) - cellSize / 2};
        const float wanted = feet.x;
        float speed = 0;
        if (!flight.keepInArea(feet, speed, next.area)) return;
        if (std::fabs(feet.x - wanted) < cellSize / 2) visit(next, {});
    }

    // He takes off from the middle of the cell or with his middle over its edge, running or standing.
    void leapAll(const Standing& here, int direction) {
        constexpr std::array<float, 6> holds{0.0f, 0.05f, 0.12f, 0.2f, 0.28f, hero::holdTime};
        const float middle = grid.columnX(here.column);
        const float side = static_cast<float>(direction);
        for (const float offset : {0.0f, 5.0f}) {
            for (const float speed : {hero::runSpeed, 0.0f}) {
                Leap leap;
                leap.startX = middle + side * offset;
                leap.startSpeed = side * speed;
                for (const float hold : holds) {
                    leap.hold = hold;
                    thumbs(here, leap, direction);
                }
                leap.jumps = false;
                leap.startX = middle + side * (cellSize / 2 + hero::halfWidth);
                leap.hold = 0;
                if (offset > 0) thumbs(here, leap, direction);
            }
        }
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
            Standing landing;
            if (!flight.fly(here, leap, landing) || seen.count(keyOf(landing))) continue;
            std::vector<Zelkor::Vec2> path;
            flight.fly(here, leap, landing, &path);
            visit(landing, std::move(path));
        }
    }

    std::vector<std::pair<Zelkor::Vec2, Zelkor::Vec2>> collectEndBoxes() const {
        std::vector<std::pair<Zelkor::Vec2, Zelkor::Vec2>> boxes;
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
    HeroFlight flight;
    std::vector<std::pair<Zelkor::Vec2, Zelkor::Vec2>> endBoxes = collectEndBoxes();
    std::set<Key> seen;
    ReachResult result;
};

} // namespace

ReachResult searchReach(const Stage& stage, const StageGrid& grid) {
    return Search(stage, grid).run();
}

} // namespace forge
