#include "world/events/AreaEvents.h"

#include "actors/ThingyManager.h"
#include "actors/player/Player.h"
#include "core/EngineManagers.h"
#include "fx/ParticleManager.h"
#include "game/GameCamera.h"
#include "game/Session.h"

#include <cmath>
#include <iterator>

using namespace Zelkor;

namespace {

const EventRow<PlayerInBoxEvent> playerInBoxRow;
const EventRow<CameraBoundsEvent> cameraBoundsRow;
const EventRow<CameraEdgeEvent> cameraEdgeRow;
const EventRow<FieldEvent> fieldRow;

// The axes that a hero stands on, by the type of the field he is in.
constexpr struct {
    Vec3 up, right;
} fieldAxes[] = {{{0, 1, 0}, {1, 0, 0}}, {{0, -1, 0}, {1, 0, 0}}, {{1, 0, 0}, {0, 1, 0}}, {{-1, 0, 0}, {0, 1, 0}}};

constexpr const char* fieldSprite = "sprites/gravityfield";
constexpr float fieldDepth = -6;       // behind the figures and the faces of tiles
constexpr float fieldReach = 30;       // a hero's place may be this far outside while his middle is inside
constexpr float fieldRepeat = 0.1f;    // pictures for a unit of the world
constexpr Vec4 fieldColour{1, 1, 1, 0.55f};

} // namespace

PlayerInBoxEvent::PlayerInBoxEvent(EventList& owner, TokenReader& reader) : Event(owner, true), box(reader) {}

void PlayerInBoxEvent::reset() {
    heroesInside = 0;
    Event::reset();
}

void PlayerInBoxEvent::update(float, float) {
    heroes_.clear();
    list.session().thingyManager.collectInBox(GROUP_PLAYER, box.min, box.max, heroes_);
    const int count = static_cast<int>(heroes_.size());
    if (count > heroesInside) list.fireTriggers(*this);
    heroesInside = count;
}

CameraBoundsEvent::CameraBoundsEvent(EventList& owner, TokenReader& reader) : Event(owner), box(reader) {
    instant = EventFields::integer(reader) != 0;
}

void CameraBoundsEvent::activate() {
    list.session().camera->setArea(box.min, box.max, instant, this);
    list.fireTriggers(*this);
}

CameraEdgeEvent::CameraEdgeEvent(EventList& owner, TokenReader& reader) : Event(owner), box(reader) {
    direction = EventFields::integer(reader);
}

void CameraEdgeEvent::activate() {
    list.session().camera->addEdge(this);
}

FieldEvent::FieldEvent(EventList& owner, TokenReader& reader) : Event(owner, true), box(reader) {
    fieldType = EventFields::integer(reader);
}

void FieldEvent::activate() {
    active = fieldType >= 0 && fieldType < static_cast<int>(std::size(fieldAxes));
    if (!active || sprite_) return;
    sprite_ = engineManagers()->particleManager->sprites().add(fieldSprite);
    const Vec3 middle = 0.5f * (box.min + box.max), half = 0.5f * (box.max - box.min);
    const Vec3 up = fieldAxes[fieldType].up, right{up.y, -up.x, 0};
    sprite_->middle = {middle.x, middle.y, fieldDepth};
    // The picture stands on the side that heroes fall to, so that it always streams down itself.
    sprite_->halfUp = absolute(dot(half, up)) * up;
    sprite_->halfRight = absolute(dot(half, right)) * right;
    sprite_->colour = fieldColour;
    stream(0);
}

void FieldEvent::reset() {
    sprite_ = {};
    Event::reset();
}

void FieldEvent::update(float time, float) {
    const Vec3 reach{fieldReach, fieldReach, fieldReach};
    heroes_.clear();
    list.session().thingyManager.collectInBox(GROUP_PLAYER, box.min - reach, box.max + reach, heroes_);
    for (Thingy* actor : heroes_) {
        auto* hero = dynamic_cast<Player*>(actor);
        if (!hero) continue;
        const Vec3& middle = hero->bodyCentre;
        const bool inside = middle.x > box.min.x && middle.x < box.max.x && middle.y > box.min.y &&
                            middle.y < box.max.y;
        if (inside) hero->setGravityFrame(fieldAxes[fieldType].up, fieldAxes[fieldType].right);
    }
    stream(time);
}

void FieldEvent::stream(float time) {
    const float shift = std::fmod(time, 1.0f); // a whole picture later it looks the same
    sprite_->left = 0;
    sprite_->right = fieldRepeat * 2 * length(sprite_->halfRight);
    sprite_->top = -shift;
    sprite_->bottom = fieldRepeat * 2 * length(sprite_->halfUp) - shift;
}
