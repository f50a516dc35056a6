// The way that rail tiles lay out for what runs along them.
#pragma once

#include "math/Math.h"

#include <vector>

class TileGrid;

namespace Zelkor {
class Scene;
class Unit;
} // namespace Zelkor

class RailPath {
  public:
    // Follows the rail tiles (type exactly TileType::rail) from the one nearest to place, at most two cells
    // away, through their eight neighbours, straight on where it can. The path starts at its right end; a closed
    // one at that tile. Without rails it is that one place.
    RailPath(const TileGrid* grid, const Zelkor::Vec3& place);
    ~RailPath();
    RailPath(const RailPath&) = delete;

    float length() const { return lengths_.back(); } // world units
    bool closed() const { return closed_; }
    // Interpolated linearly; a distance beyond the ends gives the end.
    Zelkor::Vec3 at(float distance) const;
    // A piece that finishes the rail, drawn at the start or at the end of the path.
    void showStop(Zelkor::Scene& scene, bool atStart);

  private:
    std::vector<Zelkor::Vec3> points_; // one at least
    std::vector<float> lengths_;       // from the first point to each
    bool closed_ = false;
    struct Stop {
        Zelkor::Scene* scene;
        Zelkor::Unit* unit;
    };
    std::vector<Stop> stops_;
};
