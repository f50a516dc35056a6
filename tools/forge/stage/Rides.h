// What carries the hero besides the ground: ladders, platforms and carts, at places that they are sure to
// pass.
#pragma once

#include "stage/CartTrack.h"
#include "stage/Stage.h"
#include "stage/StageGrid.h"

#include <optional>
#include <utility>
#include <vector>

namespace forge {

struct Ride {
    enum class Hold { Board, Rungs, Cart };

    Hold hold = Hold::Board;
    std::vector<Zelkor::Vec2> places;       // of the feet
    std::vector<std::pair<int, int>> ways;  // from place to place, one way each
    float half = 10;                        // how far a board reaches to both sides of the feet's place
    float jumpSpeed = 85;                   // that a jump from it begins with
    int boardAt = -1;                       // the only place where a cart is boarded
    std::optional<std::pair<int, int>> top; // the cell on which one stands at the top of a ladder of tiles

    // A line of places that is passed both ways.
    void addLine(const std::vector<Zelkor::Vec2>& line, bool closed = false);
};

// The ladders first. Platforms fill no cell: whether a place is free is for the search to say.
std::vector<Ride> collectRides(const Stage& stage, const StageGrid& grid,
                               const std::vector<CartTrack>& tracks);

} // namespace forge
