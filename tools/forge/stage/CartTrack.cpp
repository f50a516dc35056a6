#include "stage/CartTrack.h"

#include "stage/HeroNumbers.h"

#include <algorithm>
#include <cmath>

namespace forge {
namespace {

constexpr float catchBelow = 4; // a falling cart is caught this far below the rails

const StageEvent* nextRail(const Stage& stage, const StageEvent& rail) {
    for (const NamedTarget& target : rail.triggers)
        if (const int i = stage.eventIndex(target.name); i >= 0)
            if (const StageEvent& next = stage.events[static_cast<std::size_t>(i)]; next.keyword == "Rail")
                return &next;
    return nullptr;
}

} // namespace

std::optional<float> CartTrack::heightAt(float x) const {
    for (std::size_t i = 1; i < points.size(); ++i) {
        const Zelkor::Vec2 &from = points[i - 1], &to = points[i];
        if (x < from.x || x > to.x || to.x <= from.x) continue;
        return from.y + (to.y - from.y) * (x - from.x) / (to.x - from.x);
    }
    return std::nullopt;
}

float CartTrack::slopeAt(float x) const {
    constexpr float halfBase = 5;
    const float left = std::max(x - halfBase, points.front().x),
                right = std::min(x + halfBase, points.back().x);
    const auto a = heightAt(left), b = heightAt(right);
    return a && b && right > left ? std::atan2(*b - *a, right - left) : 0;
}

std::vector<CartTrack> collectTracks(const Stage& stage) {
    std::vector<const StageEvent*> followers;
    for (const StageEvent& event : stage.events)
        if (event.keyword == "Rail") followers.push_back(nextRail(stage, event));
    std::vector<CartTrack> tracks;
    for (const StageEvent& first : stage.events) {
        if (first.keyword != "Rail") continue;
        if (std::find(followers.begin(), followers.end(), &first) != followers.end()) continue;
        CartTrack track;
        for (const StageEvent* rail = &first; rail && track.points.size() <= stage.events.size();
             rail = nextRail(stage, *rail))
            track.points.push_back({rail->at->x, rail->at->y});
        std::stable_sort(track.points.begin(), track.points.end(),
                         [](const Zelkor::Vec2& a, const Zelkor::Vec2& b) { return a.x < b.x; });
        tracks.push_back(std::move(track));
    }
    return tracks;
}

bool wallStopsCart(const StageGrid& grid, const Zelkor::Vec2& place) {
    return grid.solid(grid.columnOf(place.x + cart::wallAhead), grid.rowOf(place.y + cart::wallAbove));
}

std::optional<CartLanding> flyCart(const std::vector<CartTrack>& tracks, const StageGrid& grid,
                                   Zelkor::Vec2 from, float slope, float hold, float lowest,
                                   std::vector<Zelkor::Vec2>& path) {
    const float along = cart::speed - cart::slopeSpeed * std::sin(slope);
    Zelkor::Vec2 speed{along, hold < 0 ? along * std::sin(slope) : hero::jumpSpeed};
    path.clear();
    while (from.y > lowest) {
        path.push_back({from.x, from.y + cart::floorHeight});
        const bool held = hold > 0 && speed.y > 0;
        hold = held ? hold - hero::timeStep : 0;
        speed.y = std::max(speed.y - (hold > 0 ? hero::heldGravity : hero::gravity) * hero::timeStep,
                           -hero::fallSpeed);
        speed.x = Zelkor::moveTowards(speed.x, cart::speed, cart::speed * hero::timeStep);
        const float before = from.y;
        from = {from.x + speed.x * hero::timeStep, from.y + speed.y * hero::timeStep};
        if (wallStopsCart(grid, from)) return CartLanding{from, true};
        for (const CartTrack& track : tracks) {
            const auto rails = track.heightAt(from.x);
            if (speed.y <= 0 && rails && from.y <= *rails && before >= *rails - catchBelow)
                return CartLanding{{from.x, *rails}, false};
        }
    }
    return std::nullopt;
}

} // namespace forge
