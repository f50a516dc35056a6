#include "world/TileGrid.h"

#include "core/Log.h"
#include "game/WorldTest.h"
#include "render/MaterialManager.h"

#include <algorithm>
#include <cmath>

using namespace Zelkor;

namespace {

constexpr const char* tileDefs = "column scaleY type 1 ;\n"
                                 "row scaleX ;\n"
                                 "block scaleX scaleY ;\n"
                                 "wide size 2 1 1 ;\n"
                                 "ladder type 2 scaleY ;\n"
                                 "bridge type 256 ;";

float parameter(const Unit& unit, const std::string& name) {
    for (const ShaderParam& p : unit.items.front().material().shaderParams)
        if (p.name == name) return p.value;
    return NAN;
}

class TileGridTest : public WorldTest {
  protected:
    TileGridTest() {
        writeData("units/tiles/area1/tiledef.txt", tileDefs);
        writeData("units/tiles/tiles6/tiledef.txt", "bridge type 257 ;\n");
        for (const char* tile : {"column", "row", "block"})
            writeMesh(std::string("tiles/area1/") + tile, {-5, -5, -5}, {5, 5, 5}, {"paint"});
        grid.loadTileSets();
    }
    void place(const std::string& tile, float x, float y, float z = 0) {
        grid.placeTile("tiles/area1/" + tile, {x, y, z}, {}, true);
    }
    void read(const std::string& text) {
        TokenReader reader = tokens(text);
        grid.readLevel(reader, true);
    }
    const TileRecord* at(float x, float y, int mask = TileType::any) const {
        return grid.tileAt({x, y, 0}, mask);
    }

    Scene scene;
    std::vector<Unit*> levelUnits;
    TileGrid grid{scene, levelUnits};
};

using Cell = std::pair<float, float>;

} // namespace

TEST_F(TileGridTest, RunsBecomeOneStretchedUnitInAnyOrder) {
    struct {
        const char* tile;
        std::vector<Cell> cells;
        Vec3 scale;
    } cases[] = {
        {"column", {{0, 0}, {0, 10}, {0, 20}}, {1, 3, 1}},
        {"row", {{0, 0}, {10, 0}, {20, 0}, {30, 0}}, {4, 1, 1}},
        {"block", {{0, 0}, {0, 10}, {10, 0}, {10, 10}}, {2, 2, 1}},
    };
    for (auto& run : cases) {
        const auto [anchorX, anchorY] = run.cells.front();
        do {
            read("0 0 0 0");
            for (const auto& [x, y] : run.cells)
                place(run.tile, x, y);
            for (const auto& [x, y] : run.cells) {
                const TileRecord* record = at(x, y);
                ASSERT_TRUE(record);
                EXPECT_EQ(record->size, run.scale);
                EXPECT_EQ(record->position, (Vec3{anchorX, anchorY, 0}));
                ASSERT_EQ(record->unit, levelUnits.front());
            }
            ASSERT_EQ(levelUnits.size(), 1u);
            ASSERT_EQ(scene.units().size(), 1u);
            const Unit& unit = *levelUnits.front();
            EXPECT_EQ(unit.scale, run.scale);
            EXPECT_EQ(unit.position,
                      (Vec3{anchorX + (run.scale.x - 1) * 5, anchorY + (run.scale.y - 1) * 5, 0}));
            EXPECT_EQ(parameter(unit, "scaleX"), run.scale.x);
            EXPECT_EQ(parameter(unit, "scaleY"), run.scale.y);
        } while (std::next_permutation(run.cells.begin(), run.cells.end()));
    }
}

TEST_F(TileGridTest, OnlyLikeTilesInLineMerge) {
    place("column", 0, 0);
    place("column", 10, 0); // beside: columns do not merge sideways
    place("row", 0, 10);
    place("ladder", 20, 0);
    place("ladder", 20, 20); // a gap between
    EXPECT_EQ(levelUnits.size(), 5u);
    EXPECT_EQ(at(0, 0)->size, (Vec3{1, 1, 1}));
    place("ladder", 20, 10); // and the gap closed
    EXPECT_EQ(at(20, 0)->size, (Vec3{1, 3, 1}));
    EXPECT_EQ(levelUnits.size(), 4u);
    for (const auto& [x, y] : {Cell{50, 0}, {50, 10}, {60, 0}}) // the last takes the first into its row
        place("block", x, y);
    ASSERT_TRUE(at(50, 10)); // and the one left over still is a tile, without a unit
    EXPECT_FALSE(at(50, 10)->unit);
    EXPECT_EQ(at(50, 0), at(60, 0));
}

TEST_F(TileGridTest, GrowsToEverySideAndKeepsItsTiles) {
    read("0 0 2 2 tiles/area1/wide 0 0 0");
    place("stone", -20, 10);
    place("wide", 30, 40); // its right half lies farther out
    place("wide", -40, -10);
    EXPECT_EQ(grid.width() * grid.height(), 9 * 6);
    EXPECT_EQ(grid.originX(), -40);
    EXPECT_EQ(grid.originY(), -10);
    for (const auto& [x, y] : {Cell{0, 0}, {10, 0}, {-20, 10}, {30, 40}, {40, 40}, {-40, -10}, {-30, -10}})
        EXPECT_TRUE(at(x, y)) << x << " " << y;
    EXPECT_FALSE(at(20, 0));
    grid.addSolidCell(57, 1);
    EXPECT_EQ(at(60, 0)->position, (Vec3{60, 0, 0}));
}

TEST_F(TileGridTest, RefusesCellsThatWouldMakeItHuge) {
    read("0 0 2 2 tiles/area1/stone 0 0 0");
    for (const float far : {9e5f, -9e5f})
        place("stone", far, far);
    for (const float far : {3e38f, -3e38f, INFINITY, NAN}) {
        grid.addSolidCell(far, 0);
        EXPECT_FALSE(grid.tileAt({far, far, 0}, TileType::any));
        EXPECT_FALSE(grid.castRay({far, 0, 0}, {0, far, 0}).hit);
        EXPECT_EQ(grid.edgeOfRun(9e9f, far, 1, 3), 9e9f);
    }
    EXPECT_EQ(grid.width() * grid.height(), 4);
    EXPECT_TRUE(at(0, 0));
}

TEST_F(TileGridTest, PointsBetweenCellsBelongToTheFarSide) {
    read("0 0 5 1 tiles/area1/stone 20 0 0");
    EXPECT_TRUE(at(15, 0));
    EXPECT_FALSE(at(14.9f, 0));
    EXPECT_FALSE(at(25, 0)); // of cell 3
    read("0 0 1 1 tiles/area1/stone 0 0 0");
    EXPECT_TRUE(at(-4.9f, 0));
    EXPECT_FALSE(at(-5, 0)); // halves away from zero: column -1
}

TEST_F(TileGridTest, MasksAndDepth) {
    read("0 0 3 1 tiles/area1/stone 0 0 0 tiles/area1/ladder 10 0 0 tiles/area1/stone 20 0 0.0001");
    EXPECT_FALSE(at(0, 0, TileType::ladder));
    EXPECT_FALSE(at(10, 0, TileType::solid));
    EXPECT_TRUE(at(10, 0, TileType::ladder));
    EXPECT_FALSE(at(20, 0));
}

TEST_F(TileGridTest, LoadingReplacesTheTilesAndLeavesOtherUnits) {
    scene.createUnit("other");
    writeData("levels/a.level", "5 0 3 2\ntiles/area1/row 5 0 0\ntiles/area1/row 15 0 0\n");
    for (int i = 0; i < 2; ++i) {
        grid.loadLevel("a", true);
        EXPECT_EQ(levelUnits.size(), 1u);
        EXPECT_EQ(scene.units().size(), 2u);
    }
    grid.loadLevel("missing", true);
    EXPECT_EQ(grid.width() + grid.height(), 0);
    EXPECT_EQ(scene.units().size(), 1u);
}

TEST_F(TileGridTest, EdgesOfRuns) {
    read("0 0 8 3");
    for (const float x : {20, 30, 40, 50})
        place("stone", x, 0);
    place("stone", 20, 10);
    place("stone", 50, 20);
    EXPECT_EQ(grid.edgeOfRun(38, 2, -1, 0), 15);
    EXPECT_EQ(grid.edgeOfRun(38, 2, 1, 0), 55);
    EXPECT_EQ(grid.edgeOfRun(38, 2, -1, 1), 25); // the wall one row up
    EXPECT_EQ(grid.edgeOfRun(38, 2, 1, 2), 45);  // the wall two rows up
    EXPECT_EQ(grid.edgeOfRun(38, 2, 1, 99), 45);
    EXPECT_EQ(grid.edgeOfRun(38, -6, -1, 0), 38);
}

TEST_F(TileGridTest, RaysStopAtTheFirstSolidTile) {
    read("0 0 40 10 tiles/area1/stone 100 50 0 tiles/area1/ladder 50 50 0");
    const RayHit hit = grid.castRay({0, 50, 0}, {200, 50, 0});
    ASSERT_TRUE(hit.hit);
    EXPECT_EQ(hit.record, at(100, 50));
    EXPECT_NEAR(hit.point.x, 95.1f, 0.11f);
    const auto hits = [&](float x, float y, float toX, float toY) {
        return grid.castRay({x, y, 0}, {toX, toY, 0}).hit;
    };
    EXPECT_TRUE(hits(150, 100, 60, 10)); // leftwards and down
    EXPECT_TRUE(hits(100, 0, 100, 80));
    EXPECT_TRUE(hits(100, 50, 100, 50)); // starting inside
    EXPECT_FALSE(hits(0, 50, 90, 50));
    EXPECT_FALSE(hits(0, 61, 200, 61));
    EXPECT_FALSE(hits(-1500, 50, 200, 50)); // more than 100 cells away
}

TEST_F(TileGridTest, TilesAndBridgesAreTakenOut) {
    read("0 0 9 2 tiles/area1/wide 0 0 0 tiles/area1/bridge 30 0 0 tiles/tiles6/bridge 40 0 0 "
         "tiles/tiles6/bridge 50 0 0");
    grid.removeRecord(grid.tileAt({10, 0, 0}, TileType::any));
    EXPECT_FALSE(at(0, 0));
    EXPECT_FALSE(at(10, 0));
    game->thingyManager->setScene(&scene);
    grid.breakBridge({30, 0, 0}, 0); // of another name
    grid.breakBridge({0, 0, 0}, 0);
    EXPECT_TRUE(at(30, 0));
    EXPECT_TRUE(actors(GROUP_SCENERY).empty());
    grid.breakBridge({40, 0, 0}, 0);
    grid.breakBridge({50, 0, 0}, 10001);
    EXPECT_FALSE(at(40, 0));
    EXPECT_FALSE(at(50, 0));
    EXPECT_EQ(actors(GROUP_SCENERY).size(), 4u); // two planks each
    EXPECT_EQ(levelUnits.size(), 2u);
    game->thingyManager->clear();
}

TEST(LevelFile, TileDefinitions) {
    std::vector<TileDef> defs;
    TokenReader reader =
        tokens("a ; b size 2 3 1 type 12 colour scaleX ; c size 1e9 -4 99999999999999 scaleY ; d type 2");
    readTileDefs(reader, "set/", defs);
    ASSERT_EQ(defs.size(), 3u);
    EXPECT_EQ(defs[1].size, (Vec3{2, 3, 1}));
    EXPECT_EQ(defs[1].type, 12);
    EXPECT_TRUE(defs[1].stretchX && !defs[1].stretchY);
    for (const float size : {defs[2].size.x, defs[2].size.y, defs[2].size.z})
        EXPECT_TRUE(size >= 0 && size <= maxTileSize);
}

TEST(LevelFile, Levels) {
    const std::string digits(60, '9');
    const std::string huge = "0 0 4 4 a " + digits + " 0 0 b 1 -" + digits + " 0 c 1 2 3\n";
    const std::tuple<std::string, int, int, std::size_t> cases[] = {
        {"", 0, 0, 0},
        {"0 0 4", 4, 0, 0},
        {"0 0 4 5 a 1 2 3\n\n", 4, 5, 1},
        {"0 0 4 5 a 1 2 3 b 1 2", 4, 5, 1},
        {"0 0 -4 5", 0, 0, 0},
        {"0 0 100000 100000 a 1 2 3", 0, 0, 1},
        {huge, 4, 4, 1},
    };
    for (const auto& expected : cases) {
        TokenReader reader = tokens(std::get<0>(expected));
        const LevelData level = readLevelData(reader);
        EXPECT_EQ(std::tuple(std::get<0>(expected), level.width, level.height, level.tiles.size()), expected);
    }
}
