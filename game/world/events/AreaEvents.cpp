#include "world/events/AreaEvents.h"

#include "actors/ThingyManager.h"
#include "game/GameCamera.h"
#include "game/Session.h"

using namespace Zelkor;

namespace {

const EventRow<PlayerInBoxEvent> playerInBoxRow;
const EventRow<CameraBoundsEvent> cameraBoundsRow;
const EventRow<CameraEdgeEvent> cameraEdgeRow;
const EventRow<FieldEvent> fieldRow;

} // namespace

PlayerInBoxEvent::PlayerInBoxEvent(EventList& owner, TokenReader& reader) : Event(owner, true), box(reader) {}

void PlayerInBoxEvent::reset() {
    heroesInside = 0;
    Event::reset();
}

void PlayerInBoxEvent::update(float, float) {
    std::vector<Thingy*> heroes;
    list.session().thingyManager.collectInBox(GROUP_PLAYER, box.min, box.max, heroes);
    const int count = static_cast<int>(heroes.size());
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
