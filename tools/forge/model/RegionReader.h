// Reads what stands in a `cutout { ... }`: flat shapes joined and cut from one another. docs/formats/model.md
// describes them.
#pragma once

#include "mesh/Region.h"
#include "text/Interpreter.h"

namespace forge {

inline constexpr const char* flatShapeKeywords = "shape disc stroke letters cut keep";

// Throws SourceError, also when nothing is left.
Region readRegion(const Statement& block, Scope& scope, Interpreter& interpreter);

} // namespace forge
