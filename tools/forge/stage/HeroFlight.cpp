#include "stage/HeroFlight.h"

#include <algorithm>
#include <cmath>

namespace forge {
namespace {

using hero::timeStep;
constexpr int longestFlight = 360; // steps
constexpr float skin = 0.05f;      // how far his box may touch without counting as inside

constexpr float boardMargin = 1.5f; // of the feet that must be over a board for a landing
constexpr float boardThickness = 10;
constexpr float rungReach = 2.5f; // up and down, from a place on a ladder

} // namespace

HeroFlight::HeroFlight(const StageGrid& stageGrid, const std::vector<CameraArea>& cameraAreas,
                       const std::vector<Ride>& stageRides)
    : grid(stageGrid), areas(cameraAreas), rides(stageRides) {
    for (std::size_t ride = 0; ride < rides.size(); ++ride) {
        const bool rungs = rides[ride].hold == Ride::Hold::Rungs;
        const float reach = rungs ? hero::ladderAside : rides[ride].half + hero::halfWidth;
        for (std::size_t i = 0; i < rides[ride].places.size(); ++i) {
            const Zelkor::Vec2& place = rides[ride].places[i];
            for (int c = grid.columnOf(place.x - reach); c <= grid.columnOf(place.x + reach); ++c)
                for (int r = grid.rowOf(place.y - 5); r <= grid.rowOf(place.y + 5); ++r)
                    ridesByCell[{c, r}].emplace_back(static_cast<int>(ride), static_cast<int>(i));
        }
    }
}

void HeroFlight::ridesAt(const Zelkor::Vec2& before, const Zelkor::Vec2& now, bool handsFree,
                         std::vector<std::pair<int, int>>& found) const {
    found.clear();
    const auto here = ridesByCell.find({grid.columnOf(now.x), grid.rowOf(now.y)});
    if (here == ridesByCell.end()) return;
    for (const auto& [number, index] : here->second) {
        const Ride& ride = rides[static_cast<std::size_t>(number)];
        const Zelkor::Vec2& place = ride.places[static_cast<std::size_t>(index)];
        const float aside = std::fabs(now.x - place.x);
        const bool rungs = ride.hold == Ride::Hold::Rungs;
        const bool taken =
            rungs ? handsFree && aside <= hero::ladderAside && std::fabs(now.y - place.y) <= rungReach
                  : before.y >= place.y - skin && now.y <= place.y &&
                        aside <= ride.half + hero::halfWidth - boardMargin &&
                        (ride.boardAt < 0 || ride.boardAt == index);
        if (taken) found.emplace_back(number, index);
    }
}

bool HeroFlight::standable(int column, int row) const {
    const bool floor = grid.solid(column, row - 1) || grid.ladderTop(column, row - 1);
    if (!floor || grid.deadly(column, row - 1)) return false;
    // While he stands, ladder tops stop him like any ground.
    for (int r = row; r <= row + 1; ++r)
        if (grid.solid(column, r) || grid.ladderTop(column, r)) return false;
    return true;
}

HeroFlight::Touch HeroFlight::touch(const Zelkor::Vec2& at) const {
    Touch worst = Touch::None;
    const int first = grid.columnOf(at.x - hero::halfWidth + skin),
              last = grid.columnOf(at.x + hero::halfWidth - skin);
    const int low = grid.rowOf(at.y + skin), high = grid.rowOf(at.y + hero::height - skin);
    for (int row = low; row <= high; ++row) {
        for (int column = first; column <= last; ++column) {
            if (grid.deadly(column, row)) return Touch::Deadly;
            if (grid.solid(column, row)) worst = Touch::Solid;
        }
    }
    return worst;
}

bool HeroFlight::moveSideways(float distance) {
    const Zelkor::Vec2 next{feet.x + distance, feet.y};
    const Touch met = touch(next);
    if (met == Touch::Deadly) return false;
    if (met == Touch::None) {
        feet = next;
        return true;
    }
    velocity.x = 0;
    return true;
}

// Ground under the feet that was above neither of them before.
bool HeroFlight::landOn(float oldY) {
    const int first = grid.columnOf(feet.x - hero::halfWidth + skin),
              last = grid.columnOf(feet.x + hero::halfWidth - skin);
    const int row = grid.rowOf(feet.y);
    const float surface = grid.rowY(row) + cellSize / 2;
    for (int column = first; column <= last; ++column) {
        const bool oneWay = grid.ladderTop(column, row) && oldY >= surface - 0.5f;
        if (!grid.solid(column, row) && !oneWay) continue;
        feet.y = surface;
        velocity.y = 0;
        grounded = true;
        return true;
    }
    return false;
}

bool HeroFlight::moveUpDown(float distance) {
    const float oldY = feet.y;
    feet.y += distance;
    if (distance <= 0 && landOn(oldY)) return touch(feet) != Touch::Deadly;
    const Touch met = touch(feet);
    if (met == Touch::Deadly) return false;
    if (met == Touch::Solid) {
        feet.y = oldY;
        velocity.y = 0;
    }
    return true;
}

void HeroFlight::steer(int direction) {
    if (direction == 0) {
        velocity.x = Zelkor::moveTowards(velocity.x, 0, hero::airLoss * timeStep);
        return;
    }
    const bool against = velocity.x * static_cast<float>(direction) < 0;
    velocity.x = Zelkor::moveTowards(velocity.x, hero::runSpeed * static_cast<float>(direction),
                                     (against ? hero::airLoss : hero::airGain) * timeStep);
}

bool HeroFlight::keepInArea(Zelkor::Vec2& at, float& speed, int& area) const {
    const CameraArea& room = areas[static_cast<std::size_t>(area)];
    bool open[4] = {};
    for (const AreaExit& exit : room.exits) {
        const bool spans = exit.direction < 2 ? exit.min.y < at.y && at.y < exit.max.y
                                              : exit.min.x < at.x && at.x < exit.max.x;
        if (!spans || open[exit.direction]) continue;
        open[exit.direction] = true;
        const bool beyond[4] = {at.x > room.max.x, at.x<room.min.x, at.y> room.max.y - 5,
                                at.y < room.min.y - 10};
        if (!beyond[exit.direction]) continue;
        if (exit.to >= 0) area = exit.to;
        return true;
    }
    const float lowest = open[1] ? -1e9f : room.min.x + 5, highest = open[0] ? 1e9f : room.max.x - 5;
    if (at.x < lowest || at.x > highest) {
        at.x = std::clamp(at.x, lowest, highest);
        speed = 0;
    }
    return at.y >= room.min.y - 20;
}

// He may have landed with half a boot over the edge: he stands in the cell that carries him.
bool HeroFlight::settle(Standing& landing) const {
    landing.row = grid.rowOf(feet.y + 1);
    const int middle = grid.columnOf(feet.x);
    const int side = feet.x > grid.columnX(middle) ? 1 : -1;
    for (const int column : {middle, middle + side, middle - side}) {
        landing.column = column;
        if (standable(column, landing.row)) return true;
    }
    return false;
}

void HeroFlight::accelerate(const Leap& leap, float time, float& hold) {
    const bool held = hold > 0 && velocity.y > 0;
    hold = held ? hold - timeStep : 0;
    velocity.y -= (hold > 0 ? hero::heldGravity : hero::gravity) * timeStep;
    velocity.y = std::max(velocity.y, -hero::fallSpeed);
    steer(time < leap.turnTime ? leap.firstDirection : leap.thenDirection);
}

// A board stops who rises into it from below; only from above does he get onto it.
bool HeroFlight::passedThrough(const Zelkor::Vec2& board, float half) const {
    return std::any_of(path_.begin(), path_.end(), [&](const Zelkor::Vec2& at) {
        return std::fabs(at.x - board.x) < half + hero::halfWidth - skin && at.y < board.y - skin &&
               at.y + hero::height > board.y - boardThickness + skin;
    });
}

void HeroFlight::catchRides(const Zelkor::Vec2& before, int area, bool handsFree) {
    ridesAt(before, feet, handsFree, met_);
    for (const auto& [number, index] : met_) {
        const Ride& ride = rides[static_cast<std::size_t>(number)];
        const Zelkor::Vec2& place = ride.places[static_cast<std::size_t>(index)];
        if (ride.hold == Ride::Hold::Board && passedThrough(place, ride.half)) continue;
        catches_.push_back({number, index, area, path_.size()});
    }
}

bool HeroFlight::fly(int area, const Leap& leap, Standing& landing) {
    path_.clear();
    catches_.clear();
    feet = leap.start;
    velocity = leap.speed;
    if (touch(feet) != Touch::None) return false;
    float hold = leap.hold;
    grounded = false;
    for (int step = 0; step < longestFlight; ++step) {
        const float time = static_cast<float>(step) * timeStep;
        path_.push_back(feet);
        // The step that leaves the ground still moves by the take-off's own speed.
        if (step > 0) accelerate(leap, time, hold);
        const Zelkor::Vec2 before = feet;
        if (!moveSideways(velocity.x * timeStep) || !moveUpDown(velocity.y * timeStep)) return false;
        if (!keepInArea(feet, velocity.x, area)) return false;
        catchRides(before, area, time >= leap.handsFree);
        if (!grounded) continue;
        landing.area = area;
        path_.push_back(feet);
        return settle(landing);
    }
    return false;
}

} // namespace forge
