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
//     static const SpawnRow row{13, createActor<Goomba>};
struct SpawnRow {
    using Create = std::unique_ptr<Thingy> (*)(Zelkor::Unit&);
    // spawnType: 1..lastSpawnType, no other class has it.
    SpawnRow(int spawnType, Create create);
};
inline constexpr int lastSpawnType = 200;

template <class Actor>
std::unique_ptr<Thingy> createActor(Zelkor::Unit& unit) {
    return std::make_unique<Actor>(unit);
}

// Spawn types that shared code asks for.
namespace SpawnType {
inline constexpr int player = 1;
inline constexpr int bullet = 2;
inline constexpr int bomb = 5;
inline constexpr int bandit1 = 20;
inline constexpr int rocketPlayer = 27;
inline constexpr int carrierBird = 36;
inline constexpr int movingLadder = 38;
inline constexpr int minecart = 41;
inline constexpr int rail = 42;
inline constexpr int bounceShroom = 45;
inline constexpr int pickup = 71;
inline constexpr int homingBullet = 72;
inline constexpr int rocketBullet = 73;
inline constexpr int laserBullet = 74;
inline constexpr int bounceBullet = 75;
inline constexpr int playerBullet = 76;
inline constexpr int bloodSplatter = 100;
inline constexpr int weaponDrop = 101;
inline constexpr int tileFall = 102;
inline constexpr int marker = 200; // nothing to see, only a place
} // namespace SpawnType

class ThingyManager {
  public:
    ThingyManager();
    ~ThingyManager();
    ThingyManager(const ThingyManager&) = delete;

    // Where units of new actors are created; set by each session, and cleared of actors before it goes.
    void setScene(Zelkor::Scene* scene);

    // Whether a class has the type.
    static bool canSpawn(int type);
    // Null, with a log line, for a type that no class has.
    Thingy* spawn(int type, const std::string& unitName, const Zelkor::Vec3& position,
                  const Zelkor::Quat& orientation = {});
    // Groups from 9 down to 0, slots in order: what is spawned meanwhile is updated in the same pass if it
    // lands behind the one that spawned it.
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
    // Whether the actor still lives, in that group.
    bool contains(int group, const Thingy* actor) const;
    // Of the actors of one class; null without any.
    template <class Actor>
    Actor* nearestOf(int group, const Zelkor::Vec3& point) const {
        Actor* nearest = nullptr;
        for (const auto& slot : groups_[static_cast<std::size_t>(group)].slots)
            if (auto* actor = dynamic_cast<Actor*>(slot.get()))
                if (!nearest || distance(actor->position(), point) < distance(nearest->position(), point))
                    nearest = actor;
        return nearest;
    }

  private:
    struct Group {
        std::vector<std::unique_ptr<Thingy>> slots; // a removed actor leaves a null
        std::vector<int> freeSlots;
    };
    void insert(std::unique_ptr<Thingy> actor);
    void updateActor(Thingy& actor) const;
    void remove(Group& group, std::size_t slot);
    void release(std::unique_ptr<Thingy> actor);

    std::array<Group, groupCount> groups_;
    Zelkor::Scene* scene_ = nullptr;
};

// The rotation of an actor that faces right (+1) or left (-1).
Zelkor::Quat facingRotation(float facing);
void spawnBlood(const Zelkor::Vec3& position, float facing);
// What an enemy leaves: a cake, the likelier the weaker the hero, or after the first stage a weapon.
void dropLoot(const Zelkor::Vec3& position);
// Tells the event that spawned the actor that it has died.
void notifyDeath(const Thingy& actor);
