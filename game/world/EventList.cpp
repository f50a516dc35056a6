#include "world/EventList.h"

#include "actors/Thingy.h"
#include "core/TimerManager.h"
#include "io/DataFiles.h"
#include "io/TokenReader.h"

#include <algorithm>
#include <map>

using namespace Zelkor;

namespace {

// Filled by constants of other files before main, so it lives in a function.
std::map<std::string, EventRowBase::Read, std::less<>>& eventClasses() {
    static std::map<std::string, EventRowBase::Read, std::less<>> table;
    return table;
}

void readIndices(TokenReader& reader, std::vector<int>* indices) {
    // A reader stuck in front of a letter gives zeros without coming to the end, so a count is taken no
    // further than the bytes could hold.
    const int claimed = reader.readInt();
    const int count = std::min(claimed, reader.left());
    for (int i = 0; i < count && !reader.atEnd(); ++i) {
        const int index = reader.readInt();
        if (indices && !reader.atEnd()) indices->push_back(index);
    }
}

} // namespace

EventRowBase::EventRowBase(const char* keyword, Read read) {
    eventClasses()[keyword] = read;
}

void Event::reset() {
    if (!fired) return;
    active = false;
    hitCount = 0;
    fired = false;
    list.resetTriggered(*this);
}

EventList::EventList(Session& session) : session_(session) {}

EventList::~EventList() = default;

// --- Reading ----------------------------------------------------------------------------------------------

void EventList::loadEvents(const std::string& stageName) {
    if (const auto reader = openDataTokens("levels/" + stageName + ".event")) read(*reader);
    startEvents();
}

// The file is one block that holds a block for each event. Blocks are only counted: what a word means does
// not depend on how deep it stands.
void EventList::read(TokenReader& reader) {
    int openBlocks = 1;
    while (openBlocks > 0 && !reader.atEnd()) {
        std::string word = reader.readWord();
        if (word.empty()) continue;
        if (word.back() == '}') {
            --openBlocks;
            continue;
        }
        if (word.back() == '{') word.pop_back();
        if (readEvent(word, reader))
            ++openBlocks;
        else
            readTrailer(word, reader);
    }
    for (int i = 0; i < size(); ++i)
        events_[i]->index = i;
}

bool EventList::readEvent(const std::string& keyword, TokenReader& reader) {
    const auto found = eventClasses().find(keyword);
    if (found == eventClasses().end()) return false;
    events_.push_back(found->second(*this, reader));
    return true;
}

void EventList::readTrailer(const std::string& word, TokenReader& reader) {
    Event* last = events_.empty() ? nullptr : events_.back().get();
    if (word == "StartupTriggers") {
        readIndices(reader, &startup_);
    } else if (word == "triggers") {
        readIndices(reader, last ? &last->triggers : nullptr);
    } else if (word == "param") {
        SpawnParameter parameter;
        parameter.number = reader.readInt();
        parameter.value = reader.readFloat();
        if (last) last->params.push_back(parameter);
    } else if (word == "offset") {
        for (int i = 0; i < 3; ++i)
            reader.readFloat();
    }
}

// --- The graph --------------------------------------------------------------------------------------------

Event* EventList::at(int index) const {
    return index >= 0 && index < size() ? events_[static_cast<std::size_t>(index)].get() : nullptr;
}

void EventList::startEvents() {
    for (const auto& event : events_)
        event->start();
    for (const int index : startup_)
        poke(index);
}

void EventList::poke(int index) {
    Event* event = at(index);
    if (!event || chainDepth_ >= maxChainDepth || chainPokes_ >= maxChainPokes) return;
    ++chainPokes_;
    ++chainDepth_;
    ++event->hitCount;
    if (event->hitCount >= event->hitsNeeded) event->activate();
    event->fired = true;
    if (--chainDepth_ == 0) chainPokes_ = 0;
}

void EventList::fireTriggers(Event& event) {
    for (const int index : event.triggers)
        poke(index);
}

void EventList::updateEvents() {
    const GameTimer* timer = TimerManager::instance().findTimer("game");
    if (!timer) return;
    for (const auto& event : events_)
        if (event->active && event->updates) event->update(static_cast<float>(timer->total), timer->delta);
}

void EventList::notifyFinished(int index) {
    if (Event* event = at(index)) event->finished();
}

void EventList::forgetActor(const Thingy& actor) {
    if (Event* event = at(actor.linkedEvent)) event->forgetActor(actor);
}

void EventList::resetEvents() {
    for (const auto& event : events_)
        event->reset();
}

// Resets are independent of one another, so a chain of any length is worked off as a list and not by
// descending into it. A circle ends by itself: an event that has been reset counts as not fired.
void EventList::resetTriggered(const Event& event) {
    resetting_.push_back(&event);
    if (resetRunning_) return;
    resetRunning_ = true;
    while (!resetting_.empty()) {
        const Event* next = resetting_.back();
        resetting_.pop_back();
        for (const int index : next->triggers)
            if (Event* triggered = at(index)) triggered->reset();
    }
    resetRunning_ = false;
}
