#include "world/events/StageEvents.h"

#include "actors/ThingyManager.h"
#include "actors/rides/RailThingy.h"
#include "audio/AudioManager.h"
#include "core/EngineManagers.h"
#include "frontend/MenuManager.h"
#include "game/Game.h"
#include "game/Session.h"
#include "io/TokenReader.h"
#include "world/events/EventFields.h"

#include <algorithm>

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

void OpenMenuEvent::activate() {
    Game::get().menuManager->openMenu(menu);
}

MusicEvent::MusicEvent(EventList& owner, TokenReader& reader) : Event(owner) {
    position = EventFields::position(reader);
    track = reader.readWord();
}

void MusicEvent::activate() {
    engineManagers()->audioManager->playMusic(track);
}

RailEvent::RailEvent(EventList& owner, TokenReader& reader) : Event(owner) {
    position = EventFields::position(reader);
}

void RailEvent::activate() {
    if (track_) return;
    Thingy* spawned = list.session().thingyManager.spawn(SpawnType::rail, "", position);
    auto* track = dynamic_cast<RailThingy*>(spawned);
    if (!track) return;
    track_ = track;
    track->linkedEvent = index;
    std::vector<const RailEvent*> chain;
    collect(chain);
    std::vector<Vec3> points;
    for (const RailEvent* rail : chain)
        points.push_back(rail->position);
    track->setWaypoints(std::move(points));
}

// Each once, also where rails lead back to one another.
void RailEvent::collect(std::vector<const RailEvent*>& chain) const {
    if (std::find(chain.begin(), chain.end(), this) != chain.end()) return;
    chain.push_back(this);
    for (const int next : triggers)
        if (const auto* rail = dynamic_cast<const RailEvent*>(list.at(next))) rail->collect(chain);
}

void RailEvent::forgetActor(const Thingy& gone) {
    if (track_ == &gone) track_ = nullptr;
}
