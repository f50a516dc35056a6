// Events bound to a part of the stage: the hero inside a box, camera areas and their exits, gravity.
#pragma once

#include "fx/SpriteLists.h"
#include "world/EventList.h"
#include "world/events/EventFields.h"

#include <vector>

// Fires each time a hero enters its box.
class PlayerInBoxEvent : public Event {
  public:
    static constexpr const char* name = "PlayerRect";
    PlayerInBoxEvent(EventList& owner, Zelkor::TokenReader& reader);
    void activate() override { active = true; }
    void reset() override;
    void update(float time, float dt) override;
    const char* keyword() const override { return name; }

    EventBox box;
    int heroesInside = 0; // at the last update

  private:
    std::vector<Thingy*> heroes_; // scratch of one update
};

// Makes its box the camera's area.
class CameraBoundsEvent : public Event {
  public:
    static constexpr const char* name = "CameraBounds";
    CameraBoundsEvent(EventList& owner, Zelkor::TokenReader& reader);
    void activate() override;
    const char* keyword() const override { return name; }

    EventBox box;
    bool instant = false; // without a pan
};

// A part of a side of the camera's area through which the hero may leave it.
class CameraEdgeEvent : public Event {
  public:
    static constexpr const char* name = "CameraEdge";
    CameraEdgeEvent(EventList& owner, Zelkor::TokenReader& reader);
    void activate() override;
    // The hero goes through.
    void fire() { list.fireTriggers(*this); }
    const char* keyword() const override { return name; }

    EventBox box;
    int direction = 0; // GameCamera::Direction
};

// Turns the gravity of heroes inside its box, and shows where they fall to.
class FieldEvent : public Event {
  public:
    static constexpr const char* name = "Field";
    FieldEvent(EventList& owner, Zelkor::TokenReader& reader);
    void activate() override;
    void reset() override;
    void update(float time, float dt) override;
    const char* keyword() const override { return name; }

    EventBox box;
    int fieldType = 0; // 0 falls down, 1 up, 2 to the left, 3 to the right; nothing else acts

  private:
    void stream(float time);

    Zelkor::SpriteLists::Handle sprite_; // covers the box while the field acts
    std::vector<Thingy*> heroes_;        // scratch of one update
};
