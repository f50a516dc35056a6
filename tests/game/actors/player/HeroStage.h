// A stage drawn in characters with the hero in it, stepped by scripted input: no window, no files, no clock.
#pragma once

#include "actors/ThingyManager.h"
#include "actors/player/PlayerStandard.h"
#include "core/TimerManager.h"
#include "fake/FakePlatform.h"
#include "game/GameCamera.h"
#include "game/Session.h"
#include "resources/Unit.h"
#include "world/TileGrid.h"

#include <algorithm>
#include <map>

using Zelkor::Vec3;

inline constexpr float surface = 5;      // of a floor in the lowest row
inline constexpr float standing = 4.99f; // where the feet rest on it
inline constexpr Vec3 left{-1, 0, 0}, right{1, 0, 0}, up{0, 1, 0}, down{0, -1, 0}, still{};
inline constexpr std::uint32_t jump = Zelkor::PlayerInput::jumpMask;
inline constexpr int onGround = PlayerState::onGround, inAir = PlayerState::inAir, hurt = PlayerState::hurt;

inline const std::vector<std::string> plain{"                    ", "####################"};
inline constexpr Vec3 middle{100, surface, 0};

// Rows from top to bottom; the lower left cell is centred on (0, 0). '#' solid, '=' ladder top, 'x' deadly.
inline void drawTiles(TileGrid& grid, const std::vector<std::string>& rows) {
    const std::map<char, int> types{{'#', 1}, {'=', 4}, {'x', 1 | 8}};
    float y = static_cast<float>(rows.size()) * tileSize;
    for (const std::string& row : rows) {
        y -= tileSize;
        for (std::size_t column = 0; column < row.size(); ++column) {
            const Vec3 centre{static_cast<float>(column) * tileSize, y, 0};
            if (row[column] == ' ') continue;
            grid.addSolidCell(centre.x, centre.y);
            grid.tileAt(centre, TileType::any)->type = types.at(row[column]);
        }
    }
}

// The hero at the end of one step.
struct HeroStep {
    Vec3 position, velocity;
    int state, facing;
    float wallSide;
    bool crouching;
};

struct HeroStage {
    HeroStage(const std::vector<std::string>& rows, const Vec3& feet, float gravityFactor = 1) {
        drawTiles(grid, rows);
        session.gravityFactor = gravityFactor;
        timer.scale = 0.5f;
        unit = std::make_unique<Zelkor::Unit>(mesh, 0);
        unit->position = feet;
        hero = std::make_unique<PlayerStandard>(
            *unit, PlayerSurroundings{&device, &grid, &camera, &actors, &session});
    }

    HeroStep step(std::uint32_t buttons = 0, const Vec3& stick = {}) {
        device.previousButtons = device.buttons;
        device.buttons = buttons;
        device.move = stick;
        timer.total += dt;
        timer.delta = dt;
        hero->update(static_cast<float>(timer.total), dt);
        return {hero->position(), hero->velocity, hero->state, hero->facing, hero->wallSide, hero->crouching};
    }
    std::vector<HeroStep> steps(int count, std::uint32_t buttons = 0, const Vec3& stick = {}) {
        std::vector<HeroStep> trace;
        for (int i = 0; i < count; ++i)
            trace.push_back(step(buttons, stick));
        return trace;
    }
    // How far the feet rise when jump is held for so many steps, from where he comes to stand.
    float jumpHeight(int heldSteps) {
        const float from = steps(60).back().position.y;
        float highest = from;
        for (int i = 0; i < 60; ++i)
            highest = std::max(highest, step(i <= heldSteps ? jump : 0).position.y);
        return highest - from;
    }

    float dt = 1.0f / 60;
    platform::FakePlatform platform;
    Zelkor::GameTimer& timer =
        (Zelkor::TimerManager::reset(), Zelkor::TimerManager::instance().addTimer("game"));
    ThingyManager actors;
    Session session{actors};
    TileGrid& grid = *(session.tileGrid = std::make_unique<TileGrid>(session.scene, session.levelUnits));
    GameCamera& camera = *(session.camera = std::make_unique<GameCamera>(session.scene));
    Zelkor::PlayerInput device;
    Zelkor::Mesh mesh;
    std::unique_ptr<Zelkor::Unit> unit;
    std::unique_ptr<PlayerStandard> hero;
};
