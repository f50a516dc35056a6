// The fields of event blocks. Each group of numbers stands behind a label, which is read and not checked.
// Coordinates are kept within worldLimit.
#pragma once

#include "math/Math.h"

#include <string>

namespace Zelkor {
class TokenReader;
}

namespace EventFields {

Zelkor::Vec3 position(Zelkor::TokenReader& reader);
// An angle in degrees and an axis.
Zelkor::Quat rotation(Zelkor::TokenReader& reader);
Zelkor::Vec2 pair(Zelkor::TokenReader& reader);
int integer(Zelkor::TokenReader& reader);
float number(Zelkor::TokenReader& reader);
std::string word(Zelkor::TokenReader& reader);

} // namespace EventFields

// A part of the play plane, endless in depth.
struct EventBox {
    explicit EventBox(Zelkor::TokenReader& reader);
    Zelkor::Vec3 min, max; // z -1000 and 1000
};
