// Reads the inside of `part` (distance shapes) and `solid` (exact primitives) blocks into the model. The rig
// must be known by then.
#pragma once

#include "model/Model.h"
#include "model/TransformReader.h"
#include "text/Interpreter.h"

namespace forge {

void readFieldPart(const Statement& statement, Scope& scope, Interpreter& interpreter,
                   const Placement& placement, Model& model);
void readSolidPart(const Statement& statement, Scope& scope, Interpreter& interpreter,
                   const Placement& placement, Model& model);

// What both kinds of part share.
namespace partreader {

inline constexpr const char* mappingWords = "map uv uvturn uvscale";

Mapping readMapping(const Arguments& args, const Mapping& fallback);

// The joints named by `bone=`, exchanged when the placement is; `fallback` without one. Empty without a rig.
std::vector<int> readBones(const Arguments& args, const Placement& placement, const Model& model,
                           const std::vector<int>& fallback);

// A statement's own at= and turn= on top of the placement.
WarpChain ownPlace(const Arguments& args, const Placement& placement);

// The head of either block.
Part readHead(const Arguments& args, const Statement& statement, const Placement& placement,
              const Model& model);

} // namespace partreader

} // namespace forge
