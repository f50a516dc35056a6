#include "world/events/FlowEvents.h"

#include "world/events/EventFields.h"

using namespace Zelkor;

namespace {

const EventRow<CounterEvent> counterRow;
const EventRow<DelayEvent> delayRow;
const EventRow<NonResetEvent> nonResetRow;

} // namespace

CounterEvent::CounterEvent(EventList& owner, TokenReader& reader) : Event(owner) {
    EventFields::position(reader); // where it stands in an editor
    hitsNeeded = EventFields::integer(reader);
}

void CounterEvent::activate() {
    list.fireTriggers(*this);
    hitCount = 0;
}

DelayEvent::DelayEvent(EventList& owner, TokenReader& reader) : Event(owner, true) {
    EventFields::position(reader);
    delay = EventFields::number(reader);
}

void DelayEvent::reset() {
    elapsed = 0;
    Event::reset();
}

void DelayEvent::update(float, float dt) {
    elapsed += dt;
    if (elapsed < delay) return;
    elapsed = 0;
    active = false;
    list.fireTriggers(*this);
}

NonResetEvent::NonResetEvent(EventList& owner, TokenReader& reader) : Event(owner) {
    EventFields::position(reader);
}

void NonResetEvent::activate() {
    if (done) return;
    done = true; // before it fires: what it sets off may lead back here
    list.fireTriggers(*this);
}
