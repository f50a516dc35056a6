// A game without window or stage: every test gets a fresh one, with a data folder of its own.
#pragma once

#include "actors/ThingyManager.h"
#include "core/EngineManagers.h"
#include "core/TimerManager.h"
#include "fake/FakePlatform.h"
#include "game/Game.h"
#include "game/GameCamera.h"
#include "game/Session.h"
#include "input/ControllerManager.h"
#include "io/TokenReader.h"
#include "render/Renderer.h"
#include "resources/Unit.h"
#include "world/EventList.h"
#include "world/TileGrid.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

// An actor that does what its test says and writes down what happens to it.
class TestActor : public Thingy {
  public:
    TestActor(Zelkor::Unit& ownUnit, int ownGroup) : Thingy(ownUnit, ownGroup) {}
    ~TestActor() override { --alive; }
    void update(float, float dt) override {
        ++updates;
        if (onUpdate) onUpdate();
        updateFlash(0, dt);
    }
    int onHit(const Attack& attack) override {
        return hitResult ? (Thingy::onHit(attack), ++hits, hitResult) : 0;
    }
    void setParameter(int index, float value) override { parameters.push_back({index, value}); }
    void teleport(const Zelkor::Vec3& place) override { unit->position = place; }

    int updates = 0, hits = 0, hitResult = 1;
    std::function<void()> onUpdate;
    std::vector<SpawnParameter> parameters;
    static inline int alive = 0;
};

// Spawn types of test actors: firstTestType + their group. No class of the game has them.
inline constexpr int firstTestType = 180;

class WorldTest : public ::testing::Test {
  protected:
    WorldTest();
    ~WorldTest() override;

    // Starts a session on a stage with these files' texts.
    Session& startStage(const std::string& level, const std::string& events);
    TestActor& spawn(int group, const Zelkor::Vec3& position, const std::string& mesh = "none");
    std::vector<Thingy*> actors(int group) {
        std::vector<Thingy*> found;
        game->thingyManager->collectAll(group, found);
        return found;
    }
    // Steps the timers and the session.
    void step(int count = 1, float seconds = 1.0f / 60);
    void writeData(const std::string& file, const std::string& text);
    // One submesh for each material.
    void writeMesh(const std::string& name, const Zelkor::Vec3& boxMin, const Zelkor::Vec3& boxMax,
                   const std::vector<std::string>& materials);
    static Zelkor::GameTimer& timer(const char* name);
    Zelkor::Renderer& renderer() { return *managers->renderer; } // without window and context

    std::filesystem::path folder;
    platform::FakePlatform platform;
    std::unique_ptr<Zelkor::EngineManagers> managers;
    std::unique_ptr<Game> game;
};

inline Zelkor::TokenReader tokens(const std::string& text) {
    return Zelkor::TokenReader(std::vector<char>(text.begin(), text.end()));
}
