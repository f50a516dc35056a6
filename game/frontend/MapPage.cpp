#include "frontend/MapPage.h"

using Zelkor::Vec2;

namespace {

constexpr float arrowAside = 20; // from the first and the last stage
constexpr Vec2 corners[MapPage::pages][MapPage::stages] = {
    {{25, 40}, {55, 40}, {60, 15}, {80, 25}, {100, 40}},
    {{25, 35}, {45, 50}, {60, 20}, {80, 40}, {100, 40}},
    {{25, 40}, {50, 30}, {67, 38}, {80, 25}, {100, 25}},
    {{25, 48}, {55, 40}, {65, 20}, {85, 10}, {105, 15}},
};

} // namespace

std::vector<MapItem> MapPage::items(int page, int unlockedStage) {
    const auto& places = corners[page];
    const int first = page * stages, next = first + stages;
    std::vector<MapItem> way;
    if (page > 0)
        way.push_back({MapItem::Kind::previousPage, first - 1, {places[0].x - arrowAside, places[0].y}});
    for (int i = 0; i < stages; ++i)
        way.push_back({MapItem::Kind::stage, first + i, places[i]});
    const Vec2 last = places[stages - 1];
    if (page + 1 < pages && next <= unlockedStage)
        way.push_back({MapItem::Kind::nextPage, next, {last.x + arrowAside, last.y}});
    return way;
}

const char* MapPage::icon(int stage, int unlockedStage, int clearedMask) {
    if (clearedMask & (1 << stage)) return "cleared";
    if (stage > unlockedStage) return "locked";
    return stage % stages == stages - 1 ? "fifth" : "open";
}

std::string MapPage::picture(int page) {
    return "maps/map" + std::to_string(page + 1);
}
