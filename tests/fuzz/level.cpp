#include "FuzzTarget.h"

#include "world/LevelFile.h"

#include <cmath>

int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    Zelkor::TokenReader reader = tokensOf(data, size);
    const LevelData level = readLevelData(reader);
    fuzzCheck(level.width >= 0 && level.height >= 0);
    fuzzCheck(static_cast<long long>(level.width) * level.height <= maxGridCells);
    for (const TilePlacement& tile : level.tiles)
        for (const float coordinate : {tile.position.x, tile.position.y, tile.position.z})
            fuzzCheck(std::fabs(coordinate) <= worldLimit); // which no NaN is
    return 0;
}
