// The blocks that place what they hold: move, turn, scale, mirror, bend, twist, taper, wobble, around, row.
#pragma once

#include "mesh/Warp.h"
#include "text/Interpreter.h"

#include <functional>

namespace forge {

// Where the reader stands: the way to the model's space, and whether sides are exchanged.
struct Placement {
    WarpChain warps;
    bool otherSide = false;
};

inline constexpr const char* transformKeywords = "move turn scale mirror bend twist taper wobble around row";

// Runs `body` once for each copy the block makes, with `placement` leading there, and puts it back. False
// when the statement is no such block.
bool readTransform(const Statement& statement, Scope& scope, Placement& placement,
                   const std::function<void(Scope&)>& body);

Axis readAxis(const Arguments& args, const std::string& name, Axis fallback);

} // namespace forge
