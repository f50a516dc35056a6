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

// Takes such blocks, however deep: runs what they hold once for each copy they make, with `placement` leading
// there, and puts it back. Every other statement goes to `others`. Both references outlive the handler.
Interpreter::Handler placing(Interpreter& interpreter, Placement& placement, Interpreter::Handler others);

Axis readAxis(const Arguments& args, const std::string& name, Axis fallback);

} // namespace forge
