#include "stage/StageWriter.h"

#include "stage/EventKinds.h"

#include <cstdio>

namespace forge {
namespace {

std::string tileLine(const StageTile& tile) {
    return tile.kind->name + " " + plainNumber(tile.position.x) + " " + plainNumber(tile.position.y) + " " +
           plainNumber(tile.position.z) + "\n";
}

std::string indexList(const Stage& stage, const std::string& keyword,
                      const std::vector<NamedTarget>& targets) {
    std::string out = keyword + " " + std::to_string(targets.size()) + " ";
    for (const NamedTarget& target : targets)
        out += std::to_string(stage.eventIndex(target.name)) + " ";
    return out;
}

std::string eventLine(const Stage& stage, const StageEvent& event) {
    std::string line = event.keyword + "{ " + event.fields + " ";
    if (!event.triggers.empty()) line += indexList(stage, "triggers", event.triggers);
    for (const auto& [number, value] : event.params)
        line += "param " + std::to_string(number) + " " + plainNumber(value) + " ";
    return line + "}\n";
}

} // namespace

std::string stageFileName(const Stage& stage) {
    if (!stage.fileName.empty()) return stage.fileName;
    char name[32];
    std::snprintf(name, sizeof name, "level%03d", stage.number);
    return name;
}

std::string levelText(const Stage& stage, const StageGrid& grid) {
    std::string text = plainNumber(grid.columnX(grid.firstColumn())) + " " +
                       plainNumber(grid.rowY(grid.firstRow())) + " " + std::to_string(grid.width()) + " " +
                       std::to_string(grid.height()) + "\n";
    for (const StageTile& tile : stage.tiles)
        text += tileLine(tile);
    for (const StageTile& tile : stage.scenery)
        text += tileLine(tile);
    // The game drops an entry whose last number touches the end of the file.
    return text + "\n";
}

std::string eventText(const Stage& stage) {
    std::string text = "{\n";
    for (const StageEvent& event : stage.events)
        text += eventLine(stage, event);
    return text + indexList(stage, "StartupTriggers", stage.startup) + "\n}\n";
}

} // namespace forge
