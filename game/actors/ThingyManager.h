// Owns the actors of a stage in ten groups, creates them by spawn type, updates and removes them, and answers
// the spatial queries by which they find and hurt one another.
#pragma once

#include "actors/Thingy.h"

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Zelkor {
class Scene;
class Unit;
struct GameTimer;
} // namespace Zelkor

// How an actor class makes itself known: a constant of this type in its own file adds its row to the factory.
//     static const SpawnRow row{13, [](Zelkor::Unit& u) { return std::make_unique<Goomba>(u); }};
struct SpawnRow {
    using Create = std::unique_ptr<Thingy> (*)(Zelkor::Unit&);
    SpawnRow(int spawnType, Create create);
};

class ThingyManager {
  public:
    ThingyManager();
    ~ThingyManager();
    ThingyManager(const ThingyManager&) = delete;

    // Where units of new actors are created; set by each session, and cleared of actors before it goes.
    void setScene(Zelkor::Scene* scene);

    // Null, with a log line, for a type that no class has.
    Thingy* spawn(int type, const std::string& unitName, const Zelkor::Vec3& position,
                  const Zelkor::Quat& orientation = {});
    void update();
    // Deletes every actor and its unit.
    void clear();

    // Null for an empty group; of equally near ones the lower slot.
    Thingy* nearest(int group, const Zelkor::Vec3& point) const;
    // The last non-zero onHit result, or 0.
    int hitGroup(int group, const Attack& attack, bool hitAll);
    // Strictly inside the box in all three axes.
    void collectInBox(int group, const Zelkor::Vec3& boxMin, const Zelkor::Vec3& boxMax,
                      std::vector<Thingy*>& out) const;
    void collectInRadius(int group, const Zelkor::Vec3& point, float radius, std::vector<Thingy*>& out) const;
    void collectAll(int group, std::vector<Thingy*>& out) const;
    bool solidPlatformAt(const Zelkor::Vec3& point) const;

  private:
    struct Group {
        std::vector<std::unique_ptr<Thingy>> slots; // a removed actor leaves a null
        std::vector<int> freeSlots;
    };
    void insert(std::unique_ptr<Thingy> actor);
    void remove(Group& group, std::size_t slot);

    std::array<Group, groupCount> groups_;
    Zelkor::Scene* scene_ = nullptr;
};

// The rotation of an actor that faces right (+1) or left (-1).
Zelkor::Quat facingRotation(float facing);
void spawnBlood(const Zelkor::Vec3& position, float facing);
void dropLoot(const Zelkor::Vec3& position);
// Tells the event that spawned the actor that it has died.
void notifyDeath(const Thingy& actor);
