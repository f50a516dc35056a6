#include "actors/player/TileCollision.h"

#include "game/actors/player/HeroStage.h"

#include <gtest/gtest.h>

namespace {

constexpr int solid = 1, ground = 5; // masks

struct Tiles {
    explicit Tiles(const std::vector<std::string>& rows) { drawTiles(grid, rows); }

    Zelkor::Scene scene;
    std::vector<Zelkor::Unit*> units;
    TileGrid grid{scene, units};
};

// Standing upright with the feet at (x, feetY), at rest.
TileBody bodyAt(float x, float feetY) {
    TileBody body;
    body.bodyCentre = {x, feetY + 10, 0};
    body.lastPosition = {x, feetY, 0};
    body.dt = 1.0f / 60;
    body.lowerMask = ground;
    body.upperMask = solid;
    return body;
}

void expectBody(const TileContact& contact, float x, float y, float wallSide, float groundSide) {
    EXPECT_FALSE(contact.killed);
    EXPECT_NEAR(contact.bodyCentre.x, x, 2e-5f);
    EXPECT_NEAR(contact.bodyCentre.y, y, 2e-5f);
    EXPECT_EQ(contact.wallSide, wallSide);
    EXPECT_EQ(contact.groundSide, groundSide);
}

} // namespace

// The surface of row 0 is at 5, its left end at -5; the body's sides are 4.5 from its centre, its top 18
// above the feet.
TEST(TileCollision, FloorsHoldTheFeetAndCeilingsTheHead) {
    const Tiles floor({"     ", "#####"});
    expectBody(collideWithTiles(floor.grid, bodyAt(20, 4)), 20, 14.99f, 0, 1);
    expectBody(collideWithTiles(floor.grid, bodyAt(20, 4.99f)), 20, 14.99f, 0, 1);
    expectBody(collideWithTiles(floor.grid, bodyAt(21, 4)), 21, 14.99f, 0, 1); // over a seam
    expectBody(collideWithTiles(floor.grid, bodyAt(20, 5.1f)), 20, 15.1f, 0, 0);
    const Tiles ceiling({"#####", "     ", "     ", "     "}); // its lower side at 25
    expectBody(collideWithTiles(ceiling.grid, bodyAt(20, 8)), 20, 16.99f, 0, -1);
    TileBody crouched = bodyAt(20, 14);
    crouched.crouching = true; // 10 high
    expectBody(collideWithTiles(ceiling.grid, crouched), 20, 24, 0, 0);
    crouched.bodyCentre.y = 26;
    expectBody(collideWithTiles(ceiling.grid, crouched), 20, 24.99f, 0, -1);
}

TEST(TileCollision, WallsStopTheSidesAndOnlyAMoveCounts) {
    const Tiles walls({"#     #", "#     #", "#     #"}); // inner sides at 5 and 55
    expectBody(collideWithTiles(walls.grid, bodyAt(52, 3)), 50.5f, 13, -1, 0);
    expectBody(collideWithTiles(walls.grid, bodyAt(50.5f, 3)), 50.5f, 13, 0, 0);
    expectBody(collideWithTiles(walls.grid, bodyAt(7, 3)), 9.5f, 13, 1, 0);
    // Left of zero a body that touches the wall on its right is not taken for one inside it.
    Tiles negative({});
    negative.grid.addSolidCell(-100, 0); // far from the grid's first column, as in a real stage
    for (const float y : {-10.0f, 0.0f, 10.0f})
        negative.grid.addSolidCell(-20, y);
    expectBody(collideWithTiles(negative.grid, bodyAt(-29.5f, -5)), -29.5f, 5, 0, 0);
    expectBody(collideWithTiles(negative.grid, bodyAt(-29, -5)), -29.5f, 5, -1, 0);
}

TEST(TileCollision, ACornerPushesAsideOrUpwardsByHowItWasMet) {
    const Tiles block({" ", "  #"}); // from 15 to 25, surface 5
    TileBody body = bodyAt(11, 4);   // its lower right probe at (15.5, 4)
    body.velocity = {0, -5, 0};
    expectBody(collideWithTiles(block.grid, body), 10.5f, 14, -1, 0); // nearer to the side
    body.velocity = {0, -100, 0};
    expectBody(collideWithTiles(block.grid, body), 11, 14.99f, 0, 1); // it was above the cell
    body.velocity = {95, -100, 0};
    expectBody(collideWithTiles(block.grid, body), 10.5f, 14, -1, 0); // not mostly downwards
    body = bodyAt(11, 0);
    body.velocity = {0, -100, 0};
    expectBody(collideWithTiles(block.grid, body), 10.5f, 10, -1, 0); // it was beside the cell
    body = bodyAt(14.5f, 4);
    expectBody(collideWithTiles(block.grid, body), 14.5f, 14.99f, 0, 1); // nearer to the top
    // A box across a post goes to one side, whatever its other half says.
    const Tiles post({"  #", "  #", "  #"});
    expectBody(collideWithTiles(post.grid, bodyAt(19, 0)), 10.5f, 10, -1, 0);
}

TEST(TileCollision, LadderTopsHoldWhoComesFromAbove) {
    const Tiles top({"    ", "===="}); // surface 5
    TileBody body = bodyAt(20, 4);
    body.lastPosition.y = 4.5f;
    expectBody(collideWithTiles(top.grid, body), 20, 14.99f, 0, 1);
    body.lastPosition.y = 4.49f;
    expectBody(collideWithTiles(top.grid, body), 20, 14, 0, 0);
    body.upperMask = ground; // on the ground they count always
    expectBody(collideWithTiles(top.grid, body), 20, 14.99f, 0, 1);
}

TEST(TileCollision, DeadlyTilesKillButSafeGroundSaves) {
    const Tiles mixed({"   ", "#xx"}); // cell borders at 5 and 15
    EXPECT_TRUE(collideWithTiles(mixed.grid, bodyAt(15, 4)).killed);
    EXPECT_EQ(collideWithTiles(mixed.grid, bodyAt(15, 4)).bodyCentre.y, 14); // where it was
    expectBody(collideWithTiles(mixed.grid, bodyAt(5, 4)), 5, 14.99f, 0, 1); // one foot on the solid tile
    const Tiles covered({"#  ", "#xx"});
    EXPECT_TRUE(collideWithTiles(covered.grid, bodyAt(5, 4)).killed); // that tile is inside a wall
    const Tiles above({"xxx", "   ", "   ", "###"});
    EXPECT_TRUE(collideWithTiles(above.grid, bodyAt(10, 7.5f)).killed); // the head, feet free
    EXPECT_FALSE(collideWithTiles(above.grid, bodyAt(10, 6.5f)).killed);
}

TEST(TileCollision, OtherFramesStandOnWallsAndCeilings) {
    const Tiles leftWall({"#", "#", "#", "#", "#"}); // its right side at 5
    TileBody body = bodyAt(0, 0);
    body.up = {1, 0, 0};
    body.bodyCentre = {14, 20, 0};
    expectBody(collideWithTiles(leftWall.grid, body), 14.99f, 20, 0, 1);
    const Tiles rightWall({"    #", "    #", "    #", "    #", "    #"}); // its left side at 35
    body.up = {-1, 0, 0};
    body.bodyCentre = {26, 20, 0};
    expectBody(collideWithTiles(rightWall.grid, body), 25.01f, 20, 0, 1);
    body.up = {1, 0, 0}; // now it is the ceiling
    body.bodyCentre = {28, 20, 0};
    expectBody(collideWithTiles(rightWall.grid, body), 26.99f, 20, 0, -1);
    const Tiles ceiling({"#####", "     ", "     ", "     ", "     "}); // its lower side at 35
    body.up = {0, -1, 0};
    body.bodyCentre = {20, 26, 0};
    expectBody(collideWithTiles(ceiling.grid, body), 20, 25.01f, 0, 1);
}
