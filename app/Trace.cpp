#include "Trace.h"

#include "actors/ThingyManager.h"
#include "actors/player/PlayerStandard.h"
#include "audio/AudioManager.h"
#include "core/DebugManager.h"
#include "core/EngineManagers.h"
#include "core/TimerManager.h"
#include "frontend/MenuManager.h"
#include "fx/ParticleManager.h"
#include "game/Game.h"
#include "game/GameCamera.h"
#include "game/Session.h"
#include "render/Renderer.h"
#include "resources/Unit.h"
#include "world/EventList.h"

#include <nlohmann/json.hpp>

#include <array>

namespace {

// Floats are written with the digits that tell them apart, and fields in the order they are given, so that
// equal states are equal texts.
using Json = nlohmann::basic_json<nlohmann::ordered_map, std::vector, std::string, bool, std::int64_t,
                                  std::uint64_t, float>;

Json vector(const Zelkor::Vec3& v) {
    return {v.x, v.y, v.z};
}

Json timers() {
    Json result = Json::object();
    for (const Zelkor::GameTimer& timer : Zelkor::TimerManager::instance().timers())
        result[timer.name] = {{"total", static_cast<float>(timer.total)},
                              {"delta", timer.delta},
                              {"paused", timer.paused != 0}};
    return result;
}

// The stack, bottom first.
Json menuKinds(const MenuManager& manager) {
    Json result = Json::array();
    for (const auto& menu : manager.menus)
        result.push_back(menu->kind);
    return result;
}

Json cameraState(const GameCamera& camera) {
    return {{"position", vector(camera.position)},
            {"view", vector(camera.view.position)},
            {"fov", camera.view.fieldOfView},
            {"fade", camera.fade},
            {"area", {vector(camera.areaMin), vector(camera.areaMax)}},
            {"panActive", camera.panActive},
            {"lockWeight", camera.lockWeight},
            {"shake", camera.shakeAmplitude}};
}

Json heroState(const ThingyManager& actors) {
    std::vector<Thingy*> heroes;
    actors.collectAll(GROUP_PLAYER, heroes);
    const auto* hero = heroes.empty() ? nullptr : dynamic_cast<const Player*>(heroes.front());
    if (!hero) return nullptr;
    const auto* onFoot = dynamic_cast<const PlayerStandard*>(hero);
    static constexpr std::array<const char*, PlayerState::count> stateNames = {"ground", "air", "hurt", "climb",
                                                                              "cart"};
    return {{"position", vector(hero->position())},
            {"bodyCentre", vector(hero->bodyCentre)},
            {"velocity", vector(hero->velocity)},
            {"state", onFoot ? stateNames[static_cast<std::size_t>(onFoot->state)] : "flying"},
            {"facing", hero->facing},
            {"crouching", hero->crouching},
            {"health", hero->health},
            {"weapon", hero->weapon ? weaponName(hero->weapon->index) : ""},
            {"groundSide", hero->groundSide},
            {"wallSide", hero->wallSide},
            {"up", vector(hero->up)},
            {"flash", hero->flash},
            {"dead", hero->dead}};
}

Json actorStates(const ThingyManager& actors) {
    Json result = Json::array();
    for (int group = 0; group < groupCount; ++group) {
        std::vector<Thingy*> members;
        actors.collectAll(group, members);
        for (const Thingy* actor : members)
            result.push_back({{"type", actor->spawnType},
                              {"group", actor->group},
                              {"position", vector(actor->position())},
                              {"velocity", vector(actor->velocity)},
                              {"health", actor->health}});
    }
    return result;
}

Json eventStates(const EventList& events) {
    Json result = Json::array();
    for (int i = 0; i < events.size(); ++i) {
        const Event& event = *events.at(i);
        result.push_back({{"index", event.index},
                          {"active", event.active},
                          {"fired", event.fired},
                          {"hitCount", event.hitCount}});
    }
    return result;
}

} // namespace

TraceWriter::TraceWriter(const std::filesystem::path& file, int every) : out_(file), every_(every) {}

void TraceWriter::write(int frame, const Game& game) {
    if (frame % every_ != 0) return;
    const Zelkor::Renderer& renderer = *Zelkor::engineManagers()->renderer;
    const Session* session = game.session.get();
    Json line = {{"frame", frame},
                 {"time", session ? session->time : 0.0f},
                 {"stage", game.currentStage},
                 {"session", session != nullptr},
                 {"menus", menuKinds(*game.menuManager)},
                 {"music", Zelkor::engineManagers()->audioManager->musicName},
                 {"timers", timers()}};
    line["camera"] = session ? cameraState(*session->camera) : Json();
    line["hero"] = heroState(*game.thingyManager);
    line["actors"] = actorStates(*game.thingyManager);
    line["events"] = session ? eventStates(*session->eventList) : Json::array();
    line["particles"] = Zelkor::engineManagers()->particleManager->liveParticles();
    line["units"] = {{"scene", session ? session->scene.units().size() : 0}, {"drawn", renderer.drawnUnits}};
    out_ << line.dump() << '\n';
}

MeasureWriter::MeasureWriter(const std::filesystem::path& file) : out_(file) {}

void MeasureWriter::write(int frame, const Zelkor::Image& picture) {
    constexpr int blocks = 4;     // along each side
    constexpr float step = 0.25f; // to the neighbour of a ragged pixel
    Zelkor::Lightness now(picture);
    if (now.values.empty()) return;
    if (before_.width != now.width || before_.height != now.height) before_ = now;
    const Json line = {{"frame", frame},
                       {"lightness", now.mean(now.whole())},
                       {"ragged", now.steepShare(step)},
                       {"redrawn", meanSquareChange(before_, now)},
                       {"change", largestBlockChange(before_, now, 1)},
                       {"blockChange", largestBlockChange(before_, now, blocks)}};
    out_ << line.dump() << '\n';
    before_ = std::move(now);
}

ProfileWriter::ProfileWriter(const std::filesystem::path& file) : out_(file) {}

void ProfileWriter::write(int frame) {
    const auto& managers = *Zelkor::engineManagers();
    Json sections = Json::array();
    for (const Zelkor::ProfileRow& row : managers.debugManager->finishedFrame())
        sections.push_back(
            {{"name", Zelkor::profileName(row.id)},
             {"depth", row.depth},
             {"calls", row.calls},
             {"cpu", static_cast<float>(managers.debugManager->microseconds(row.accumulated))}});
    Json line = {{"frame", frame}, {"sections", sections}};
    gpu_.end();
    // A few frames old: waiting for this frame's would cost what is measured.
    const auto gpu = gpu_.takeMicroseconds();
    line["gpu"] = gpu ? Json(static_cast<float>(*gpu)) : Json();
    line["guiBatches"] = managers.renderer->guiBatches;
    line["passes"] = Json::object();
    for (const auto& [name, time] : passes_.take())
        line["passes"][name] = time ? Json(static_cast<float>(*time)) : Json();
    out_ << line.dump() << '\n';
}
