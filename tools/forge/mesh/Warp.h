// Ways to move points: placements, mirrors and bends. Exact primitives push their corners through `forward`;
// distance shapes pull the asking point back through `inverse`, so both kinds of modelling share them.
#pragma once

#include "math/Math.h"

#include <memory>
#include <vector>

namespace forge {

class Warp {
  public:
    virtual ~Warp() = default;
    virtual Zelkor::Vec3 forward(const Zelkor::Vec3& p) const = 0;
    virtual Zelkor::Vec3 inverse(const Zelkor::Vec3& p) const = 0;
    // A distance measured before the warp, times this, is never larger than the one after it.
    virtual float shrink() const { return 1; }
    virtual bool mirrors() const { return false; }
    // Straight edges do not stay straight: long ones must be split first.
    virtual bool curves() const { return false; }
};

using WarpPointer = std::shared_ptr<const Warp>;
// Outermost first: the last one acts on a point first.
using WarpChain = std::vector<WarpPointer>;

Zelkor::Vec3 forward(const WarpChain& chain, Zelkor::Vec3 p);
Zelkor::Vec3 inverse(const WarpChain& chain, Zelkor::Vec3 p);
float shrink(const WarpChain& chain);
bool mirrors(const WarpChain& chain);
bool curves(const WarpChain& chain);

enum class Axis { X, Y, Z };

WarpPointer moveWarp(const Zelkor::Vec3& offset);
// Degrees; about y first, then x, then z, each about the fixed axes.
WarpPointer turnWarp(const Zelkor::Vec3& degrees);
WarpPointer scaleWarp(const Zelkor::Vec3& factors);
WarpPointer mirrorWarp(Axis axis);
// What stands along `along` from 0 to `length` curves towards `towards`, through `degrees` in all.
WarpPointer bendWarp(Axis along, Axis towards, float degrees, float length);
// Turns about `along`, by `degrees` over `length`.
WarpPointer twistWarp(Axis along, float degrees, float length);
// The cross-section at `length` along `along` is `factor` times that at 0.
WarpPointer taperWarp(Axis along, float factor, float length);
// Moves every point by up to `amount`, smoothly over about `size`.
WarpPointer wobbleWarp(float amount, float size, int seed);

} // namespace forge
