// Reads a stage source statement by statement; the order of the file is the order of the output.
#include "mesh/Noise.h"
#include "stage/EventKinds.h"
#include "stage/Stage.h"
#include "text/Arguments.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <map>

namespace forge {
namespace {

constexpr int emptyCell = '.';

// What one character of a map stands for: nothing, or tiles of which one is chosen by position.
using Legend = std::map<char, std::vector<const TileKind*>>;

std::string unquoted(const Word& word) {
    if (word.text.size() < 2 || word.text.front() != '"' || word.text.back() != '"')
        throw SourceError(word.place, "expected quoted text");
    return word.text.substr(1, word.text.size() - 2);
}

class StageParser {
  public:
    StageParser(const std::string& name, TileCatalogue& tiles) : file(name), catalogue(tiles) {}

    Stage parse(const std::string& text) {
        const std::vector<Statement> statements = parseStatements(file, text);
        for (const Statement& statement : statements)
            read(statement);
        for (const Statement& statement : dressings)
            dress(statement);
        stage.end = {file, 1 + static_cast<int>(std::count(text.begin(), text.end(), '\n')), 1};
        std::stable_sort(stage.tiles.begin(), stage.tiles.end(), [](const StageTile& a, const StageTile& b) {
            return a.row != b.row ? a.row < b.row : a.column < b.column;
        });
        return std::move(stage);
    }

  private:
    void read(const Statement& s) {
        const std::string& keyword = s.keyword;
        if (keyword == "stage") {
            header(s);
        } else if (keyword == "tiles") {
            tileFolder = "tiles/" + Arguments(s, scope, "set").name("set") + "/";
        } else if (keyword == "origin") {
            stage.origin = Arguments(s, scope, "at").pair("at", {});
        } else if (keyword == "legend") {
            for (const Statement& entry : s.children)
                legendEntry(entry);
        } else if (keyword == "map") {
            map(s);
        } else if (keyword == "place") {
            place(s);
        } else if (keyword == "repeat") {
            repeat(s);
        } else if (keyword == "scatter") {
            scatter(s);
        } else if (keyword == "dress") {
            dressings.push_back(s);
        } else if (keyword == "camera") {
            camera(s);
        } else if (keyword == "event") {
            event(s);
        } else if (keyword == "start") {
            for (const Word& word : s.words)
                stage.startup.push_back({word.text, word.place});
        } else {
            throw SourceError(s.place, "unknown statement '" + keyword + "'");
        }
    }

    // A number, or the name that its files are to have.
    void header(const Statement& s) {
        const Arguments arguments(s, scope, "stage ; unwalked?");
        const bool named = !s.words.empty() && std::isalpha(static_cast<unsigned char>(s.words[0].text[0]));
        if (named)
            stage.fileName = arguments.name("stage");
        else
            stage.number = arguments.integer("stage", 0);
        stage.unwalked = arguments.flag("unwalked");
    }

    const TileKind* tile(const std::string& name, const Place& where) {
        const std::string unit = name.find('/') == std::string::npos ? tileFolder + name : name;
        const TileKind* kind = catalogue.find(unit);
        if (!kind) throw SourceError(where, "unknown tile '" + unit + "'");
        return kind;
    }

    void legendEntry(const Statement& s) {
        const std::string mark = unquoted({s.place, s.keyword});
        if (mark.size() != 1 || mark[0] == emptyCell || mark[0] == ' ')
            throw SourceError(s.place, "a legend entry starts with one quoted character, not '.' or a blank");
        if (legend.count(mark[0])) throw SourceError(s.place, "'" + mark + "' is in the legend twice");
        if (s.words.empty()) throw SourceError(s.place, "'" + mark + "' stands for no tile");
        for (const Word& word : s.words)
            legend[mark[0]].push_back(tile(word.text, word.place));
    }

    void map(const Statement& s) {
        const Arguments arguments(s, scope, "; column z");
        const int column = arguments.integer("column", 0);
        const float z = arguments.number("z", 0);
        int below = 1001;
        for (const Statement& line : s.children) {
            const int row = rowNumber(line);
            if (row >= below) throw SourceError(line.place, "the rows of a map go downwards");
            below = row;
            mapRow(line, column, row, z);
        }
    }

    static int rowNumber(const Statement& line) {
        char* end = nullptr;
        const long row = std::strtol(line.keyword.c_str(), &end, 10);
        if (*end || line.words.size() != 1 || std::labs(row) > 1000)
            throw SourceError(line.place, "a map row is its number and one quoted line of cells");
        return static_cast<int>(row);
    }

    void mapRow(const Statement& line, int column, int row, float z) {
        const std::string cells = unquoted(line.words[0]);
        for (std::size_t i = 0; i < cells.size(); ++i) {
            if (cells[i] == emptyCell || cells[i] == ' ') continue;
            Place where = line.words[0].place;
            where.column += 1 + static_cast<int>(i);
            const auto entry = legend.find(cells[i]);
            if (entry == legend.end())
                throw SourceError(where, std::string("'") + cells[i] + "' is not in the legend");
            const int at = column + static_cast<int>(i);
            add(variant(entry->second, at, row), static_cast<float>(at), static_cast<float>(row), z, where);
            if (z == 0) stage.tiles.back().mark = cells[i];
        }
    }

    // By position alone, so that editing one place never redraws another; never the left neighbour's choice
    // where there are three or more.
    static const TileKind* variant(const std::vector<const TileKind*>& kinds, int column, int row) {
        const int count = static_cast<int>(kinds.size());
        const auto pick = [&](int c) {
            return static_cast<int>(hashBits(c, row, 71) % static_cast<unsigned>(count));
        };
        int chosen = pick(column);
        if (count > 2 && chosen == pick(column - 1)) chosen = (chosen + 1) % count;
        return kinds[static_cast<std::size_t>(chosen)];
    }

    void add(const TileKind* kind, float column, float row, float z, const Place& where) {
        StageTile tile;
        tile.kind = kind;
        tile.column = static_cast<int>(std::lround(column));
        tile.row = static_cast<int>(std::lround(row));
        tile.position = {stage.columnX(column), stage.rowY(row), z};
        tile.place = where;
        (z == 0 ? stage.tiles : stage.scenery).push_back(tile);
    }

    // Depth 0 is the play plane, which only the maps fill: a tile there is solid.
    void addScenery(const TileKind* kind, float column, float row, float z, const Place& where) {
        if (std::fabs(z) < 0.01f)
            throw SourceError(where, "scenery at depth 0 would be part of the play plane");
        add(kind, column, row, z, where);
    }

    std::vector<const TileKind*> tileList(const Arguments& arguments) {
        std::vector<const TileKind*> kinds;
        for (const std::string& name : arguments.names("tiles"))
            kinds.push_back(tile(name, arguments.place("tiles")));
        if (kinds.empty()) arguments.fail("tiles", "no tile is named");
        return kinds;
    }

    static Zelkor::Vec2 required(const Arguments& arguments, const std::string& name) {
        if (!arguments.has(name)) arguments.fail(name, "'" + name + "=' is missing");
        return arguments.pair(name, {});
    }

    void place(const Statement& s) {
        const Arguments arguments(s, scope, "tile at z");
        const Zelkor::Vec2 at = required(arguments, "at");
        addScenery(tile(arguments.name("tile"), arguments.place("tile")), at.x, at.y, arguments.number("z"),
                   s.place);
    }

    void repeat(const Statement& s) {
        const Arguments arguments(s, scope, "tiles ; from step count z jitter seed");
        const std::vector<const TileKind*> kinds = tileList(arguments);
        const Zelkor::Vec2 from = required(arguments, "from");
        const Zelkor::Vec2 step = required(arguments, "step");
        const float jitter = arguments.number("jitter", 0);
        const int seed = arguments.integer("seed", 1);
        for (int i = 0; i < arguments.integer("count", 1); ++i) {
            const float n = static_cast<float>(i);
            const float shift = jitter * (2 * hashUnit(seed, i, 3) - 1);
            const auto pick = hashBits(seed, i, 5) % kinds.size();
            addScenery(kinds[pick], from.x + n * step.x + shift, from.y + n * step.y, arguments.number("z"),
                       s.place);
        }
    }

    void scatter(const Statement& s) {
        const Arguments arguments(s, scope, "tiles ; columns row count z seed");
        const std::vector<const TileKind*> kinds = tileList(arguments);
        const Zelkor::Vec2 columns = required(arguments, "columns");
        const Zelkor::Vec2 depths = required(arguments, "z");
        const float row = arguments.number("row");
        const int seed = arguments.integer("seed", 1);
        const int count = arguments.integer("count", 1);
        for (int i = 0; i < count; ++i) {
            // One in each stretch of the range: scattered by hand, not by dice, leaves no heaps.
            const float share = (static_cast<float>(i) + hashUnit(seed, i, 7)) / static_cast<float>(count);
            const float column = columns.x + share * (columns.y - columns.x);
            const float z = depths.x + hashUnit(seed, i, 9) * (depths.y - depths.x);
            addScenery(kinds[hashBits(seed, i, 8) % kinds.size()], column, row, z, s.place);
        }
    }

    // Small things on every cell that a character stands for, or on a share of them. Done last, so that it
    // sees all maps.
    void dress(const Statement& s) {
        const Arguments arguments(s, scope, "mark tiles ; z share rise drift seed");
        if (s.words.empty()) throw SourceError(s.place, "'dress' needs the character it dresses");
        const char mark = (unquoted(s.words[0]) + " ")[0];
        if (!legend.count(mark)) throw SourceError(s.words[0].place, "that character is not in the legend");
        const std::vector<const TileKind*> kinds = tileList(arguments);
        const Zelkor::Vec2 depths = required(arguments, "z");
        const int seed = arguments.integer("seed", 1);
        for (const StageTile& tile : stage.tiles) {
            const auto chance = [&](int use) { return hashUnit(tile.column * 31 + tile.row, seed, use); };
            if (tile.mark != mark || chance(1) >= arguments.number("share", 1)) continue;
            const float column =
                static_cast<float>(tile.column) + arguments.number("drift", 0) * (chance(2) - 0.5f);
            const float row = static_cast<float>(tile.row) + arguments.number("rise", 0);
            const float z = depths.x + chance(3) * (depths.y - depths.x);
            const auto pick = static_cast<std::size_t>(chance(4) * static_cast<float>(kinds.size()));
            addScenery(kinds[pick], column, row, z, s.place);
        }
    }

    void addEvent(StageEvent made, const std::string& name, const Place& where) {
        if (stage.eventIndex(name) >= 0) throw SourceError(where, "there is another event '" + name + "'");
        made.name = name;
        made.place = where;
        stage.events.push_back(std::move(made));
    }

    // A camera area and the zones through which the hero leaves it for another.
    void camera(const Statement& s) {
        const Arguments arguments(s, scope, "name ; columns rows instant?");
        const std::string name = arguments.name("name");
        addEvent(readEvent("CameraBounds", arguments, stage), name, s.place);
        const std::size_t area = stage.events.size() - 1;
        int exits = 0;
        for (const Statement& child : s.children) {
            if (child.keyword != "exit") {
                detail(child, stage.events[area]);
                continue;
            }
            const std::string exitName = name + ".exit" + std::to_string(++exits);
            exit(child, *stage.events[area].box, exitName);
            stage.events[area].triggers.push_back({exitName, child.place});
        }
    }

    // The zone spans the whole area across its own direction.
    void exit(const Statement& s, std::pair<Zelkor::Vec2, Zelkor::Vec2> area, const std::string& name) {
        const Arguments arguments(s, scope, "dir ; columns rows to");
        const std::string dir = arguments.name("dir");
        const bool sideways = dir == "left" || dir == "right";
        const std::string axis = sideways ? "rows" : "columns";
        const Zelkor::Vec2 cells = required(arguments, axis);
        const float half = cellSize / 2;
        if (sideways) {
            area.first.y = stage.rowY(cells.x) - half - feetMargin;
            area.second.y = stage.rowY(cells.y) + half;
        } else {
            area.first.x = stage.columnX(cells.x) - half;
            area.second.x = stage.columnX(cells.y) + half;
        }
        const char* directions[] = {"right", "left", "up", "down"};
        const auto* found = std::find(std::begin(directions), std::end(directions), dir);
        if (found == std::end(directions)) arguments.fail("dir", "an exit leads right, left, up or down");
        StageEvent made;
        made.keyword = "CameraEdge";
        made.box = area;
        made.number = static_cast<int>(found - std::begin(directions));
        made.fields = "min " + plainNumber(area.first.x) + " " + plainNumber(area.first.y) + " max " +
                      plainNumber(area.second.x) + " " + plainNumber(area.second.y) + " dir " +
                      std::to_string(made.number);
        made.triggers.push_back({arguments.name("to"), arguments.place("to")});
        addEvent(made, name, s.place);
    }

    void event(const Statement& s) {
        if (s.words.size() < 2)
            throw SourceError(s.place, "an event is its name, its keyword and its fields");
        const std::string& keyword = s.words[1].text;
        const std::optional<std::string> signature = eventSignature(keyword);
        if (!signature) throw SourceError(s.words[1].place, "unknown event '" + keyword + "'");
        const Arguments arguments(s, scope, *signature);
        addEvent(readEvent(keyword, arguments, stage), arguments.name("name"), s.place);
        for (const Statement& child : s.children)
            detail(child, stage.events.back());
    }

    void detail(const Statement& s, StageEvent& made) {
        if (s.keyword == "triggers") {
            for (const Word& word : s.words)
                made.triggers.push_back({word.text, word.place});
        } else if (s.keyword == "param") {
            const Arguments arguments(s, scope, "number value");
            made.params.emplace_back(arguments.integer("number", 0), arguments.number("value"));
        } else {
            throw SourceError(s.place, "an event has 'triggers' and 'param', not '" + s.keyword + "'");
        }
    }

    const std::string& file;
    TileCatalogue& catalogue;
    Scope scope;
    std::string tileFolder = "tiles/";
    Legend legend;
    std::vector<Statement> dressings;
    Stage stage;
};

} // namespace

int Stage::eventIndex(const std::string& name) const {
    for (std::size_t i = 0; i < events.size(); ++i)
        if (events[i].name == name) return static_cast<int>(i);
    return -1;
}

Stage parseStage(const std::string& file, const std::string& text, TileCatalogue& catalogue) {
    return StageParser(file, catalogue).parse(text);
}

} // namespace forge
