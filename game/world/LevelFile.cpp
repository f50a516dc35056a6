#include "world/LevelFile.h"

#include "io/TokenReader.h"

#include <cmath>
#include <unordered_map>

using namespace Zelkor;

namespace {

Vec3 readVec3(TokenReader& reader) {
    Vec3 v;
    v.x = reader.readFloat();
    v.y = reader.readFloat();
    v.z = reader.readFloat();
    return v;
}

// A long row of digits reads as infinity; the comparison also fails for what is no number.
bool insideWorld(float coordinate) {
    return std::fabs(coordinate) <= worldLimit;
}

bool insideWorld(const Vec3& v) {
    return insideWorld(v.x) && insideWorld(v.y) && insideWorld(v.z);
}

bool sizeAccepted(int width, int height) {
    return width >= 0 && height >= 0 && static_cast<long long>(width) * height <= maxGridCells;
}

// True when the entry was closed.
bool readTileDef(TokenReader& reader, TileDef& def) {
    while (!reader.atEnd()) {
        const std::string word = reader.readWord();
        if (word == ";") return true;
        if (word == "size")
            def.size = clampVec3(readVec3(reader), {0, 0, 0}, {maxTileSize, maxTileSize, maxTileSize});
        else if (word == "scaleX")
            def.stretchX = true;
        else if (word == "scaleY")
            def.stretchY = true;
        else if (word == "type")
            def.type = reader.readInt();
    }
    return false;
}

} // namespace

void readTileDefs(TokenReader& reader, const std::string& prefix, std::vector<TileDef>& defs) {
    while (!reader.atEnd()) {
        TileDef def;
        def.name = prefix + reader.readWord();
        if (readTileDef(reader, def)) defs.push_back(std::move(def));
    }
}

LevelData readLevelData(TokenReader& reader) {
    LevelData level;
    const float originX = reader.readFloat();
    const float originY = reader.readFloat();
    if (insideWorld(originX) && insideWorld(originY)) {
        level.originX = originX;
        level.originY = originY;
    }
    const int width = reader.readInt();
    const int height = reader.readInt();
    if (sizeAccepted(width, height)) {
        level.width = width;
        level.height = height;
    }
    std::unordered_map<std::string, int> indices;
    while (!reader.atEnd()) {
        const std::string name = reader.readWord();
        const Vec3 position = readVec3(reader);
        if (reader.atEnd()) break;
        if (!insideWorld(position)) continue;
        const auto [known, isNew] = indices.try_emplace(name, static_cast<int>(level.names.size()));
        if (isNew) level.names.push_back(name);
        level.tiles.push_back({known->second, position});
    }
    return level;
}
