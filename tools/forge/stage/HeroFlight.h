// One leap of the hero through a stage, step by step.
#pragma once

#include "stage/Reach.h"

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

// What the thumb does: how long jump is held, and where the stick points before and after turnTime.
struct Leap {
    float startX = 0, startSpeed = 0;
    bool jumps = true;
    float hold = 0;
    int firstDirection = 0, thenDirection = 0;
    float turnTime = 0;
};

class HeroFlight {
  public:
    HeroFlight(const StageGrid& stageGrid, const std::vector<CameraArea>& cameraAreas)
        : grid(stageGrid), areas(cameraAreas) {}

    // From standing in a cell to the next landing. False when the leap ends in death or never ends. path, if
    // given, receives the feet at every step.
    bool fly(const Standing& from, const Leap& leap, Standing& landing,
             std::vector<Zelkor::Vec2>* path = nullptr);

    // Whether he can stand with his feet in that cell.
    bool standable(int column, int row) const;
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

    const StageGrid& grid;
    const std::vector<CameraArea>& areas;
    Zelkor::Vec2 feet, velocity;
    bool grounded = false;
};

} // namespace forge
