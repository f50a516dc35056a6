#pragma once

#include "math/Math.h"

namespace forge {

// How dark pencil strokes make a point of that texture coordinate under a tone (1 is white paper): 0..1.
float strokeInk(const Zelkor::Vec2& uv, float tone);

} // namespace forge
