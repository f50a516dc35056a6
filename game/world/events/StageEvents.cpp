#include "world/events/StageEvents.h"

#include "actors/ThingyManager.h"
#include "game/Session.h"
#include "io/TokenReader.h"
#include "world/events/EventFields.h"

using namespace Zelkor;

namespace {

const EventRow<TeleportPlayerEvent> teleportRow;
const EventRow<OptionEvent> optionRow;
const EventRow<OpenMenuEvent> openMenuRow;
const EventRow<MusicEvent> musicRow;
const EventRow<RailEvent> railRow;

} // namespace

TeleportPlayerEvent::TeleportPlayerEvent(EventList& owner, TokenReader& reader) : Event(owner) {
    position = EventFields::position(reader);
}

void TeleportPlayerEvent::activate() {
    std::vector<Thingy*> heroes;
    list.session().thingyManager.collectAll(GROUP_PLAYER, heroes);
    for (Thingy* hero : heroes)
        hero->teleport(position);
}

OptionEvent::OptionEvent(EventList& owner, TokenReader& reader) : Event(owner) {
    position = EventFields::position(reader);
    option = EventFields::integer(reader);
    value = EventFields::number(reader);
}

void OptionEvent::activate() {
    if (option == gravityOption) list.session().gravityFactor = value;
}

OpenMenuEvent::OpenMenuEvent(EventList& owner, TokenReader& reader) : Event(owner) {
    position = EventFields::position(reader);
    menu = EventFields::integer(reader);
}

MusicEvent::MusicEvent(EventList& owner, TokenReader& reader) : Event(owner) {
    position = EventFields::position(reader);
    track = reader.readWord();
}

RailEvent::RailEvent(EventList& owner, TokenReader& reader) : Event(owner) {
    position = EventFields::position(reader);
}
