#include "stage/HeroFlight.h"

#include <algorithm>
#include <cmath>

namespace forge {
namespace {

constexpr float timeStep = 1.0f / 60;
constexpr int longestFlight = 360; // steps
constexpr float skin = 0.05f;      // how far his box may touch without counting as inside

} // namespace

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

bool HeroFlight::fly(const Standing& from, const Leap& leap, Standing& landing,
                     std::vector<Zelkor::Vec2>* path) {
    feet = {leap.startX, grid.rowY(from.row) - cellSize / 2};
    velocity = {leap.startSpeed, leap.jumps ? hero::jumpSpeed : 0};
    if (touch(feet) != Touch::None) return false;
    int area = from.area;
    float hold = leap.hold;
    grounded = false;
    for (int step = 0; step < longestFlight; ++step) {
        const float time = static_cast<float>(step) * timeStep;
        if (path) path->push_back(feet);
        // The step that leaves the ground still moves by the take-off's own speed.
        if (step > 0) accelerate(leap, time, hold);
        if (!moveSideways(velocity.x * timeStep) || !moveUpDown(velocity.y * timeStep)) return false;
        if (!keepInArea(feet, velocity.x, area)) return false;
        if (!grounded) continue;
        landing.area = area;
        if (path) path->push_back(feet);
        return settle(landing);
    }
    return false;
}

} // namespace forge
