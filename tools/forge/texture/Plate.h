// A square plate of floats that wraps at its edges: what strokes and stains are drawn on.
#pragma once

#include "math/Math.h"
#include "mesh/Noise.h"
#include "texture/Image.h"

#include <vector>

namespace forge {

class Plate {
  public:
    explicit Plate(int side, float value = 0)
        : size(side), texels(static_cast<std::size_t>(side) * static_cast<std::size_t>(side), value) {}

    float& at(int x, int y) {
        return texels[static_cast<std::size_t>(wrapped(y)) * static_cast<std::size_t>(size) +
                      static_cast<std::size_t>(wrapped(x))];
    }
    float at(int x, int y) const { return const_cast<Plate&>(*this).at(x, y); }
    int side() const { return size; }
    std::vector<float>& all() { return texels; }
    const std::vector<float>& all() const { return texels; }

    // 0 is black, 1 white.
    Image grey() const;

  private:
    int wrapped(int i) const {
        i %= size;
        return i < 0 ? i + size : i;
    }
    int size;
    std::vector<float> texels;
};

// One drag of a pencil.
struct Stroke {
    Zelkor::Vec2 start;       // texels
    float angle = 0;          // radians, 0 to the right, growing downwards
    float length = 100;       // texels
    float bend = 0;           // radians the direction changes from end to end
    float halfWidth = 1.2f;   // texels at full pressure
    float unevenness = 0.15f; // how far the pressure wavers
    int seed = 0;
};

// Calls visit(x, y, pressure 0..1) for each texel under the stroke, several times where its dabs overlap.
template <class Visit>
void walkStroke(const Stroke& stroke, const Visit& visit);

// Replaces every texel by its rank among all, in 0..1: as many below any t as t of them all. Equal texels are
// ordered by `tieBreak`, a plate of the same side.
void equaliseByRank(Plate& plate, const Plate& tieBreak);

// Mixes every texel with its neighbours, by `amount` (0..1): strokes get the soft edge graphite has.
void soften(Plate& plate, float amount);

// Noise that wraps: octaves of value noise with `cells` cells a side in the first, in about -1..1.
Plate wrappedNoise(int side, int cells, int octaves, int seed);

} // namespace forge

#include "texture/StrokeWalk.h"
