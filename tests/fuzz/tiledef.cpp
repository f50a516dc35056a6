#include "FuzzTarget.h"

#include "world/LevelFile.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    Zelkor::TokenReader reader = tokensOf(data, size);
    std::vector<TileDef> defs;
    readTileDefs(reader, "tiles/", defs);
    fuzzCheck(defs.size() <= size);
    for (const TileDef& def : defs)
        for (const float cells : {def.size.x, def.size.y, def.size.z})
            fuzzCheck(cells >= 0 && cells <= maxTileSize);
    return 0;
}
