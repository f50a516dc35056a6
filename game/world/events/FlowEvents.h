// Events that only steer others: count, wait, fire once.
#pragma once

#include "world/EventList.h"

// Fires at every hitsNeeded-th poke.
class CounterEvent : public Event {
  public:
    static constexpr const char* name = "Counter";
    CounterEvent(EventList& owner, Zelkor::TokenReader& reader);
    void activate() override;
    const char* keyword() const override { return name; }
};

// Fires some time after it was poked.
class DelayEvent : public Event {
  public:
    static constexpr const char* name = "Delay";
    DelayEvent(EventList& owner, Zelkor::TokenReader& reader);
    void activate() override { active = true; }
    void reset() override;
    void update(float time, float dt) override;
    const char* keyword() const override { return name; }

    float delay = 0; // seconds
    float elapsed = 0;
};

// Fires once in a stage, however often that restarts.
class NonResetEvent : public Event {
  public:
    static constexpr const char* name = "NonReset";
    NonResetEvent(EventList& owner, Zelkor::TokenReader& reader);
    void activate() override;
    void reset() override {}
    const char* keyword() const override { return name; }

    bool done = false;
};
