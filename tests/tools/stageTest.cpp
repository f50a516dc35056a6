// The stage compiler: what it writes, what it refuses and where it says so, and whom it lets reach the end.
#include "stage/HeroFlight.h"
#include "stage/Reach.h"
#include "stage/StageChecks.h"
#include "stage/StageCommand.h"
#include "stage/StageMap.h"
#include "stage/StageWriter.h"
#include "tools/Workshop.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace forge {
namespace {

const std::string head = R"(stage 7
tiles t
origin -330,0
legend {
    "#" rock
    "=" top1 top2 top3
    "~" hatch
    "^" spike
    "B" big
    "F" fill
    "H" ladder
    "r" rail
}
)";

const std::string tail = R"(
event hero SpawnPlayer at=1,1 mesh=corvan
event finish PlayerRect columns=8,9 rows=1,3 {
    triggers clear
}
event clear OpenMenu menu=8
start room hero finish
)";

const std::string room = "camera room columns=0,9 rows=-2,8 instant\n";
const std::string flat = "map {\n    0 \"##########\"\n}\n";

// An assets folder of its own with a handful of tiles.
class StageCompiler : public Workshop {
  protected:
    void SetUp() override {
        Workshop::SetUp();
        for (const std::string name :
             {"rock", "top1", "top2", "top3", "hatch", "spike", "big", "fill", "tuft", "ladder", "rail"})
            write("models/tiles/t/" + name + ".model", "");
        write("units/tiles/t/tiledef.txt", "hatch size 1 1 1 type 4 ;\nspike type 9 ;\n"
                                           "big size 2 2 1 type 1 ;\nfill scaleX scaleY ;\n"
                                           "ladder type 2 ;\nrail type 8 ;\ncut type 2");
        catalogue = std::make_unique<TileCatalogue>(folder);
    }

    Stage compile(const std::string& text) {
        Stage stage = parseStage("s.stage", text, *catalogue);
        checkStage(stage, StageGrid(stage));
        return stage;
    }

    // What the compiler says to a faulty source; empty when it accepts it.
    std::string refusal(const std::string& text) {
        return faultOf([&] { compile(text); });
    }

    bool endReached(const std::string& maps, const std::string& rooms = room) {
        const Stage stage = compile(head + maps + rooms + tail);
        return searchReach(stage, StageGrid(stage)).endReached;
    }

    std::unique_ptr<TileCatalogue> catalogue;
};

TEST_F(StageCompiler, WritesTheFilesOfATinyStage) {
    const Stage stage = compile(head + R"(map column=-1 {
    1 "......^....B"
    0 "############"
}
place tuft 2.5,1 z=-12.5
)" + R"(camera room columns=0,9 rows=-2,8 instant {
    exit right rows=1,3 to=next
}
camera next columns=10,19 rows=-2,8
event foe SpawnEnemy at=4,1 actor=Goomba mesh=goomba facing=left {
    param 0 2.5
    triggers count
}
event count Counter count=3
event tune Music track=town
event pull Field columns=2,3 rows=4,5 pull=left
event lift Thingy at=3,4 actor=MovingPlatform mesh=p rot=[90,0,1,0]
)" + tail + "start foe count tune pull\n");
    const StageGrid grid(stage);
    EXPECT_EQ(stageFileName(stage), "level007");
    const std::string level = levelText(stage, grid);
    EXPECT_EQ(level.substr(0, level.find('\n')), "-340 0 13 3");
    EXPECT_NE(level.find("\ntiles/t/spike -280 10 0\n"), std::string::npos);
    EXPECT_NE(level.find("\ntiles/t/big -230 10 0\n"), std::string::npos);
    EXPECT_NE(level.find("\ntiles/t/tuft -305 10 -12.5\n\n"), std::string::npos);
    EXPECT_EQ(std::count(level.begin(), level.end(), '\n'), 1 + 14 + 1 + 1);
    EXPECT_EQ(eventText(stage), R"({
CameraBounds{ min -335 -25 max -235 85 instant 1 triggers 1 1 }
CameraEdge{ min -335 4 max -235 35 dir 0 triggers 1 2 }
CameraBounds{ min -235 -25 max -135 85 instant 0 }
SpawnEnemy{ pos -290 5 0 rot 180 0 1 0 mesh goomba type 13 triggers 1 4 param 0 2.5 }
Counter{ pos 0 0 0 numTriggers 3 }
Music{ pos 0 0 0 town }
Field{ min -315 35 max -295 55 type 2 }
Thingy{ pos -300 40 0 rot 90 0 1 0 mesh p type 18 }
SpawnPlayer{ pos -320 6 0 rot 0 0 1 0 mesh corvan }
PlayerRect{ min -255 4 max -235 35 triggers 1 10 }
OpenMenu{ pos 0 0 0 menu 8 }
StartupTriggers 7 0 8 9 3 4 5 6 
}
)");
}

TEST_F(StageCompiler, SaysWhereASourceIsWrong) {
    const std::string good = head + flat + room + tail;
    ASSERT_EQ(refusal(good), "");
    const int after = 14; // the line behind the head
    const auto at = [](int line, int column, const std::string& reason) {
        return "s.stage:" + std::to_string(line) + ":" + std::to_string(column) + ": " + reason;
    };
    const struct {
        std::string text, expected;
    } cases[] = {
        {head + "place bush 1,1 z=3", at(after, 7, "unknown tile 'tiles/t/bush'")},
        {head + "place tuft 1,1 z=0", at(after, 1, "scenery at depth 0 would be part of the play plane")},
        {head + "map {\n 0 \"##\"\n 1 \"##\"\n}", at(after + 2, 2, "the rows of a map go downwards")},
        {head + "map {\n 0 \"#.?\"\n}", at(after + 1, 7, "'?' is not in the legend")},
        {head + "map {\n 1 \"B#\"\n 0 \"##\"\n}" + room + tail,
         at(after + 1, 6, "'tiles/t/rock' overlaps 'tiles/t/big'")},
        {head + "map {\n 1 \"F\"\n 0 \"FF\"\n}" + room + tail,
         at(after + 2, 5, "this patch of 'tiles/t/fill' stretches both ways and must be a rectangle")},
        {good + "event e Explosion at=1,1", at(25, 9, "unknown event 'Explosion'")},
        {good + "event e SpawnEnemy at=1,1 mesh=m actor=Dragon", at(25, 40, "unknown actor 'Dragon'")},
        {good + "event hero NonReset", at(25, 1, "there is another event 'hero'")},
        {good + "event e NonReset {\n triggers e nobody\n}", at(26, 13, "there is no event 'nobody'")},
        {good + "start nobody", at(25, 7, "there is no event 'nobody'")},
        {good + "event e NonReset", at(25, 1, "nothing sets off 'e'")},
        {good + "event e SpawnEnemy at=2,0 mesh=m actor=Goomba\nstart e",
         at(25, 1, "'e' stands inside solid cells")},
        {head + "map {\n 2 \".#\"\n 1 \"..\"\n 0 \"##\"\n}" + room + tail,
         at(after + 6, 1, "'hero' stands inside solid cells")},
        {head + flat + tail, at(23, 7, "there is no event 'room'")},
        {head + flat + "event clear OpenMenu menu=8\nstart clear",
         at(18, 1, "the stage has no hero (SpawnPlayer, or a PlayerRocket that the start sets off)")},
        {head + flat + "event hero SpawnPlayer at=1,1 mesh=m\nstart hero",
         at(18, 1, "the stage has no camera area")},
        {head + flat + room + "event hero SpawnPlayer at=1,1 mesh=m\nstart hero room",
         at(19, 1, "the stage has no end (OpenMenu menu=8)")},
    };
    for (const auto& each : cases)
        EXPECT_EQ(refusal(each.text), each.expected) << each.text;
}

TEST_F(StageCompiler, ChoosesVariantsByPositionAlone) {
    const auto names = [&](const std::string& row) {
        std::vector<std::string> out;
        for (const StageTile& tile : parseStage("s", head + "map {\n 0 \"" + row + "\"\n}", *catalogue).tiles)
            out.push_back(tile.kind->name);
        return out;
    };
    const std::vector<std::string> whole = names("============"), changed = names("#===========");
    EXPECT_TRUE(std::equal(whole.begin() + 1, whole.end(), changed.begin() + 1));
    for (const char* name : {"tiles/t/top1", "tiles/t/top2", "tiles/t/top3"})
        EXPECT_GT(std::count(whole.begin(), whole.end(), name), 0);
}

TEST_F(StageCompiler, ScattersAndDressesWithinTheirRanges) {
    const std::string source = head + flat + R"(scatter tuft columns=2,8 row=1 count=12 z=-9,-4 seed=3
repeat tuft from=0,2 step=1.5,0.5 count=3 z=8
dress "#" tuft z=2,3 share=0.5 rise=1 seed=2
)";
    const Stage stage = parseStage("s", source, *catalogue);
    ASSERT_GT(stage.scenery.size(), 15u);
    ASSERT_LT(stage.scenery.size(), 25u);
    for (std::size_t i = 0; i < 12; ++i) {
        const Zelkor::Vec3 p = stage.scenery[i].position;
        EXPECT_TRUE(p.x >= -310 && p.x <= -250 && p.y == 10 && p.z >= -9 && p.z <= -4) << i;
    }
    EXPECT_EQ(stage.scenery[14].position, (Zelkor::Vec3{-300, 30, 8}));
    for (std::size_t i = 15; i < stage.scenery.size(); ++i)
        EXPECT_TRUE(stage.scenery[i].position.z >= 2 && stage.scenery[i].position.z <= 3);
}

// The hero rises 3.3 rows on a full jump and clears five columns at a run.
TEST_F(StageCompiler, LetsTheHeroReachWhatHeCanJump) {
    EXPECT_TRUE(endReached("map {\n 0 \"###....###\"\n}"));
    EXPECT_FALSE(endReached("map {\n 0 \"##......##\"\n}"));
    EXPECT_TRUE(
        endReached("map {\n 3 \".....#....\"\n 2 \".....#....\"\n 1 \".....#....\"\n 0 \"##########\"\n}"));
    const std::string wall =
        "map {\n 4 \".....#....\"\n 3 \".....#....\"\n 2 \".....#....\"\n 1 \".....#....\"\n";
    EXPECT_FALSE(endReached(wall + " 0 \"##########\"\n}"));
    // A low ceiling keeps the jump over the spikes too short; a hatch lets him through and carries him.
    EXPECT_TRUE(endReached("map {\n 1 \"....^.....\"\n 0 \"##########\"\n}"));
    EXPECT_FALSE(endReached("map {\n 3 \"##########\"\n 1 \"....^.....\"\n 0 \"##########\"\n}"));
    EXPECT_TRUE(endReached("map {\n 6 \".....#....\"\n 5 \"..~~.#....\"\n 4 \".....#....\"\n"
                           " 3 \"~~...#....\"\n 2 \".....#....\"\n 1 \".....#....\"\n 0 \"##########\"\n}"));
    EXPECT_FALSE(endReached(wall + " 0 \"^#########\"\n}"));
}

TEST_F(StageCompiler, KeepsTheHeroInsideHisCameraAreas) {
    const std::string split = "camera next columns=5,9 rows=-2,8\n";
    EXPECT_FALSE(
        endReached(flat, "camera room columns=0,4 rows=-2,8 {\n exit right rows=5,6 to=next\n}\n" + split));
    EXPECT_TRUE(
        endReached(flat, "camera room columns=0,4 rows=-2,8 {\n exit right rows=1,2 to=next\n}\n" + split));
    // Up and over: the upper area is left through its right side.
    const std::string tower =
        "map {\n 7 \"......####\"\n 5 \"...~~.....\"\n 3 \"~~~.......\"\n 0 \"######....\"\n}";
    const std::string over = "camera room columns=0,5 rows=-2,4 {\n exit up columns=0,5 to=high\n}\n"
                             "camera high columns=0,9 rows=3,14";
    EXPECT_TRUE(searchReach(compile(head + tower + "\n" + over +
                                    "\nevent e PlayerRect columns=6,9 rows=8,9 {\n"
                                    " triggers clear\n}\nstart e\n" +
                                    tail),
                            StageGrid(parseStage("s", head + tower, *catalogue)))
                    .endReached);
}

TEST_F(StageCompiler, WritesNothingForAStageWithoutAWay) {
    const std::string source = write("stages/s.stage", head + flat + room + tail), out = path("out");
    compileStage({source, out, "", path("map.png")});
    EXPECT_TRUE(fs::exists(out + "/level007.level") && fs::exists(out + "/level007.event"));
    EXPECT_GT(fs::file_size(path("map.png")), 200u);
    fs::remove_all(out);
    write("stages/s.stage", head + "map {\n 0 \"##......##\"\n}\n" + room + tail);
    EXPECT_THROW(compileStage({source, out, "", ""}), SourceError);
    EXPECT_FALSE(fs::exists(out));
    // Unless it says so; and a name is as good as a number.
    write("stages/s.stage", "stage rope unwalked\n" + head.substr(head.find('\n')) +
                                "map {\n 0 \"##......##\"\n}\n" + room + tail);
    compileStage({source, out, "", ""});
    EXPECT_TRUE(fs::exists(out + "/rope.level") && fs::exists(out + "/rope.event"));
}

// Every kind of event, as the game reads it: the order of the fields is the format.
TEST_F(StageCompiler, WritesEveryKindOfEvent) {
    const struct {
        const char *source, *line;
    } cases[] = {
        {"SpawnThingy at=1,2 mesh=m actor=Pickup", "SpawnThingy{ pos -320 20 0 rot 0 0 1 0 mesh m type 71 }"},
        {"SpawnEnemy at=1.5,2 z=-6 mesh=m actor=Bandit1 rot=[30,0,0,1]",
         "SpawnEnemy{ pos -315 15 -6 rot 30 0 0 1 mesh m type 20 }"},
        {"RepeatedSpawn at=0,5 mesh=m actor=EnemyBat size=3,2 side=right relative interval=2.5",
         "RepeatedSpawn{ pos -330 50 0 rot 0 0 1 0 mesh m type 35 size 30 20 spawntype 257 interval 2.5 }"},
        {"RepeatedSpawn at=0,5 mesh=m actor=EnemyBat size=0,0 side=below interval=1",
         "RepeatedSpawn{ pos -330 50 0 rot 0 0 1 0 mesh m type 35 size 0 0 spawntype 4 interval 1 }"},
        {"TeleportPlayer at=4,3", "TeleportPlayer{ pos -290 25 0 }"},
        {"Rail at=4,3", "Rail{ pos -290 30 0 }"},
        {"Option option=0 value=0.5", "Option{ pos 0 0 0 option 0 value 0.5 }"},
        {"CameraEdge columns=1,2 rows=3,4 dir=down", "CameraEdge{ min -325 25 max -305 45 dir 3 }"},
        {"CameraBounds columns=1,2 rows=3,4", "CameraBounds{ min -325 25 max -305 45 instant 0 }"},
        {"Field columns=1,2 rows=3,4 pull=up", "Field{ min -325 25 max -305 45 type 1 }"},
    };
    for (const auto& each : cases) {
        const Stage stage = parseStage("s", head + "event e " + each.source, *catalogue);
        const std::string text = eventText(stage);
        EXPECT_EQ(text.substr(2, text.find('\n', 2) - 2), each.line);
    }
    EXPECT_NE(refusal(head + "event e SpawnThingy mesh=m actor=Door").find("needs at=COLUMN,ROW"),
              std::string::npos);
}

TEST_F(StageCompiler, MakesZonesOfExits) {
    const Stage stage = parseStage("s", head + R"(camera a columns=0,9 rows=0,9 {
    exit left rows=2,3 to=a
    exit up columns=4,6 to=a
    exit down columns=1,1 to=a
})",
                                   *catalogue);
    const auto line = [&](int index) { return stage.events[static_cast<std::size_t>(index)].fields; };
    EXPECT_EQ(line(1), "min -335 14 max -235 35 dir 1"); // a hair below the floor, where feet rest
    EXPECT_EQ(line(2), "min -295 -5 max -265 95 dir 2");
    EXPECT_EQ(line(3), "min -325 -5 max -315 95 dir 3");
}

TEST_F(StageCompiler, ReadsTilesAsTheGameDoes) {
    EXPECT_EQ(catalogue->find("tiles/t/tuft")->type, tile_type::solid);
    EXPECT_EQ(catalogue->find("tiles/t/cut"), nullptr);
    const auto kinds = readTileKinds("a type 2 ; b size 3 1 1 unknown scaleX ; a type 4 ; c type 9", "p/");
    ASSERT_EQ(kinds.size(), 3u); // the last one is cut off
    EXPECT_TRUE(kinds[1].width == 3 && kinds[1].stretchX && !kinds[1].stretchY && kinds[1].type == 1);
}

// A gap and a wall that he cannot jump, and what takes him over them all the same.
TEST_F(StageCompiler, RidesAndClimbsWhereJumpsDoNotReach) {
    const std::string gap = "map {\n 0 \"##......##\"\n}\n", rails = "map {\n 0 \"##rrrrrr##\"\n}\n";
    const auto wall = [](const std::string& row5, const std::string& row4) {
        const std::string low = "....H#....";
        return "map {\n 5 \"" + row5 + "\"\n 4 \"" + row4 + "\"\n 3 \"" + low + "\"\n 2 \"" + low +
               "\"\n 1 \"" + low + "\"\n 0 \"##########\"\n}\n";
    };
    const std::string bare = wall(".....#....", ".....#....");
    const std::string up = " rot=[90,0,0,1]", track = " {\n triggers b\n}\nevent b Rail at=2,0.5\n";
    const struct {
        std::string map, ride;
        bool reached;
    } cases[] = {
        {wall("....~#....", "....H#...."), "", true},
        {wall("....H#....", "....H#...."), "", false}, // hands end where the ladder does
        {gap, "MovingPlatform mesh=p at=2,0 {\n param 0 40\n}", true},
        {gap, "MovingPlatform mesh=p at=4,4 {\n param 0 40\n}", false},  // too high
        {gap, "MovingPlatform mesh=p at=4,-4 {\n param 0 40\n}", false}, // too low to come back from
        {bare, "MovingPlatform mesh=p at=2,1" + up + " {\n param 0 40\n}", true},
        {bare, "MovingPlatform mesh=p at=2,1" + up + " {\n param 0 4\n}", false},
        {wall(".####.....", ".....#...."), "MovingPlatform mesh=p at=2,1" + up + " {\n param 0 40\n}", false},
        {bare, "BounceShroom mesh=p at=2,0.5 {\n param 0 0\n}", true},
        {gap, "CircleingPlatform mesh=p at=4.5,-1 {\n param 7 10\n}", true},
        {gap, "CircleingPlatform mesh=p at=4.5,5 {\n param 7 50\n param 2 1\n param 5 170\n param 6 190\n}",
         true},
        {gap, "CircleingPlatform mesh=p at=4.5,5 {\n param 7 50\n param 2 1\n param 5 -10\n param 6 10\n}",
         false},
        {gap, "FallPlatform mesh=p at=4,0", true},
        {gap, "DisappearingTile mesh=p at=4,0", true},
        {gap, "RotatingPlatform mesh=p at=4,-1", true},
        {rails, "ControlledPlatform mesh=p at=2,1", true},
        {rails, "Pickup mesh=p at=2,1", false},
        {bare, "MovingLadder mesh=p at=4,1 {\n param 0 100\n}", true},
        {bare, "MovingLadder mesh=p at=1,1 {\n param 0 40\n param 1 30\n}",
         false}, // through the wall, too low
        {wall(".....#....", "...~.#...."), "CylinderPlatform mesh=p at=2.5,1.5", true},
        {gap,
         "Minecart mesh=p at=1,0.5\nevent a Rail at=0,0.5" + track +
             "start a c\nevent c Rail at=8,0.5 {\n triggers d\n}\nevent d Rail at=9,0.5",
         true},
        {gap, "Minecart mesh=p at=1,0.5\nstart a\nevent a Rail at=0,0.5" + track,
         false}, // nowhere to come down
        {bare, "Minecart mesh=p at=1,0.5\nstart a\nevent a Rail at=0,0.5" + track,
         false}, // thrown out too low
    };
    for (const auto& each : cases)
        EXPECT_EQ(
            endReached(each.map + (each.ride.empty() ? "" : "event ride Thingy actor=" + each.ride + "\n")),
            each.reached)
            << each.map << each.ride;
}

// The numbers of the hero's jump, by hand: held to the end he rises 85 * 0.35 - 30 * 0.35^2 + 64^2 / 600
// = 32.9, tapped 85^2 / 600 = 12.0; running he covers 45 a second.
class Flight : public StageCompiler {
  protected:
    // The leap from column 1 of a map, over its whole path.
    bool leap(const std::string& map, const Leap& how, Standing& landing) {
        const Stage stage = parseStage("s", head + map, *catalogue);
        const StageGrid grid(stage);
        const std::vector<CameraArea> areas{{{-1000, -35}, {1000, 1000}, {}}};
        const std::vector<Ride> none;
        HeroFlight flight(grid, areas, none);
        const bool landed = flight.fly(0, how, landing);
        path = flight.path();
        return landed;
    }

    float highest() const {
        float y = -1000;
        for (const Zelkor::Vec2& p : path)
            y = std::max(y, p.y);
        return y;
    }

    static Leap running(float hold) {
        return {{-320, 5}, {hero::runSpeed, hero::jumpSpeed}, hold, 1, 1, 0, 0};
    }
    static constexpr Leap straightUp{{-320, 5}, {0, hero::jumpSpeed}, 0.35f, 0, 0, 0, 0};

    std::vector<Zelkor::Vec2> path;
};

TEST_F(Flight, FollowsTheNumbersOfTheJump) {
    const std::string ground = "map {\n 0 \"################\"\n}";
    Standing landing;
    ASSERT_TRUE(leap(ground, running(hero::holdTime), landing));
    EXPECT_NEAR(highest() - 5, 32.9f, 0.6f);
    EXPECT_NEAR(path.back().x + 320, 46.5f, 2);
    EXPECT_EQ(landing.column, 6);
    ASSERT_TRUE(leap(ground, running(0), landing));
    EXPECT_NEAR(highest() - 5, 12, 0.8f);
    ASSERT_TRUE(leap(ground, straightUp, landing));
    EXPECT_EQ(landing.column, 1);
    EXPECT_FLOAT_EQ(path.back().x, -320);
}

TEST_F(Flight, MeetsCeilingsWallsAndThorns) {
    Standing landing;
    ASSERT_TRUE(leap("map {\n 4 \"################\"\n 0 \"################\"\n}", running(0.35f), landing));
    EXPECT_LE(highest(), 17.1f); // 18 tall under a ceiling at 35
    ASSERT_TRUE(leap("map {\n 3 \"...#\"\n 2 \"...#\"\n 1 \"...#\"\n 0 \"####\"\n}", running(0), landing));
    EXPECT_EQ(landing.column, 2);
    EXPECT_LE(path.back().x, -305 - hero::halfWidth + 0.1f);
    EXPECT_FALSE(leap("map {\n 1 \"......^.\"\n 0 \"########\"\n}", running(0.35f), landing));
    EXPECT_FALSE(leap("map {\n 0 \"##\"\n}", running(0.35f), landing)); // nothing to land on
    // Through the hatch, and back onto it.
    ASSERT_TRUE(leap("map {\n 3 \"~~~~~\"\n 0 \"#####\"\n}", straightUp, landing));
    EXPECT_EQ(landing.row, 4);
}

// Where the hero can get to, told by the cells he can stand in.
TEST_F(StageCompiler, FollowsTheHeroThroughRoomsBelowAndAbove) {
    const std::string maps = "map {\n 3 \"#####.....\"\n 0 \"..........\"\n -6 \"##########\"\n}";
    const std::string ending =
        "event hero SpawnPlayer at=1,4 mesh=m\nevent foe SpawnEnemy at=8,-5 actor=EnemyDuck mesh=d {\n"
        " triggers count\n}\nevent count Counter count=2 {\n triggers clear\n}\n"
        "event clear OpenMenu menu=8\nstart room hero foe\n";
    const auto reach = [&](const std::string& rooms) {
        const Stage stage = compile(head + maps + rooms + ending);
        return searchReach(stage, StageGrid(stage));
    };
    // The fall leads out of the room: to death, unless an exit is there.
    const std::string upper = "camera room columns=0,9 rows=0,9",
                      lower = "camera cellar columns=0,9 rows=-7,1\n";
    EXPECT_FALSE(reach(upper + "\nevent e NonReset {\n triggers cellar\n}\nstart e\n" + lower).endReached);
    const ReachResult fallen = reach(upper + " {\n exit down columns=5,9 to=cellar\n}\n" + lower);
    EXPECT_TRUE(fallen.endReached); // whoever must die for the end is met
    EXPECT_EQ(fallen.farthestColumn, 9);
    const auto standsAt = [&](int column, int row, int area) {
        return std::any_of(fallen.standings.begin(), fallen.standings.end(), [&](const Standing& s) {
            return s.column == column && s.row == row && s.area == area;
        });
    };
    EXPECT_TRUE(standsAt(4, 4, 0) && standsAt(7, -5, 1));
    EXPECT_FALSE(standsAt(7, -5, 0) || standsAt(4, 4, 1));
}

} // namespace
} // namespace forge
