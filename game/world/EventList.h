// The events of the running stage, wired into a trigger graph.
#pragma once

#include "world/Event.h"

#include <memory>
#include <string>
#include <vector>

namespace Zelkor {
class TokenReader;
}

class EventList {
  public:
    EventList();
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
    void resetEvents();

    int size() const { return static_cast<int>(events_.size()); }
    // Null when out of range.
    Event* at(int index) const;

  private:
    void readBlock(Zelkor::TokenReader& reader, int depth);

    std::vector<std::unique_ptr<Event>> events_;
    std::vector<int> startup_;
};
