// The events of the running stage, wired into a trigger graph.
#pragma once

#include "world/Event.h"

#include <memory>
#include <string>
#include <vector>

namespace Zelkor {
class TokenReader;
}
class Session;

// How an event class makes itself known: a constant of this type in its own file enters the class under its
// keyword. The class has a name and is built from its fields in an event file, after the keyword:
//     static constexpr const char* name = "Delay";
//     DelayEvent(EventList& owner, Zelkor::TokenReader& reader);
struct EventRowBase {
    using Read = std::unique_ptr<Event> (*)(EventList&, Zelkor::TokenReader&);
    EventRowBase(const char* keyword, Read read);
};

template <class Class>
struct EventRow : EventRowBase {
    EventRow()
        : EventRowBase(Class::name,
                       [](EventList& owner, Zelkor::TokenReader& reader) -> std::unique_ptr<Event> {
                           return std::make_unique<Class>(owner, reader);
                       }) {}
};

class EventList {
  public:
    // One poke may set off a chain of events that fire at once. A chain that runs in a circle is cut off
    // where it is deeper than any stage's, or where it has poked more often.
    static constexpr int maxChainDepth = 256;
    static constexpr int maxChainPokes = 20000;

    // session: what the events act on; it owns the list.
    explicit EventList(Session& session);
    ~EventList();
    EventList(const EventList&) = delete;

    // Reads "data/levels/" + stageName + ".event" and starts the events. Without the file: no events.
    void loadEvents(const std::string& stageName);
    // Appends what the reader holds and numbers the events; starts nothing.
    void read(Zelkor::TokenReader& reader);
    // Calls start on every event in order, then pokes the start-up list.
    void startEvents();
    // Indices out of range are ignored.
    void poke(int index);
    void fireTriggers(Event& event);
    void updateEvents();
    void notifyFinished(int index);
    // The actor is being deleted: the event that spawned it must not touch it any more.
    void forgetActor(const Thingy& actor);
    void resetEvents();
    // Resets the events that this one triggers, and through them those that they have triggered.
    void resetTriggered(const Event& event);

    int size() const { return static_cast<int>(events_.size()); }
    // Null when out of range.
    Event* at(int index) const;
    Session& session() const { return session_; }

  private:
    bool readEvent(const std::string& keyword, Zelkor::TokenReader& reader);
    void readTrailer(const std::string& word, Zelkor::TokenReader& reader);

    Session& session_;
    std::vector<std::unique_ptr<Event>> events_;
    std::vector<int> startup_;
    int chainDepth_ = 0, chainPokes_ = 0;
    std::vector<const Event*> resetting_; // whose triggered events are still to be reset
    bool resetRunning_ = false;
};
