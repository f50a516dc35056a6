#include "stage/StageChecks.h"

#include <algorithm>

namespace forge {
namespace {

void checkTargets(const Stage& stage, const std::vector<NamedTarget>& targets) {
    for (const NamedTarget& target : targets)
        if (stage.eventIndex(target.name) < 0)
            throw SourceError(target.place, "there is no event '" + target.name + "'");
}

// Those that act without being set off: level objects exist from the start.
bool startsItself(const StageEvent& event) {
    return event.keyword == "Thingy";
}

void checkSetOff(const Stage& stage) {
    std::vector<bool> setOff(stage.events.size());
    const auto mark = [&](const std::vector<NamedTarget>& targets) {
        for (const NamedTarget& target : targets)
            setOff[static_cast<std::size_t>(stage.eventIndex(target.name))] = true;
    };
    mark(stage.startup);
    for (const StageEvent& event : stage.events)
        mark(event.triggers);
    for (std::size_t i = 0; i < setOff.size(); ++i)
        if (!setOff[i] && !startsItself(stage.events[i]))
            throw SourceError(stage.events[i].place, "nothing sets off '" + stage.events[i].name + "'");
}

// Cells a newcomer of that height fills, from the floor he stands on.
void checkRoom(const StageEvent& event, const StageGrid& grid, int cellsHigh) {
    const int column = grid.columnOf(event.at->x);
    const int row = grid.rowOf(event.at->y + 1);
    for (int r = row; r < row + cellsHigh; ++r)
        if (grid.solid(column, r))
            throw SourceError(event.place, "'" + event.name + "' stands inside solid cells");
}

void checkRooms(const Stage& stage, const StageGrid& grid) {
    for (const StageEvent& event : stage.events) {
        if (event.keyword == "SpawnPlayer") checkRoom(event, grid, 2);
        if (event.keyword == "SpawnEnemy" && event.at->z == 0) checkRoom(event, grid, 1);
    }
}

bool has(const Stage& stage, const std::string& keyword) {
    return std::any_of(stage.events.begin(), stage.events.end(),
                       [&](const StageEvent& event) { return event.keyword == keyword; });
}

// He walks in, or is there in flight as soon as the stage starts.
bool hasHero(const Stage& stage) {
    const bool flies = std::any_of(stage.startup.begin(), stage.startup.end(), [&](const NamedTarget& target) {
        const StageEvent& event = stage.events[static_cast<std::size_t>(stage.eventIndex(target.name))];
        return event.keyword == "SpawnThingy" && event.actor == "PlayerRocket";
    });
    return flies || has(stage, "SpawnPlayer");
}

} // namespace

void checkStage(const Stage& stage, const StageGrid& grid) {
    checkTargets(stage, stage.startup);
    for (const StageEvent& event : stage.events)
        checkTargets(stage, event.triggers);
    if (!hasHero(stage))
        throw SourceError(stage.end, "the stage has no hero (SpawnPlayer, or a PlayerRocket that the start sets off)");
    if (!has(stage, "CameraBounds")) throw SourceError(stage.end, "the stage has no camera area");
    const std::vector<bool> ending = eventsLeadingToEnd(stage);
    if (std::find(ending.begin(), ending.end(), true) == ending.end())
        throw SourceError(stage.end, "the stage has no end (OpenMenu menu=8)");
    checkSetOff(stage);
    checkRooms(stage, grid);
}

std::vector<bool> eventsLeadingToEnd(const Stage& stage) {
    std::vector<bool> leads(stage.events.size());
    for (bool grown = true; grown;) {
        grown = false;
        for (std::size_t i = 0; i < leads.size(); ++i) {
            const StageEvent& event = stage.events[i];
            bool reaches = event.keyword == "OpenMenu" && event.number == stageClearMenu;
            for (const NamedTarget& target : event.triggers) {
                const int index = stage.eventIndex(target.name);
                reaches = reaches || (index >= 0 && leads[static_cast<std::size_t>(index)]);
            }
            if (reaches && !leads[i]) leads[i] = grown = true;
        }
    }
    return leads;
}

} // namespace forge
