// A unit on show: placed as the game places it, holding what it holds, posed at a moment of a clip.
#pragma once

#include "math/Math.h"

#include <string>
#include <vector>

namespace Zelkor {
class Scene;
class Unit;
} // namespace Zelkor

namespace viewer {

struct ExhibitOptions {
    std::string unit;
    float scale = 0; // of the unit; 0: as the game draws it, figures larger than things
    float yaw = 0;   // degrees about the vertical axis
    // "UNIT@JOINT": a unit drawn at the first joint whose path ends with JOINT.
    std::vector<std::string> held;
};

class Exhibit {
  public:
    // The scene owns the units.
    Exhibit(Zelkor::Scene& scene, const ExhibitOptions& options);

    // False when the mesh is missing or empty.
    bool drawable() const;
    std::vector<std::string> clips() const;
    // Seconds; 0 for a clip that is not there.
    float length(const std::string& clip) const;
    // Plays only this clip, from there. False when there is none of that name.
    bool play(const std::string& clip, float seconds);
    // Poses the unit by the time passed on the timer "main" and brings what it holds along. Once a frame.
    void update();
    void turn(float yaw, float pitch);
    void show(bool visible);
    // Everything black, where the renderer draws without programs.
    void blacken();

    Zelkor::Vec3 centre() const; // in the world, at rest
    float radius() const;

  private:
    struct Held {
        Zelkor::Unit* unit;
        int joint;
    };
    void hold(Zelkor::Scene& scene, const std::string& description);

    Zelkor::Unit* unit_;
    std::vector<Held> held_;
};

} // namespace viewer
