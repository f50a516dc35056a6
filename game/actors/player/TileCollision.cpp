#include "actors/player/TileCollision.h"

#include "actors/player/HeroConstants.h"
#include "world/TileGrid.h"

#include <cmath>

using Zelkor::Vec3;

namespace {

constexpr float halfTile = tileSize / 2;
constexpr float skin = 0.01f;        // the feet stay this deep in a floor, the head this far off a ceiling
constexpr float maxSideMove = 9.5f;  // of the box in one frame
constexpr float maxVerticalMove = 5; // beyond the box's own half height
constexpr float ladderTopTolerance = 0.5f;
constexpr float fastEntry = 10; // units per second by which the vertical speed must lead

struct Point {
    float at[2]; // x, y
};

Point xy(const Vec3& v) {
    return {{v.x, v.y}};
}

float distanceBetween(const Point& a, const Point& b) {
    const float dx = a.at[0] - b.at[0], dy = a.at[1] - b.at[1];
    return Zelkor::squareRoot(dx * dx + dy * dy);
}

float nearestCellCentre(float x) {
    return std::round(x / tileSize) * tileSize;
}

// Top middle first, then clockwise: column (-1 left, +1 right) and row (-1 bottom, +1 top).
constexpr int probeOrder[8][2] = {{0, 1}, {1, 1}, {1, 0}, {1, -1}, {0, -1}, {-1, -1}, {-1, 0}, {-1, 1}};

struct Probe {
    int side[2];  // column, row
    Point offset; // from the box centre
    Point point;
    int mask;
    bool feet;
};

class Collision {
  public:
    Collision(const TileGrid& grid, const TileBody& body);
    TileContact resolve();

  private:
    Probe probe(int index) const;
    TileRecord* tileAt(const Point& p, int mask) const;
    bool passesOver(const TileRecord& record) const;
    bool meet(const Probe& p);
    void push(const Probe& p);
    bool pushesAlongX(const Probe& p, const Point& cell, const float sign[2]) const;
    bool fastVerticalEntry(const Probe& p, const Point& cell, const float sign[2]) const;
    void moveTo(const Point& proposal);

    const TileGrid& grid_;
    const TileBody& body_;
    const HeroBox box_; // where it stood: every probe is taken from here
    const Point start_, up_, velocity_;
    Point centre_;
    Point min_, max_;
    float wallSide_, groundSide_;
    bool deadlyUnderFeet_ = false, safeUnderFeet_ = false;
};

Collision::Collision(const TileGrid& grid, const TileBody& body)
    : grid_(grid), body_(body), box_(heroBox(body.bodyCentre, body.up, body.crouching)),
      start_(xy(box_.centre)), up_(xy(body.up)), velocity_(xy(body.velocity)), centre_(start_), min_(start_),
      max_(start_), wallSide_(body.wallSide), groundSide_(body.groundSide) {
    const Point half = xy(box_.half);
    for (int axis = 0; axis < 2; ++axis) {
        const float reach = axis == box_.verticalAxis ? half.at[axis] + maxVerticalMove : maxSideMove;
        min_.at[axis] -= reach;
        max_.at[axis] += reach;
    }
}

Probe Collision::probe(int index) const {
    const int column = probeOrder[index][0], row = probeOrder[index][1];
    Probe p{{column, row}, {}, {}, 0, false};
    p.offset = {{static_cast<float>(column) * box_.half.x, static_cast<float>(row) * box_.half.y}};
    p.point = {{start_.at[0] + p.offset.at[0], start_.at[1] + p.offset.at[1]}};
    p.mask = row < 0 ? body_.lowerMask : body_.upperMask;
    p.feet = p.offset.at[box_.verticalAxis] * up_.at[box_.verticalAxis] < 0;
    return p;
}

TileRecord* Collision::tileAt(const Point& p, int mask) const {
    return grid_.tileAt({p.at[0], p.at[1], body_.bodyCentre.z}, mask);
}

// A ladder top is no obstacle to a body that comes from below it, so that it can be jumped through.
bool Collision::passesOver(const TileRecord& record) const {
    return box_.verticalAxis == 1 && record.type == TileType::ladderTop &&
           (body_.upperMask & TileType::ladderTop) == 0 &&
           body_.lastPosition.y < record.surfaceHeight() - ladderTopTolerance;
}

// False when the tile at the probe kills.
bool Collision::meet(const Probe& p) {
    const TileRecord* record = tileAt(p.point, p.mask);
    if (!record || passesOver(*record)) return true;
    if (record->type & TileType::deadly) {
        if (!p.feet) return false;
        deadlyUnderFeet_ = true;
    } else if (p.feet) {
        const Point above{{p.point.at[0] + tileSize * up_.at[0], p.point.at[1] + tileSize * up_.at[1]}};
        if (!tileAt(above, p.mask)) safeUnderFeet_ = true;
    }
    push(p);
    return true;
}

void Collision::push(const Probe& p) {
    // Rounding goes away from zero, so that left of zero a body resting against a wall on its right would
    // take the cell before the wall for the wall.
    const float nudge = p.side[0] > 0 && p.point.at[0] < 0 ? skin : 0;
    const Point cell{{nearestCellCentre(p.point.at[0] + nudge), nearestCellCentre(p.point.at[1])}};
    float sign[2];
    for (int axis = 0; axis < 2; ++axis)
        sign[axis] = p.side[axis] != 0                  ? static_cast<float>(-p.side[axis])
                     : centre_.at[axis] < cell.at[axis] ? -1.0f
                                                        : 1.0f;
    const int axis = pushesAlongX(p, cell, sign) ? 0 : 1;
    Point proposal = centre_;
    proposal.at[axis] = cell.at[axis] + halfTile * sign[axis] - p.offset.at[axis];
    if (axis == box_.verticalAxis) {
        proposal.at[axis] -= skin * up_.at[axis];
        groundSide_ = sign[axis];
    } else if (proposal.at[axis] != centre_.at[axis]) {
        wallSide_ = sign[axis];
    }
    moveTo(proposal);
}

bool Collision::pushesAlongX(const Probe& p, const Point& cell, const float sign[2]) const {
    const float x = cell.at[0], y = cell.at[1];
    if (p.side[1] == 0 || tileAt({{x, y + tileSize * sign[1]}}, p.mask)) return true;
    const float toSide = distanceBetween(p.point, {{x + halfTile * sign[0], y}});
    const float toEnd = distanceBetween(p.point, {{x, y + halfTile * sign[1]}});
    if (toSide > toEnd || fastVerticalEntry(p, cell, sign)) return false;
    return p.side[0] != 0 && !tileAt({{x + tileSize * sign[0], y}}, p.mask);
}

// A probe that came through the top or bottom of the cell within this frame, mostly vertically: without this,
// a fast fall onto the edge of a floor would slide off its side.
bool Collision::fastVerticalEntry(const Probe& p, const Point& cell, const float sign[2]) const {
    const float vx = velocity_.at[0], vy = velocity_.at[1];
    const float previousY = p.point.at[1] - vy * body_.dt;
    const bool wasBeside = previousY > cell.at[1] - halfTile && previousY < cell.at[1] + halfTile;
    return p.point.at[0] != cell.at[0] + halfTile * sign[0] &&
           Zelkor::absolute(vy) > Zelkor::absolute(vx) + fastEntry && sign[1] * vy < 0 && !wasBeside;
}

// The last probe that hit gives the result; earlier pushes survive because they have narrowed the bounds.
void Collision::moveTo(const Point& proposal) {
    for (int axis = 0; axis < 2; ++axis) {
        const float to = Zelkor::clamp(proposal.at[axis], min_.at[axis], max_.at[axis]);
        if (to < start_.at[axis]) max_.at[axis] = to;
        if (to > start_.at[axis]) min_.at[axis] = to;
        centre_.at[axis] = to;
    }
}

TileContact Collision::resolve() {
    TileContact contact{body_.bodyCentre, 0, 0, false};
    for (int i = 0; i < 8 && !contact.killed; ++i)
        contact.killed = !meet(probe(i));
    contact.killed = contact.killed || (deadlyUnderFeet_ && !safeUnderFeet_);
    contact.wallSide = wallSide_;
    contact.groundSide = groundSide_ * up_.at[box_.verticalAxis];
    if (!contact.killed) {
        contact.bodyCentre.x = centre_.at[0] + box_.toBodyCentre.x;
        contact.bodyCentre.y = centre_.at[1] + box_.toBodyCentre.y;
    }
    return contact;
}

} // namespace

HeroBox heroBox(const Vec3& bodyCentre, const Vec3& up, bool crouching) {
    const float halfHeight = crouching ? heroConstants.crouchHalfHeight : heroConstants.halfHeight;
    const float shift = crouching ? heroConstants.crouchBoxBelowCentre : heroConstants.boxBelowCentre;
    HeroBox box{};
    if (Zelkor::absolute(up.y) > 0.5f) {
        box.verticalAxis = 1;
        box.half = {heroConstants.halfWidth, halfHeight, 0};
        box.toBodyCentre = {0, up.y > 0 ? shift : -shift, 0};
    } else {
        box.verticalAxis = 0;
        box.half = {halfHeight, heroConstants.halfWidth, 0};
        box.toBodyCentre = {up.x > 0 ? shift : -shift, 0, 0};
    }
    box.centre = bodyCentre - box.toBodyCentre;
    return box;
}

TileContact collideWithTiles(const TileGrid& grid, const TileBody& body) {
    return Collision(grid, body).resolve();
}
