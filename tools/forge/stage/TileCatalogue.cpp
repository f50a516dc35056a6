#include "stage/TileCatalogue.h"

#include <cmath>
#include <fstream>
#include <sstream>

namespace forge {

std::vector<TileKind> readTileKinds(const std::string& text, const std::string& prefix) {
    std::vector<TileKind> kinds;
    std::istringstream words(text);
    for (std::string name; words >> name;) {
        TileKind kind;
        kind.name = prefix + name;
        bool closed = false;
        for (std::string word; !closed && words >> word;) {
            float x = 1, y = 1, z = 1;
            if (word == "size" && words >> x >> y >> z) {
                kind.width = static_cast<int>(std::lround(x));
                kind.height = static_cast<int>(std::lround(y));
            } else if (word == "type") {
                words >> kind.type;
            } else if (word == "scaleX") {
                kind.stretchX = true;
            } else if (word == "scaleY") {
                kind.stretchY = true;
            }
            closed = word == ";";
        }
        if (closed) kinds.push_back(kind);
    }
    return kinds;
}

void TileCatalogue::loadSet(const std::string& set) {
    if (loadedSets[set]) return;
    loadedSets[set] = true;
    std::ifstream file(assets / "units" / set / "tiledef.txt");
    std::stringstream text;
    text << file.rdbuf();
    // The game takes the first definition of a name; so does emplace.
    for (const TileKind& kind : readTileKinds(text.str(), set + "/"))
        kinds.emplace(kind.name, kind);
}

const TileKind* TileCatalogue::find(const std::string& unitName) {
    if (!std::filesystem::exists(assets / "models" / (unitName + ".model"))) return nullptr;
    const std::size_t slash = unitName.rfind('/');
    if (slash != std::string::npos) loadSet(unitName.substr(0, slash));
    TileKind byDefault;
    byDefault.name = unitName;
    return &kinds.emplace(unitName, byDefault).first->second;
}

} // namespace forge
