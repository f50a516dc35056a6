#include "stage/StageCommand.h"

#include "stage/Reach.h"
#include "stage/StageChecks.h"
#include "stage/StageMap.h"
#include "stage/StageWriter.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace forge {
namespace {

struct Options {
    std::filesystem::path source, outFolder, assets;
    std::string map;
};

Options readOptions(const std::vector<std::string>& arguments) {
    Options options;
    std::vector<std::string> paths;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const bool named = arguments[i] == "--assets" || arguments[i] == "--map";
        if (!named) {
            paths.push_back(arguments[i]);
            continue;
        }
        if (i + 1 == arguments.size()) throw std::runtime_error(arguments[i] + " needs a path");
        if (arguments[i] == "--map") options.map = arguments[i + 1];
        if (arguments[i] == "--assets") options.assets = arguments[i + 1];
        ++i;
    }
    if (paths.size() != 2)
        throw std::runtime_error("usage: forge stage IN OUT_DIR [--assets DIR] [--map FILE.png]");
    options.source = paths[0];
    options.outFolder = paths[1];
    if (options.assets.empty()) options.assets = options.source.parent_path() / "..";
    return options;
}

std::string readText(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    if (!file) throw std::runtime_error("cannot read " + path.string());
    return text.str();
}

void writeText(const std::filesystem::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
}

} // namespace

void stageCommand(const std::vector<std::string>& arguments) {
    const Options options = readOptions(arguments);
    TileCatalogue catalogue(options.assets);
    const Stage stage = parseStage(options.source.string(), readText(options.source), catalogue);
    const StageGrid grid(stage);
    checkStage(stage, grid);
    const ReachResult reach = searchReach(stage, grid);
    // Before the verdict: the picture shows where the way is broken.
    if (!options.map.empty() && !writePng(drawStageMap(stage, grid, reach), options.map))
        throw std::runtime_error("cannot write " + options.map);
    if (!reach.endReached)
        throw SourceError(stage.end, "the hero cannot reach the end: he gets no farther than column " +
                                         std::to_string(reach.farthestColumn));
    std::filesystem::create_directories(options.outFolder);
    const std::filesystem::path base = options.outFolder / stageFileName(stage);
    writeText(base.string() + ".level", levelText(stage, grid));
    writeText(base.string() + ".event", eventText(stage));
    std::printf(
        "%s: %d x %d cells, %zu tiles, %zu pieces of scenery, %zu events; end reached, %zu places to stand\n",
        stageFileName(stage).c_str(), grid.width(), grid.height(), stage.tiles.size(), stage.scenery.size(),
        stage.events.size(), reach.standings.size());
}

} // namespace forge
