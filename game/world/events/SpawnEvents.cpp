#include "world/events/SpawnEvents.h"

#include "actors/ThingyManager.h"
#include "core/Random.h"
#include "game/GameCamera.h"
#include "game/Session.h"
#include "world/events/EventFields.h"

#include <cmath>

using namespace Zelkor;

namespace {

const EventRow<SpawnPlayerEvent> playerRow;
const EventRow<SpawnEnemyEvent> enemyRow;
const EventRow<SpawnThingyEvent> spawnThingyRow;
const EventRow<ThingyEvent> thingyRow;
const EventRow<RepeatedSpawnEvent> repeatedRow;

// Screen distances, 1 being the edge of the screen.
constexpr float enemyNearest = 1.25f, enemyFarthest = 1.5f;
constexpr float enemyGone = 2.6f;
constexpr Vec3 enemyMiddle{0, 10, 0}; // the point of a spawn place that must be off screen
constexpr float respawnDelay = 3;     // seconds

constexpr float besideScreen = 40; // world units
// A hero this near to the side things come from sees too little of them coming.
constexpr float heroTooFarRight = 0.82f, heroTooFarLeft = 0.18f; // of the screen

} // namespace

// --- What they share --------------------------------------------------------------------------------------

SpawningEvent::SpawningEvent(EventList& owner, TokenReader& reader, bool updating) : Event(owner, updating) {
    position = EventFields::position(reader);
    rotation = EventFields::rotation(reader);
    mesh = EventFields::word(reader);
}

Thingy* SpawningEvent::spawnAt(const Vec3& place) {
    Thingy* spawned = list.session().thingyManager.spawn(actorType, mesh, place, rotation);
    if (!spawned) return nullptr;
    spawned->linkedEvent = index;
    for (const SpawnParameter& parameter : params)
        spawned->setParameter(parameter.number, parameter.value);
    return spawned;
}

void SpawningEvent::removeActor() {
    if (actor) actor->removeWhenOffscreen = true;
    actor = nullptr;
}

void SpawningEvent::finished() {
    list.fireTriggers(*this);
    actor = nullptr;
}

void SpawningEvent::forgetActor(const Thingy& gone) {
    if (actor == &gone) actor = nullptr;
}

// --- SpawnPlayer ------------------------------------------------------------------------------------------

SpawnPlayerEvent::SpawnPlayerEvent(EventList& owner, TokenReader& reader)
    : SpawningEvent(owner, reader, false) {
    actorType = SpawnType::player;
}

void SpawnPlayerEvent::activate() {
    actor = spawnAt(position + Vec3{0, -1, 0});
}

// --- SpawnEnemy -------------------------------------------------------------------------------------------

SpawnEnemyEvent::SpawnEnemyEvent(EventList& owner, TokenReader& reader) : SpawningEvent(owner, reader, true) {
    actorType = EventFields::integer(reader);
}

void SpawnEnemyEvent::activate() {
    if (!active) spawnNow = true;
    active = true;
}

void SpawnEnemyEvent::reset() {
    removeActor();
    Event::reset();
}

void SpawnEnemyEvent::update(float, float dt) {
    keepOrSpawn(dt);
    spawnNow = false;
}

void SpawnEnemyEvent::keepOrSpawn(float dt) {
    const GameCamera& camera = *list.session().camera;
    if (actor) {
        if (camera.screenDistance(actor->position()) <= enemyGone) return;
        actor->removeMe = true;
        actor = nullptr;
        return;
    }
    if (respawnTimer > 0) {
        respawnTimer -= dt;
        return;
    }
    const float d = camera.screenDistance(position + enemyMiddle);
    if (d < enemyFarthest && (d > enemyNearest || spawnNow)) actor = spawnAt(position);
}

void SpawnEnemyEvent::finished() {
    list.fireTriggers(*this);
    respawnTimer = respawnDelay;
    actor = nullptr;
}

// --- SpawnThingy, Thingy ----------------------------------------------------------------------------------

SpawnThingyEvent::SpawnThingyEvent(EventList& owner, TokenReader& reader)
    : SpawningEvent(owner, reader, false) {
    actorType = EventFields::integer(reader);
}

void SpawnThingyEvent::activate() {
    if (!actor) actor = spawnAt(position);
}

void SpawnThingyEvent::reset() {
    removeActor();
    Event::reset();
}

ThingyEvent::ThingyEvent(EventList& owner, TokenReader& reader) : SpawningEvent(owner, reader, false) {
    actorType = EventFields::integer(reader);
}

void ThingyEvent::activate() {
    if (actor) actor->activate();
}

void ThingyEvent::reset() {
    removeActor();
    Event::reset();
}

void ThingyEvent::start() {
    removeActor();
    actor = spawnAt(position);
}

// --- RepeatedSpawn ----------------------------------------------------------------------------------------

RepeatedSpawnEvent::RepeatedSpawnEvent(EventList& owner, TokenReader& reader)
    : SpawningEvent(owner, reader, true) {
    actorType = EventFields::integer(reader);
    size = EventFields::pair(reader);
    const int packed = EventFields::integer(reader);
    side = packed & 0xFF;
    relative = (packed & 0x100) != 0;
    interval = EventFields::number(reader);
}

void RepeatedSpawnEvent::activate() {
    if (!active) countdown = 0;
    active = true;
}

void RepeatedSpawnEvent::update(float, float dt) {
    countdown -= dt;
    if (countdown > 0) return;
    countdown += interval;

    Vec3 offset;
    offset.y = randomFraction() * size.y; // drawn before x: recorded runs depend on the order
    offset.x = randomFraction() * size.x;
    Vec3 place = position + offset;
    float heroScreenX = 0.5f;
    if (const Thingy* hero = list.session().thingyManager.nearest(GROUP_PLAYER, place)) {
        if (relative) place = hero->position() + offset;
        heroScreenX = list.session().camera->view.project(hero->position()).x;
    }
    if (moveBesideScreen(place, heroScreenX)) spawnAt(place);
}

bool RepeatedSpawnEvent::moveBesideScreen(Vec3& place, float heroScreenX) const {
    const Camera& view = list.session().camera->view;
    const float halfHeight = std::tan(view.fieldOfView * pi / 180 / 2) * view.position.z;
    const float halfWidth = halfHeight * view.aspect;
    switch (side) {
    case rightOfScreen:
        place.x = view.position.x + halfWidth + besideScreen;
        return !(heroScreenX > heroTooFarRight);
    case leftOfScreen:
        place.x = view.position.x - halfWidth - besideScreen;
        return !(heroScreenX < heroTooFarLeft);
    case aboveScreen:
        place.y = view.position.y + halfHeight + besideScreen;
        return true;
    case belowScreen:
        place.y = view.position.y - halfHeight - besideScreen;
        return true;
    default:
        return true;
    }
}

void RepeatedSpawnEvent::finished() {
    list.fireTriggers(*this);
}
