#include "actors/platforms/MovingPlatform.h"

#include "actors/ThingyManager.h"
#include "animation/SkeletonInstance.h"
#include "resources/Unit.h"

#include <array>

using namespace Zelkor;

namespace {

const SpawnRow row{18, createActor<MovingPlatform>};

constexpr float wheelSpeed = 15; // radians per second

struct NamedBox {
    const char* unit;
    Vec3 size, offset;
};
constexpr NamedBox namedBoxes[] = {{"tiles/forest/p1shroom", {10, 4, 20}, {5, 2, 10}}};

} // namespace

PlatformContact PlatformBox::pushOut(Vec3& centre, const Vec3& halfSize) const {
    if (centre.x + halfSize.x < left || centre.x - halfSize.x >= right || centre.y + halfSize.y < bottom ||
        centre.y - halfSize.y >= top)
        return {};
    struct Escape {
        float x, y;
        Vec3 normal;
    };
    const std::array<Escape, 4> escapes{{{centre.x, top + halfSize.y, {0, 1, 0}},
                                         {centre.x, bottom - halfSize.y, {0, -1, 0}},
                                         {left - halfSize.x, centre.y, {-1, 0, 0}},
                                         {right + halfSize.x, centre.y, {1, 0, 0}}}};
    const auto way = [&](const Escape& escape) {
        return absolute(escape.x - centre.x) + absolute(escape.y - centre.y); // one of them is 0
    };
    const Escape* nearest = &escapes[0];
    for (const Escape& escape : escapes)
        if (way(escape) < way(*nearest)) nearest = &escape;
    centre.x = nearest->x;
    centre.y = nearest->y;
    return {true, nearest->normal};
}

MovingPlatform::MovingPlatform(Unit& ownUnit) : Platform(ownUnit) {
    path.start = ownUnit.position;
    quatAxisX(path.direction, ownUnit.orientation);
    ownUnit.orientation = {};
    for (const NamedBox& named : namedBoxes)
        if (ownUnit.name() == named.unit) {
            size = named.size;
            offset = named.offset;
        }
}

void MovingPlatform::update(float time, float dt) {
    const Vec3 from = position();
    path.advance(dt);
    refreshPosition();
    spinWheel(time);
    finishMove(from);
}

void MovingPlatform::refreshPosition() {
    unit->position = pathPosition();
}

void MovingPlatform::finishMove(const Vec3& from) {
    lastMove = position() - from;
    hasRider = false;
}

void MovingPlatform::spinWheel(float time) {
    if (!unit->skeleton || unit->skeleton->jointCount() == 0) return;
    auto& overrides = unit->skeleton->overrides;
    if (overrides.empty()) overrides.push_back({});
    overrides[0].joint = 0;
    overrides[0].overrideRotation = true;
    overrides[0].rotation = quatFromAxisAngle(wheelSpeed * time, {0, 0, 1});
}

void MovingPlatform::setParameter(int index, float value) {
    path.setParameter(index, value);
    refreshPosition();
}

PlatformBox MovingPlatform::box() const {
    const Vec3 corner = position() - offset;
    return {corner.x, corner.y, corner.x + size.x, corner.y + size.y};
}

PlatformContact MovingPlatform::pushOut(Vec3& centre, const Vec3& halfSize, const Vec3&) {
    const PlatformContact contact = box().pushOut(centre, halfSize);
    if (!contact.pushed) return contact;
    if (contact.normal.y > 0) hasRider = true;
    lastRiderPosition = centre - Vec3{0, halfSize.y, 0};
    return contact;
}

bool MovingPlatform::containsPoint(float x, float y) const {
    const PlatformBox b = box();
    return x > b.left && x < b.right && y > b.bottom && y < b.top;
}
