#include "stage/EventKinds.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <sstream>

namespace forge {
namespace {

struct EventKind {
    const char* keyword;
    const char* fields; // in the order the event file has them
};

constexpr EventKind eventKinds[] = {
    {"SpawnPlayer", "pos rot mesh"},
    {"SpawnEnemy", "pos rot mesh type"},
    {"SpawnThingy", "pos rot mesh type"},
    {"Thingy", "pos rot mesh type"},
    {"RepeatedSpawn", "pos rot mesh type size spawntype interval"},
    {"PlayerRect", "box"},
    {"Field", "box field"},
    {"TeleportPlayer", "pos"},
    {"OpenMenu", "pos menu"},
    {"Music", "pos track"},
    {"Option", "pos option value"},
    {"Counter", "pos numTriggers"},
    {"Delay", "pos time"},
    {"NonReset", "pos"},
    {"Rail", "pos"},
    {"CameraBounds", "box instant"},
    {"CameraEdge", "box dir"},
};

struct FieldNames {
    const char* field;
    const char* names; // what a source statement calls it
};

constexpr FieldNames fieldNames[] = {
    {"pos", "at z"},          {"rot", "facing rot"},    {"mesh", "mesh"},
    {"type", "actor"},        {"size", "size"},         {"spawntype", "side relative?"},
    {"interval", "interval"}, {"box", "columns rows"},  {"field", "pull"},
    {"menu", "menu"},         {"track", "track"},       {"option", "option"},
    {"value", "value"},       {"numTriggers", "count"}, {"time", "time"},
    {"instant", "instant?"},  {"dir", "dir"},
};

struct Actor {
    const char* name;
    int type;
};

constexpr Actor actors[] = {
    {"Robot1", 3},
    {"FlyingRobotHead", 4},
    {"FlyingRobotHeadBomb", 5},
    {"Turret", 6},
    {"TrainEnvThingy", 7},
    {"OctoBattery", 8},
    {"MedusaHead", 9},
    {"PlatformScanner", 10},
    {"FireBallCannon", 11},
    {"Goomba", 13},
    {"RotatingBeam", 14},
    {"RotatingBall", 15},
    {"ElecBeam", 16},
    {"WindFan", 17},
    {"MovingPlatform", 18},
    {"RotatingTurret", 19},
    {"Bandit1", 20},
    {"HatchBandit", 21},
    {"WindowBandit", 22},
    {"ControlledPlatform", 23},
    {"EnemySawBlade", 24},
    {"RotatingPlatform", 25},
    {"CylinderPlatform", 26},
    {"PlayerRocket", 27},
    {"SpaceHorse", 28},
    {"EnemyAsteroid", 29},
    {"EnemyDuck", 30},
    {"EnemyWolf", 31},
    {"EnemyHorseBandit", 32},
    {"EnemyBarrel", 33},
    {"DisappearingTile", 34},
    {"EnemyBat", 35},
    {"CarrierBird", 36},
    {"CircleingPlatform", 37},
    {"MovingLadder", 38},
    {"BossHackPlatform", 39},
    {"TrainBomb", 40},
    {"Minecart", 41},
    {"MinecartBandit", 43},
    {"EnemyBunny", 44},
    {"BounceShroom", 45},
    {"FallPlatform", 46},
    {"EnemySawBladePath", 47},
    {"BigMacBoss", 50},
    {"TrainBoss", 51},
    {"BionicBoss", 52},
    {"CloneBoss", 53},
    {"MechBoss", 54},
    {"Door", 70},
    {"Pickup", 71},
    {"Marker", 200},
};

const EventKind* findKind(const std::string& keyword) {
    for (const EventKind& kind : eventKinds)
        if (keyword == kind.keyword) return &kind;
    return nullptr;
}

// The place of a word in a list of words; refused when it is not among them.
template <std::size_t N>
int choice(const Arguments& arguments, const std::string& name, const std::array<const char*, N>& words) {
    const std::string word = arguments.name(name);
    std::string known;
    for (std::size_t i = 0; i < N; ++i) {
        if (word == words[i]) return static_cast<int>(i);
        known += std::string(i ? ", " : "") + words[i];
    }
    arguments.fail(name, "unknown " + name + " '" + word + "'; it is one of: " + known);
}

// Who walks stands on the floor of the cell; everything else sits in its middle.
bool standsOnFloor(const std::string& keyword) {
    return keyword == "SpawnPlayer" || keyword == "SpawnEnemy" || keyword == "TeleportPlayer";
}

// Events that are nowhere in particular may leave their position out.
bool hasPlaceOfItsOwn(const std::string& keyword) {
    return standsOnFloor(keyword) || keyword == "SpawnThingy" || keyword == "Thingy" ||
           keyword == "RepeatedSpawn" || keyword == "Rail";
}

std::string words(std::initializer_list<float> numbers) {
    std::string out;
    for (const float number : numbers)
        out += " " + plainNumber(number);
    return out;
}

class FieldReader {
  public:
    FieldReader(const std::string& kind, const Arguments& given, const Stage& in)
        : keyword(kind), arguments(given), stage(in) {
        event.keyword = kind;
    }

    StageEvent read(const std::string& fields) {
        std::istringstream list(fields);
        for (std::string field; list >> field;)
            event.fields += (event.fields.empty() ? "" : " ") + text(field);
        return event;
    }

  private:
    std::string text(const std::string& field) {
        if (field == "pos") return position();
        if (field == "rot") return rotation();
        if (field == "mesh") return "mesh " + (event.mesh = arguments.name("mesh"));
        if (field == "type") return actor();
        if (field == "box") return box();
        if (field == "track") return arguments.name("track");
        if (field == "size") return size();
        if (field == "spawntype") return side();
        if (field == "interval") return "interval" + words({arguments.number("interval")});
        if (field == "value") return "value" + words({arguments.number("value")});
        if (field == "time") return "time" + words({arguments.number("time")});
        return whole(field);
    }

    std::string whole(const std::string& field) {
        if (field == "instant") {
            event.instant = arguments.flag("instant");
            return event.instant ? "instant 1" : "instant 0";
        }
        if (field == "dir") {
            event.number = choice<4>(arguments, "dir", {"right", "left", "up", "down"});
        } else if (field == "field") {
            // Where the hero falls to.
            event.number = choice<4>(arguments, "pull", {"down", "up", "left", "right"});
            return "type" + words({static_cast<float>(event.number)});
        } else {
            const std::string name = field == "numTriggers" ? "count" : field;
            if (!arguments.has(name)) arguments.fail(name, "'" + keyword + "' needs " + name + "=");
            event.number = arguments.integer(name, 0);
        }
        return field + words({static_cast<float>(event.number)});
    }

    std::string position() {
        Zelkor::Vec3 p;
        if (hasPlaceOfItsOwn(keyword) || arguments.has("at")) {
            const Zelkor::Vec2 cell = arguments.pair("at", {});
            if (!arguments.has("at")) arguments.fail("at", "'" + keyword + "' needs at=COLUMN,ROW");
            p = {stage.columnX(cell.x), stage.rowY(cell.y), arguments.number("z", 0)};
            if (standsOnFloor(keyword)) p.y -= cellSize / 2;
            event.at = p;
            // The hero is set down one unit below the point where he is spawned.
            if (keyword == "SpawnPlayer") p.y += 1;
        }
        return "pos" + words({p.x, p.y, p.z});
    }

    std::string rotation() {
        if (arguments.has("rot")) {
            const auto turns = arguments.tuples("rot", 4, 0);
            if (turns.size() != 1) arguments.fail("rot", "rot is [DEGREES,X,Y,Z]");
            const float half = turns[0][0] * Zelkor::pi / 360;
            Zelkor::Quat turn{std::cos(half), std::sin(half) * turns[0][1], std::sin(half) * turns[0][2],
                              std::sin(half) * turns[0][3]};
            quatNormalize(turn);
            Zelkor::Vec3 forward;
            quatAxisX(forward, turn);
            event.direction = {forward.x, forward.y};
            return "rot" + words({turns[0][0], turns[0][1], turns[0][2], turns[0][3]});
        }
        const bool left = arguments.has("facing") && choice<2>(arguments, "facing", {"right", "left"}) == 1;
        event.direction.x = left ? -1.0f : 1.0f;
        return left ? "rot 180 0 1 0" : "rot 0 0 1 0";
    }

    std::string actor() {
        const std::string name = arguments.name("actor");
        const int type = actorType(name);
        if (type < 0) arguments.fail("actor", "unknown actor '" + name + "'");
        event.actor = name;
        return "type " + std::to_string(type);
    }

    std::string box() {
        event.box = readBox(arguments, stage);
        // Feet rest a hair inside their floor: a box that stands on it reaches a little below.
        if (keyword == "PlayerRect") event.box->first.y -= feetMargin;
        return "min" + words({event.box->first.x, event.box->first.y}) + " max" +
               words({event.box->second.x, event.box->second.y});
    }

    std::string size() {
        const Zelkor::Vec2 cells = arguments.pair("size", {0, 0});
        return "size" + words({cells.x * cellSize, cells.y * cellSize});
    }

    std::string side() {
        const int code = choice<5>(arguments, "side", {"place", "right", "left", "above", "below"});
        return "spawntype " + std::to_string(code + (arguments.flag("relative") ? 256 : 0));
    }

    const std::string& keyword;
    const Arguments& arguments;
    const Stage& stage;
    StageEvent event;
};

} // namespace

std::optional<std::string> eventSignature(const std::string& keyword) {
    const EventKind* kind = findKind(keyword);
    if (!kind) return std::nullopt;
    std::string signature = "name keyword ;";
    std::istringstream fields(kind->fields);
    for (std::string field; fields >> field;)
        for (const FieldNames& entry : fieldNames)
            if (field == entry.field) signature += std::string(" ") + entry.names;
    return signature;
}

StageEvent readEvent(const std::string& keyword, const Arguments& arguments, const Stage& stage) {
    return FieldReader(keyword, arguments, stage).read(findKind(keyword)->fields);
}

std::pair<Zelkor::Vec2, Zelkor::Vec2> readBox(const Arguments& arguments, const Stage& stage) {
    const Zelkor::Vec2 columns = arguments.pair("columns", {});
    const Zelkor::Vec2 rows = arguments.pair("rows", {});
    for (const char* name : {"columns", "rows"})
        if (!arguments.has(name)) arguments.fail(name, std::string("needs ") + name + "=FIRST,LAST");
    if (columns.y < columns.x) arguments.fail("columns", "the last column stands before the first");
    if (rows.y < rows.x) arguments.fail("rows", "the last row stands below the first");
    const float half = cellSize / 2;
    return {{stage.columnX(columns.x) - half, stage.rowY(rows.x) - half},
            {stage.columnX(columns.y) + half, stage.rowY(rows.y) + half}};
}

int actorType(const std::string& name) {
    for (const Actor& actor : actors)
        if (name == actor.name) return actor.type;
    return -1;
}

std::string plainNumber(float value) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.3f", static_cast<double>(value));
    std::string text = buffer;
    while (text.back() == '0')
        text.pop_back();
    if (text.back() == '.') text.pop_back();
    return text == "-0" ? "0" : text;
}

} // namespace forge
