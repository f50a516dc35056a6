// The rails of mine carts, and where a cart gets to that leaves them.
#pragma once

#include "stage/Stage.h"
#include "stage/StageGrid.h"

#include <optional>
#include <vector>

namespace forge {

namespace cart {
inline constexpr float speed = 100, slopeSpeed = 30; // units per second; lost up an upright rail
inline constexpr float floorHeight = 4;              // of a rider's feet above the rails
inline constexpr float halfWidth = 10;               // within which one lands in it
inline constexpr float wallAhead = 16, wallAbove = 6;
} // namespace cart

struct CartTrack {
    std::vector<Zelkor::Vec2> points; // from left to right

    // Of the rails; nothing before their beginning and after their end.
    std::optional<float> heightAt(float x) const;
    float slopeAt(float x) const; // radians
};

// A track for each chain of Rail events.
std::vector<CartTrack> collectTracks(const Stage& stage);

struct CartLanding {
    Zelkor::Vec2 place; // of the cart, on its rails or before a wall
    bool wall = false;
};

// From a place on rails through the air to the next rails or to a wall; hold: seconds for which the rider
// holds his jump, below 0 where the cart just rolls off. Nothing when it falls below lowest.
std::optional<CartLanding> flyCart(const std::vector<CartTrack>& tracks, const StageGrid& grid,
                                   Zelkor::Vec2 from, float slope, float hold, float lowest,
                                   std::vector<Zelkor::Vec2>& path);

// Whether a wall stops a cart there.
bool wallStopsCart(const StageGrid& grid, const Zelkor::Vec2& place);

} // namespace forge
