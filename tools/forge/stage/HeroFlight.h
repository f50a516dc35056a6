// One leap of the hero through a stage, step by step.
#pragma once

#include "stage/Reach.h"

#include <map>

namespace forge {

// A camera area with the zones that lead out of it.
struct AreaExit {
    int direction = 0; // 0 right, 1 left, 2 up, 3 down
    Zelkor::Vec2 min, max;
    int to = -1; // -1: it leads nowhere
};

struct CameraArea {
    Zelkor::Vec2 min, max;
    std::vector<AreaExit> exits;
};

// From where, how, and what the thumb does: how long jump is held, and where the stick points before and
// after turnTime.
struct Leap {
    Zelkor::Vec2 start; // of the feet
    Zelkor::Vec2 speed; // not upwards: he lets go or walks off
    float hold = 0;
    int firstDirection = 0, thenDirection = 0;
    float turnTime = 0;
    float handsFree = 0; // seconds before he can grab a ladder
};

// A ride that the flight meets.
struct Catch {
    int ride = 0, place = 0;
    int area = 0;
    std::size_t steps = 0; // of the path up to there
};

class HeroFlight {
  public:
    // All of them must outlive the flight.
    HeroFlight(const StageGrid& stageGrid, const std::vector<CameraArea>& cameraAreas,
               const std::vector<Ride>& stageRides);

    // To the next landing on the ground. False when the leap ends in death or never ends.
    bool fly(int area, const Leap& leap, Standing& landing);
    // Of the last leap, whatever its end: the feet at every step, and the rides it could have taken.
    const std::vector<Zelkor::Vec2>& path() const { return path_; }
    const std::vector<Catch>& catches() const { return catches_; }

    // Whether he can stand with his feet in that cell.
    bool standable(int column, int row) const;
    // Whether there is room for his body with its feet there, and nothing that kills.
    bool roomFor(const Zelkor::Vec2& place) const { return touch(place) == Touch::None; }
    // The places of rides that hands or feet can take where he is, having been at before.
    void ridesAt(const Zelkor::Vec2& before, const Zelkor::Vec2& now, bool handsFree,
                 std::vector<std::pair<int, int>>& found) const;
    // Where a walk or a flight ends up at that point: the area after passing exits. False when it is death.
    bool keepInArea(Zelkor::Vec2& feet, float& speed, int& area) const;

  private:
    enum class Touch { None, Solid, Deadly };
    Touch touch(const Zelkor::Vec2& feet) const;
    bool moveSideways(float distance);
    bool moveUpDown(float distance);
    bool landOn(float oldY);
    void steer(int direction);
    void accelerate(const Leap& leap, float time, float& hold);
    bool settle(Standing& landing) const;
    void catchRides(const Zelkor::Vec2& before, int area, bool handsFree);
    bool passedThrough(const Zelkor::Vec2& board, float half) const;

    const StageGrid& grid;
    const std::vector<CameraArea>& areas;
    const std::vector<Ride>& rides;
    std::map<std::pair<int, int>, std::vector<std::pair<int, int>>> ridesByCell; // ride and place
    std::vector<Zelkor::Vec2> path_;
    std::vector<Catch> catches_;
    std::vector<std::pair<int, int>> met_;
    Zelkor::Vec2 feet, velocity;
    bool grounded = false;
};

} // namespace forge
