// One item of a stage's trigger graph.
#pragma once

#include "math/Math.h"

#include <vector>

class EventList;
class Thingy;

struct SpawnParameter {
    int number = 0;
    float value = 0;
};

class Event {
  public:
    explicit Event(EventList& owner, bool updating = false, int hits = 1)
        : updates(updating), hitsNeeded(hits), list(owner) {}
    virtual ~Event() = default;
    Event(const Event&) = delete;

    // A poke has brought hitCount to hitsNeeded or above.
    virtual void activate() {}
    // On a stage restart, and when an event that triggers this one is reset. If it has fired, it takes the
    // events it triggers back with it. A class's own reset does its part first.
    virtual void reset();
    // Each game update while active, for the classes that update. Seconds of the timer "game".
    virtual void update(float /*time*/, float /*dt*/) {}
    // An actor spawned by this event has died.
    virtual void finished() {}
    // An actor spawned by this event is being deleted, dead or not.
    virtual void forgetActor(const Thingy& /*actor*/) {}
    // The stage starts or restarts, before the start-up pokes.
    virtual void start() {}
    // The keyword of its class in an event file.
    virtual const char* keyword() const = 0;

    int index = 0;
    bool fired = false;
    const bool updates;
    bool active = false;
    std::vector<int> triggers; // indices of the events poked when this one fires
    std::vector<SpawnParameter> params;
    int hitCount = 0;
    int hitsNeeded;
    Zelkor::Vec3 position;
    Zelkor::Quat rotation;

  protected:
    EventList& list;
};
