#include "actors/ThingyManager.h"

#include "actors/platforms/Platform.h"
#include "core/Log.h"
#include "core/TimerManager.h"
#include "game/Game.h"
#include "game/GameCamera.h"
#include "resources/Scene.h"
#include "resources/Unit.h"
#include "world/EventList.h"

#include <cassert>

using namespace Zelkor;

namespace {

constexpr float offscreenDistance = 1.2f; // screen distance at which removeWhenOffscreen takes effect

// Filled by constants of other files before main, so it lives in a function.
std::array<SpawnRow::Create, lastSpawnType + 1>& factory() {
    static std::array<SpawnRow::Create, lastSpawnType + 1> table{};
    return table;
}

bool overlaps(const Thingy& target, const Attack& attack) {
    const Vec3 boxMin = target.unit->worldBoxMin - target.hitPadding;
    const Vec3 boxMax = target.unit->worldBoxMax + target.hitPadding;
    return attack.boxMax.x > boxMin.x && attack.boxMin.x < boxMax.x && attack.boxMax.y > boxMin.y &&
           attack.boxMin.y < boxMax.y;
}

bool strictlyInside(const Vec3& p, const Vec3& boxMin, const Vec3& boxMax) {
    return p.x > boxMin.x && p.x < boxMax.x && p.y > boxMin.y && p.y < boxMax.y && p.z > boxMin.z &&
           p.z < boxMax.z;
}

const SpawnRow markerRow{SpawnType::marker, [](Unit& unit) {
                             unit.visible = false;
                             return std::make_unique<Thingy>(unit, GROUP_RAILS);
                         }};

} // namespace

SpawnRow::SpawnRow(int spawnType, Create create) {
    assert(spawnType >= 1 && spawnType <= lastSpawnType && !factory()[spawnType]);
    factory()[spawnType] = create;
}

ThingyManager::ThingyManager() = default;

ThingyManager::~ThingyManager() {
    clear();
}

void ThingyManager::setScene(Scene* scene) {
    scene_ = scene;
}

bool ThingyManager::canSpawn(int type) {
    return type >= 1 && type <= lastSpawnType && factory()[type];
}

Thingy* ThingyManager::spawn(int type, const std::string& unitName, const Vec3& position,
                             const Quat& orientation) {
    if (!canSpawn(type)) {
        logLine("No Thingy Spawned");
        return nullptr;
    }
    assert(scene_);
    Unit* unit = scene_->createUnit(unitName, position, orientation);
    std::unique_ptr<Thingy> actor = factory()[type](*unit);
    actor->spawnType = type;
    unit->updateWorldBox(); // it may be hit before its first update
    Thingy* spawned = actor.get();
    insert(std::move(actor));
    return spawned;
}

void ThingyManager::insert(std::unique_ptr<Thingy> actor) {
    Group& group = groups_[actor->group];
    // The last free slot stays free, so that a slot is not taken again right after its actor has gone.
    if (group.freeSlots.size() > 1) {
        const int slot = group.freeSlots.back();
        group.freeSlots.pop_back();
        group.slots[slot] = std::move(actor);
    } else {
        group.slots.push_back(std::move(actor));
        group.freeSlots.reserve(group.slots.capacity()); // so that no removal asks for memory
    }
}

void ThingyManager::update() {
    for (int number = groupCount - 1; number >= 0; --number) {
        Group& group = groups_[number];
        // Actors spawn others while they are updated: the size is read anew at every step.
        for (std::size_t slot = 0; slot < group.slots.size(); ++slot) {
            Thingy* actor = group.slots[slot].get();
            if (!actor) continue;
            updateActor(*actor);
            if (actor->removeMe) remove(group, slot);
        }
    }
}

void ThingyManager::updateActor(Thingy& actor) const {
    const GameTimer* timer = actor.timer;
    if (timer && timer->paused == 0) {
        actor.update(static_cast<float>(timer->total), timer->delta);
        actor.unit->updateWorldBox();
    }
    if (!actor.removeWhenOffscreen) return;
    const Game* game = Game::current();
    const GameCamera* camera = game ? game->camera() : nullptr;
    if (camera && camera->screenDistance(actor.position()) > offscreenDistance) actor.removeMe = true;
}

void ThingyManager::remove(Group& group, std::size_t slot) {
    group.freeSlots.push_back(static_cast<int>(slot));
    release(std::move(group.slots[slot]));
}

void ThingyManager::release(std::unique_ptr<Thingy> actor) {
    Game* game = Game::current();
    if (EventList* events = game ? game->eventList() : nullptr) events->forgetActor(*actor);
    Unit* unit = actor->unit;
    actor.reset();
    scene_->removeUnit(unit);
}

void ThingyManager::clear() {
    for (int number = groupCount - 1; number >= 0; --number) {
        Group& group = groups_[number];
        for (auto& actor : group.slots)
            if (actor) release(std::move(actor));
        group.slots.clear();
        group.freeSlots.clear();
    }
}

Thingy* ThingyManager::nearest(int group, const Vec3& point) const {
    Thingy* best = nullptr;
    float bestDistance = 0;
    for (const auto& actor : groups_[group].slots) {
        if (!actor) continue;
        const float d = distance(actor->position(), point);
        if (best && !(d < bestDistance)) continue;
        best = actor.get();
        bestDistance = d;
    }
    return best;
}

int ThingyManager::hitGroup(int group, const Attack& attack, bool hitAll) {
    auto& slots = groups_[group].slots;
    int last = 0;
    for (std::size_t slot = 0; slot < slots.size(); ++slot) {
        Thingy* target = slots[slot].get();
        if (!target || !overlaps(*target, attack)) continue;
        const int result = target->onHit(attack);
        if (result == 0) continue;
        if (!hitAll || result < 0) return result;
        last = result;
    }
    return last;
}

void ThingyManager::collectInBox(int group, const Vec3& boxMin, const Vec3& boxMax,
                                 std::vector<Thingy*>& out) const {
    for (const auto& actor : groups_[group].slots)
        if (actor && strictlyInside(actor->position(), boxMin, boxMax)) out.push_back(actor.get());
}

void ThingyManager::collectInRadius(int group, const Vec3& point, float radius,
                                    std::vector<Thingy*>& out) const {
    for (const auto& actor : groups_[group].slots)
        if (actor && distance(actor->position(), point) <= radius) out.push_back(actor.get());
}

void ThingyManager::collectAll(int group, std::vector<Thingy*>& out) const {
    for (const auto& actor : groups_[group].slots)
        if (actor) out.push_back(actor.get());
}

bool ThingyManager::contains(int group, const Thingy* actor) const {
    const auto& slots = groups_[static_cast<std::size_t>(group)].slots;
    return actor && std::any_of(slots.begin(), slots.end(), [&](const auto& slot) { return slot.get() == actor; });
}

bool ThingyManager::solidPlatformAt(const Vec3& point) const {
    for (const auto& actor : groups_[GROUP_PLATFORMS].slots) {
        const auto* platform = dynamic_cast<const Platform*>(actor.get());
        if (platform && platform->containsPoint(point.x, point.y)) return true;
    }
    return false;
}
