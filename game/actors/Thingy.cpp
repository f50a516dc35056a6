#include "actors/Thingy.h"

#include "animation/SkeletonInstance.h"
#include "core/TimerManager.h"
#include "render/Material.h"
#include "resources/Unit.h"

using namespace Zelkor;

namespace {

constexpr float flashFade = 3;        // per second
constexpr float flashStrength = 0.3f; // of the red at the moment of a hit
constexpr Vec4 hitRed{0.5f, 0, 0, 1};
constexpr Vec4 white{1, 1, 1, 1};

// The colour the flash fades back to. Of several coloured submeshes the last one wins; the outline's own
// material is no part of the figure's colour.
Vec4 colourOf(const Unit& unit) {
    Vec4 colour = white;
    for (const RenderItem& item : unit.items)
        if (item.material().name != "edge" && item.colour() != white) colour = item.colour();
    return colour;
}

float mixed(float a, float b, float t) {
    return a * (1 - t) + b * t;
}

} // namespace

Thingy::Thingy(Unit& ownUnit, int ownGroup) : unit(&ownUnit), group(ownGroup), baseColour(colourOf(ownUnit)) {
    if (GameTimer* game = TimerManager::instance().findTimer("game")) bindTimer(*game);
}

void Thingy::bindTimer(GameTimer& other) {
    timer = &other;
    if (unit->skeleton) unit->skeleton->timer = &other;
}

int Thingy::onHit(const Attack&) {
    flash = 1;
    return 1;
}

void Thingy::updateFlash(float, float dt) {
    if (flash == 0) return;
    flash = clamp(flash - flashFade * dt, 0, 1);
    tint(flashStrength * flash);
}

Vec3 Thingy::position() const {
    return unit->position;
}

void Thingy::tint(float t) {
    const Vec4 colour{mixed(baseColour.x, hitRed.x, t), mixed(baseColour.y, hitRed.y, t),
                      mixed(baseColour.z, hitRed.z, t), mixed(baseColour.w, hitRed.w, t)};
    for (RenderItem& item : unit->items)
        item.setColour(colour);
}
