// Events that act on the stage as a whole.
#pragma once

#include "world/EventList.h"

#include <string>

// Moves every hero to its position.
class TeleportPlayerEvent : public Event {
  public:
    static constexpr const char* name = "TeleportPlayer";
    TeleportPlayerEvent(EventList& owner, Zelkor::TokenReader& reader);
    void activate() override;
    const char* keyword() const override { return name; }
};

// Sets an option of the stage.
class OptionEvent : public Event {
  public:
    static constexpr int gravityOption = 0; // the factor of the hero's gravity

    static constexpr const char* name = "Option";
    OptionEvent(EventList& owner, Zelkor::TokenReader& reader);
    void activate() override;
    const char* keyword() const override { return name; }

    int option = 0;
    float value = 0;
};

// Opens a menu by its kind.
class OpenMenuEvent : public Event {
  public:
    static constexpr const char* name = "OpenMenu";
    OpenMenuEvent(EventList& owner, Zelkor::TokenReader& reader);
    void activate() override;
    const char* keyword() const override { return name; }

    int menu = 0;
};

// Changes to a track.
class MusicEvent : public Event {
  public:
    static constexpr const char* name = "Music";
    MusicEvent(EventList& owner, Zelkor::TokenReader& reader);
    void activate() override;
    const char* keyword() const override { return name; }

    std::string track;
};

// A waypoint of a track; the rails that it triggers lead on from it.
class RailEvent : public Event {
  public:
    static constexpr const char* name = "Rail";
    RailEvent(EventList& owner, Zelkor::TokenReader& reader);
    // Spawns the track through this and all rails that follow, unless it is there.
    void activate() override;
    void forgetActor(const Thingy& gone) override;
    const char* keyword() const override { return name; }

  private:
    void collect(std::vector<const RailEvent*>& chain) const;

    Thingy* track_ = nullptr;
};
