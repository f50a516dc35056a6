// A model as its source describes it, before anything is polygonised.
#pragma once

#include "mesh/Surface.h"
#include "rig/Clip.h"
#include "sdf/Field.h"
#include "text/Place.h"

#include <memory>
#include <string>
#include <vector>

namespace forge {

// World units to one unit of texture coordinates where a model says nothing. One to one: the drawing programs
// know how many units their hatch spans, and a figure's scale.
inline constexpr float unitsPerTexture = 1;

// From a position to texture coordinates.
struct Mapping {
    enum class Projection {
        Front, // x, y
        Side,  // z, y
        Top,   // x, z
        Box,   // the face's dominant axis chooses one of the three
        Local, // the same, in the primitive's own space: grain follows a plank however it lies
    };
    Projection projection = Projection::Front;
    Zelkor::Vec2 offset;      // in textures
    float turn = 0;           // degrees
    Zelkor::Vec2 scale{1, 1}; // above 1: more strokes to the unit
};

// One exact primitive, in its own space, and the way to its place.
struct Piece {
    Surface surface;
    WarpChain warps;
    Mapping mapping;
    std::vector<int> bones;
    float smoothAngle = 30; // degrees up to which neighbouring faces share a normal
    float step = 1;         // longest edge a bend may keep
};

// Drawn with one material and one hull: either a field or pieces.
struct Part {
    std::string name;
    std::string material;
    Place place;
    Field field;
    std::vector<Piece> pieces;
    bool solid = false;
    Mapping mapping;
    float cell = 0;     // polygonising grid, 0: a 64th of the part
    int triangles = 0;  // 0: a share of the model's budget
    float share = 1;    // against other parts of the same area
    float soft = 1;     // how far, in units, bones reach into each other
    int influences = 2; // bones a vertex
};

struct Model {
    std::string name;
    std::string unitFolder; // within the units folder: a mesh names its skeleton by the whole path from there
    std::vector<Part> parts;
    Rig rig;
    std::vector<Clip> clips;
    int triangles = 800; // for all field parts without a number of their own
    float texture = unitsPerTexture;
    float boundsMargin = 0; // the box is grown by this, for poses that reach out
    float yaw = 0;          // degrees about y from the author's space to the game's
};

} // namespace forge
