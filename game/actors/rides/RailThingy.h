// A mine-cart track: waypoints from left to right, and the pieces of rail laid along them.
#pragma once

#include "actors/Thingy.h"

#include <optional>
#include <vector>

namespace Zelkor {
class Scene;
}
class ThingyManager;

struct RailPlace {
    float height = 0; // world y of the rails
    float tilt = 0;   // radians, positive uphill to the right
};

class RailThingy : public Thingy {
  public:
    explicit RailThingy(Zelkor::Unit& ownUnit);
    ~RailThingy() override;

    int onHit(const Attack&) override { return 0; }
    // Lays the pieces again. In any order.
    void setWaypoints(std::vector<Zelkor::Vec3> points);
    // The rails at a point that is no farther than 5 from the box around the waypoints.
    std::optional<RailPlace> at(const Zelkor::Vec3& point) const;
    // Of all tracks, the one nearest in height.
    static std::optional<RailPlace> find(const ThingyManager& actors, const Zelkor::Vec3& point);

  private:
    float heightAt(float x) const;
    void layPieces();
    void removePieces();

    std::vector<Zelkor::Vec3> points_; // by x
    std::vector<Zelkor::Unit*> pieces_;
};
