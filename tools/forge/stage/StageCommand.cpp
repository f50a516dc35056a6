#include "stage/StageCommand.h"

#include "stage/Reach.h"
#include "stage/StageChecks.h"
#include "stage/StageMap.h"
#include "stage/StageWriter.h"
#include "write/OutputFile.h"

#include <cstdio>
#include <filesystem>

namespace forge {

void compileStage(const StageJob& job) {
    const std::filesystem::path source(job.source);
    TileCatalogue catalogue(job.assets.empty() ? source.parent_path() / ".."
                                               : std::filesystem::path(job.assets));
    const Bytes bytes = readFile(job.source);
    const Stage stage = parseStage(job.source, std::string(bytes.begin(), bytes.end()), catalogue);
    const StageGrid grid(stage);
    checkStage(stage, grid);
    const ReachResult reach = searchReach(stage, grid);
    // Before the verdict: the picture shows where the way is broken.
    if (!job.map.empty()) writePng(job.map, drawStageMap(stage, grid, reach));
    if (!reach.endReached && !stage.unwalked)
        throw SourceError(stage.end, "the hero cannot reach the end: he gets no farther than column " +
                                         std::to_string(reach.farthestColumn));
    const std::string base = (std::filesystem::path(job.outFolder) / stageFileName(stage)).string();
    const std::string level = levelText(stage, grid), events = eventText(stage);
    writeFile(base + ".level", Bytes(level.begin(), level.end()));
    writeFile(base + ".event", Bytes(events.begin(), events.end()));
    std::printf(
        "%s: %d x %d cells, %zu tiles, %zu pieces of scenery, %zu events; end %s, %zu places to stand\n",
        stageFileName(stage).c_str(), grid.width(), grid.height(), stage.tiles.size(), stage.scenery.size(),
        stage.events.size(),
        reach.endReached ? "reached" : "not reached", reach.standings.size());
}

} // namespace forge
