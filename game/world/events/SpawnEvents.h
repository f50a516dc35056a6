// Events that put actors into the stage.
#pragma once

#include "world/EventList.h"

#include <string>

class Thingy;

// What all of them share: a place, a mesh, a spawn type, and the actor they hold, if any.
class SpawningEvent : public Event {
  public:
    void finished() override;
    void forgetActor(const Thingy& actor) override;

    std::string mesh;
    int actorType = 0;
    Thingy* actor = nullptr;

  protected:
    SpawningEvent(EventList& owner, Zelkor::TokenReader& reader, bool updating);

    // A new actor, linked to this event and given its parameters; null when the type has no class.
    Thingy* spawnAt(const Zelkor::Vec3& place);
    // The held actor goes as soon as it is far off screen.
    void removeActor();
};

class SpawnPlayerEvent : public SpawningEvent {
  public:
    static constexpr const char* name = "SpawnPlayer";
    SpawnPlayerEvent(EventList& owner, Zelkor::TokenReader& reader);
    void activate() override;
    const char* keyword() const override { return name; }
};

// Keeps one enemy alive around its place: spawned just off the screen, taken away far from it.
class SpawnEnemyEvent : public SpawningEvent {
  public:
    static constexpr const char* name = "SpawnEnemy";
    SpawnEnemyEvent(EventList& owner, Zelkor::TokenReader& reader);
    void activate() override;
    void reset() override;
    void update(float time, float dt) override;
    void finished() override;
    const char* keyword() const override { return name; }

    float respawnTimer = 0; // seconds
    bool spawnNow = false;  // even where it can be seen

  private:
    void keepOrSpawn(float dt);
};

class SpawnThingyEvent : public SpawningEvent {
  public:
    static constexpr const char* name = "SpawnThingy";
    SpawnThingyEvent(EventList& owner, Zelkor::TokenReader& reader);
    void activate() override;
    void reset() override;
    const char* keyword() const override { return name; }
};

// An actor that is there from the start of the stage; pokes go to the actor.
class ThingyEvent : public SpawningEvent {
  public:
    static constexpr const char* name = "Thingy";
    ThingyEvent(EventList& owner, Zelkor::TokenReader& reader);
    void activate() override;
    void reset() override;
    void start() override;
    const char* keyword() const override { return name; }
};

// One actor after the other, somewhere in a box or beside the screen.
class RepeatedSpawnEvent : public SpawningEvent {
  public:
    enum Side { inPlace = 0, rightOfScreen = 1, leftOfScreen = 2, aboveScreen = 3, belowScreen = 4 };

    static constexpr const char* name = "RepeatedSpawn";
    RepeatedSpawnEvent(EventList& owner, Zelkor::TokenReader& reader);
    void activate() override;
    void update(float time, float dt) override;
    void finished() override;
    const char* keyword() const override { return name; }

    Zelkor::Vec2 size; // of the box, world units
    int side = inPlace;
    bool relative = false; // to the hero
    float interval = 0;    // seconds
    float countdown = 0;

  private:
    // False when nothing is to be spawned there now.
    bool moveBesideScreen(Zelkor::Vec3& place, float heroScreenX) const;
};
