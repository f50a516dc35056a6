#include "game/WorldTest.h"

#include "frontend/MenuManager.h"
#include "io/DataFiles.h"

#include <cstring>
#include <fstream>

using namespace Zelkor;

namespace {

template <int Group>
std::unique_ptr<Thingy> createTestActor(Unit& unit) {
    ++TestActor::alive;
    return std::make_unique<TestActor>(unit, Group);
}

const SpawnRow rows[] = {
    {firstTestType + 0, createTestActor<0>}, {firstTestType + 2, createTestActor<2>},
    {firstTestType + 3, createTestActor<3>}, {firstTestType + 4, createTestActor<4>},
    {firstTestType + 8, createTestActor<8>},
};

} // namespace

WorldTest::WorldTest() {
    const std::string test = ::testing::UnitTest::GetInstance()->current_test_info()->name();
    folder = std::filesystem::temp_directory_path() /
             ("rustpike-" + test + "-" + std::to_string(reinterpret_cast<std::uintptr_t>(this)));
    std::filesystem::create_directories(folder);
    setDataFolder(folder);
    TimerManager::reset();
    managers = std::make_unique<EngineManagers>();
    renderer().aspect = 16.0f / 9.0f;
    game = std::make_unique<Game>();
    game->menuManager->closeMenus(nullptr, true); // the loading screen
}

WorldTest::~WorldTest() {
    game.reset();
    managers.reset();
    TimerManager::reset();
    std::filesystem::remove_all(folder);
}

Session& WorldTest::startStage(const std::string& level, const std::string& events) {
    writeData("levels/test.level", level);
    writeData("levels/test.event", events);
    game->session.reset();
    game->session = std::make_unique<Session>(*game->thingyManager);
    game->session->start(0, "test");
    return *game->session;
}

TestActor& WorldTest::spawn(int group, const Vec3& position, const std::string& mesh) {
    Thingy* actor = game->thingyManager->spawn(firstTestType + group, mesh, position);
    return dynamic_cast<TestActor&>(*actor);
}

void WorldTest::step(int count, float seconds) {
    TimerManager& timers = TimerManager::instance();
    timers.stepSeconds = seconds;
    for (int i = 0; i < count; ++i) {
        timers.stepTimers();
        game->session->update(timer("game").delta);
    }
}

void WorldTest::writeData(const std::string& file, const std::string& text) {
    std::filesystem::create_directories((folder / file).parent_path());
    std::ofstream(folder / file, std::ios::binary) << text;
}

void WorldTest::writeMesh(const std::string& name, const Vec3& boxMin, const Vec3& boxMax,
                          const std::vector<std::string>& materials) {
    std::string bytes;
    const auto put = [&](auto value) { bytes.append(reinterpret_cast<const char*>(&value), sizeof value); };
    const auto putString = [&](const std::string& text) {
        put(static_cast<std::int32_t>(text.size()));
        bytes += text;
    };
    put(std::int32_t{1});
    putString("");
    putString("");
    for (const Vec3& corner : {boxMax, boxMin})
        for (const float coordinate : {corner.x, corner.y, corner.z})
            put(coordinate);
    put(static_cast<std::int32_t>(materials.size()));
    if (!materials.empty()) {
        put(std::int32_t{0}); // vertices
        put(std::int32_t{0}); // influences
    }
    for (const std::string& material : materials) {
        putString(material);
        put(std::int32_t{0}); // triangles
    }
    writeData("units/" + name + ".mesh", bytes);
}

GameTimer& WorldTest::timer(const char* name) {
    return *TimerManager::instance().findTimer(name);
}
