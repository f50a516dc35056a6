// Reads `rig`, `pose` and `clip` blocks. docs/formats/model.md describes them.
#pragma once

#include "model/TransformReader.h"
#include "rig/Clip.h"
#include "text/Interpreter.h"

#include <map>
#include <string>

namespace forge {

// What the blocks of one source build up.
struct RigSource {
    Rig rig;
    Axis mirrorAxis = Axis::Z; // square to the plane between left and right
    std::map<std::string, Pose> poses;
    std::vector<Clip> clips;
};

void readRig(const Statement& statement, Scope& scope, Interpreter& interpreter, RigSource& source);
void readPose(const Statement& statement, Scope& scope, Interpreter& interpreter, RigSource& source);
void readClip(const Statement& statement, Scope& scope, Interpreter& interpreter, RigSource& source);

// The statements of a pose block, applied in order to `pose`. Also used by clips, for poses written in place.
void readPoseStatements(const std::vector<Statement>& statements, Scope& scope, Interpreter& interpreter,
                        const RigSource& source, Pose& pose);
Reach readReach(const Arguments& args, const RigSource& source);
Zelkor::Vec3 readDegrees(const Arguments& args, const std::string& name);
int readJoint(const Arguments& args, const std::string& name, const RigSource& source);
const Pose& findPose(const Arguments& args, const std::string& name, const RigSource& source);

} // namespace forge
