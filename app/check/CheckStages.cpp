#include "check/CheckStages.h"

#include "actors/ThingyManager.h"
#include "io/DataFiles.h"

#include <map>
#include <set>
#include <string_view>

namespace {

// The fields of each event, in order: 'p' "pos" and three numbers, 'r' "rot" and four, 'm' "mesh" and a mesh
// name, 't' "type" and a spawn type, 'b' "min" and "max" and two numbers each, then single labelled values.
struct EventLayout {
    std::string_view groups;
    std::vector<const char*> numbers, integers;
};

const std::map<std::string, EventLayout, std::less<>>& eventLayouts() {
    static const std::map<std::string, EventLayout, std::less<>> table = {
        {"SpawnPlayer", {"prm", {}, {}}},
        {"SpawnEnemy", {"prmt", {}, {}}},
        {"SpawnThingy", {"prmt", {}, {}}},
        {"Thingy", {"prmt", {}, {}}},
        {"RepeatedSpawn", {"prmtS", {"interval"}, {}}},
        {"PlayerRect", {"b", {}, {}}},
        {"Field", {"b", {}, {"type"}}},
        {"TeleportPlayer", {"p", {}, {}}},
        {"OpenMenu", {"p", {}, {"menu"}}},
        {"Music", {"pw", {}, {}}},
        {"Option", {"p", {"value"}, {"option"}}},
        {"Counter", {"p", {}, {"numTriggers"}}},
        {"Delay", {"p", {"time"}, {}}},
        {"NonReset", {"p", {}, {}}},
        {"Rail", {"p", {}, {}}},
        {"CameraBounds", {"b", {}, {"instant"}}},
        {"CameraEdge", {"b", {}, {"dir"}}},
    };
    return table;
}

void numbers(StrictTokens& tokens, const char* label, int count) {
    tokens.label(label);
    for (int i = 0; i < count; ++i)
        tokens.number(label);
}

void checkBox(StrictTokens& tokens) {
    float min[2], max[2];
    tokens.label("min");
    for (float& value : min)
        value = tokens.number("min");
    tokens.label("max");
    for (float& value : max)
        value = tokens.number("max");
    if (!(min[0] < max[0] && min[1] < max[1])) tokens.report("the box is empty");
}

void checkSpawnType(StrictTokens& tokens) {
    tokens.label("type");
    const int type = tokens.integer("type");
    if (!ThingyManager::canSpawn(type)) tokens.report("no actor has spawn type " + std::to_string(type));
}

void checkFields(StrictTokens& tokens, const EventLayout& layout) {
    for (const char group : layout.groups) {
        if (group == 'p') numbers(tokens, "pos", 3);
        if (group == 'r') numbers(tokens, "rot", 4);
        if (group == 'b') checkBox(tokens);
        if (group == 't') checkSpawnType(tokens);
        if (group == 'w') {
            const std::string track = tokens.word();
            if (!Zelkor::dataFileExists("sound/" + track + ".ogg")) tokens.report("missing track '" + track + "'");
        }
        if (group == 'm') {
            tokens.label("mesh");
            const std::string mesh = tokens.word();
            if (!meshExists(mesh)) tokens.report("missing mesh '" + mesh + "'");
        }
        if (group == 'S') {
            numbers(tokens, "size", 2);
            tokens.label("spawntype");
            tokens.integer("spawntype");
        }
    }
    for (const char* label : layout.integers) {
        tokens.label(label);
        tokens.integer(label);
    }
    for (const char* label : layout.numbers) {
        tokens.label(label);
        tokens.number(label);
    }
}

struct Reference {
    int line, index;
};

void readIndices(StrictTokens& tokens, std::vector<Reference>& references) {
    const int count = tokens.integer("count");
    for (int i = 0; i < count && !tokens.atEnd(); ++i) {
        const int index = tokens.integer("event index");
        references.push_back({tokens.line(), index});
    }
}

} // namespace

void checkLevelFile(const std::string& file, Findings& findings) {
    StrictTokens tokens(file, findings);
    tokens.number("origin x");
    tokens.number("origin y");
    if (tokens.integer("width") < 0 || tokens.integer("height") < 0) tokens.report("a negative grid size");
    std::set<std::string> missing;
    while (!tokens.atEnd()) {
        const std::string tile = tokens.word();
        if (!meshExists(tile) && missing.insert(tile).second) tokens.report("missing mesh '" + tile + "'");
        for (const char* axis : {"x", "y", "z"})
            tokens.number(axis);
    }
}

void checkEventFile(const std::string& file, Findings& findings) {
    StrictTokens tokens(file, findings);
    std::vector<Reference> references;
    int events = 0, depth = 0;
    while (!tokens.atEnd()) {
        const std::string word = tokens.word();
        if (word == "{") {
            ++depth;
        } else if (word == "}") {
            if (--depth < 0) tokens.report("a '}' too many");
        } else if (word == "triggers" || word == "StartupTriggers") {
            if (word == "triggers" && events == 0) tokens.report("triggers before any event");
            readIndices(tokens, references);
        } else if (word == "param") {
            if (events == 0) tokens.report("param before any event");
            tokens.integer("param");
            tokens.number("param");
        } else if (word == "offset") {
            for (int i = 0; i < 3; ++i)
                tokens.number("offset");
        } else if (word.back() == '{' && eventLayouts().contains(word.substr(0, word.size() - 1))) {
            ++depth;
            ++events;
            checkFields(tokens, eventLayouts().find(word.substr(0, word.size() - 1))->second);
        } else {
            tokens.report("unknown word '" + word + "'");
        }
    }
    if (depth > 0) tokens.report(std::to_string(depth) + " blocks are not closed");
    for (const Reference& reference : references)
        if (reference.index < 0 || reference.index >= events)
            tokens.report(reference.line, "a trigger to event " + std::to_string(reference.index) + " of " +
                                              std::to_string(events));
}

void checkTileDefFile(const std::string& file, Findings& findings) {
    StrictTokens tokens(file, findings);
    const std::string folder = file.substr(0, file.rfind('/') + 1);
    const std::string prefix = folder.substr(std::string_view("units/").size());
    while (!tokens.atEnd()) {
        const std::string name = tokens.word();
        if (!meshExists(prefix + name)) tokens.report("missing mesh '" + prefix + name + "'");
        bool ended = false;
        while (!tokens.atEnd() && !ended) {
            const std::string word = tokens.word();
            if (word == ";") {
                ended = true;
            } else if (word == "size") {
                for (int i = 0; i < 3; ++i)
                    tokens.number("size");
            } else if (word == "type") {
                tokens.integer("type");
            } else if (word != "scaleX" && word != "scaleY") {
                tokens.report("unknown word '" + word + "'");
            }
        }
        if (!ended) tokens.report("entry '" + name + "' has no ';' and is not used");
    }
}
