#include "rig/RigReader.h"

#include "mesh/Angles.h"

namespace forge {

using Zelkor::Vec3;

namespace {

class JointReader {
  public:
    JointReader(Interpreter& i, RigSource& s) : interpreter(i), source(s) {}

    void read(const std::vector<Statement>& statements, Scope& scope) {
        interpreter.run(statements, scope,
                        placing(interpreter, placement,
                                [this](const Statement& s, Scope& inner) { statement(s, inner); }));
    }

  private:
    void statement(const Statement& s, Scope& scope) {
        if (s.keyword != "joint") failUnknown(s, std::string("joint ") + transformKeywords);
        const Arguments args(s, scope, "name at ; called path tail axes bend");
        Joint joint;
        joint.name = sided(args.name("name"));
        if (source.rig.find(joint.name) >= 0)
            args.fail("name", "there is a joint '" + joint.name + "' already");
        joint.parent = parent;
        joint.position = forward(placement.warps, args.vec3("at"));
        std::string called = args.name("called", args.name("name"));
        if (placement.otherSide) called = otherSideOfPath(called);
        joint.path =
            parent < 0 ? called : source.rig.joints[static_cast<std::size_t>(parent)].path + "|" + called;
        if (args.has("path"))
            joint.path = placement.otherSide ? otherSideOfPath(args.name("path")) : args.name("path");
        for (const Joint& other : source.rig.joints)
            if (other.path == joint.path)
                args.fail("name", "the path " + joint.path + " is " + other.name + "'s already");
        joint.axes = quatFromDegrees(args.vec3("axes", {}));
        joint.bend = direction(args.vec3("bend", {1, 0, 0}));
        const bool ended = args.has("tail");
        if (ended) joint.tail = forward(placement.warps, args.vec3("tail"));
        const int index = static_cast<int>(source.rig.joints.size());
        source.rig.joints.push_back(joint);

        const int outer = parent;
        parent = index;
        Scope inner(&scope);
        read(s.children, inner);
        parent = outer;
        if (!ended) source.rig.joints[static_cast<std::size_t>(index)].tail = ownTail(index);
    }

    // A bone ends at its first child; a last one goes on half as far as the one before it.
    Vec3 ownTail(int index) const {
        const Joint& joint = source.rig.joints[static_cast<std::size_t>(index)];
        for (const Joint& other : source.rig.joints)
            if (other.parent == index) return other.position;
        if (joint.parent < 0) return joint.position;
        return joint.position +
               (joint.position - source.rig.joints[static_cast<std::size_t>(joint.parent)].position) * 0.5f;
    }

    std::string sided(const std::string& name) const { return placement.otherSide ? otherSide(name) : name; }
    Vec3 direction(const Vec3& d) const {
        return forward(placement.warps, d) - forward(placement.warps, Vec3{});
    }

    Interpreter& interpreter;
    RigSource& source;
    Placement placement;
    int parent = -1;
};

} // namespace

void readRig(const Statement& statement, Scope& scope, Interpreter& interpreter, RigSource& source) {
    if (!source.rig.joints.empty()) throw SourceError(statement.place, "a model has one rig");
    const Arguments args(statement, scope, "; mirror");
    source.mirrorAxis = readAxis(args, "mirror", Axis::Z);
    Scope inner(&scope);
    JointReader(interpreter, source).read(statement.children, inner);
    if (source.rig.joints.empty()) throw SourceError(statement.place, "the rig has no joint");
}

Vec3 readDegrees(const Arguments& args, const std::string& name) {
    if (!args.has(name)) return {};
    // One number swings in the picture.
    return args.value(name).tuple.size() == 1 ? Vec3{0, 0, args.number(name)} : args.vec3(name);
}

int readJoint(const Arguments& args, const std::string& name, const RigSource& source) {
    const int joint = source.rig.find(args.name(name));
    if (joint < 0) args.fail(name, "the rig has no joint '" + args.name(name) + "'");
    return joint;
}

const Pose& findPose(const Arguments& args, const std::string& name, const RigSource& source) {
    const auto found = source.poses.find(args.name(name));
    if (found == source.poses.end()) args.fail(name, "there is no pose '" + args.name(name) + "' yet");
    return found->second;
}

Reach readReach(const Arguments& args, const RigSource& source) {
    Reach reach;
    reach.joint = readJoint(args, "joint", source);
    const int middle = source.rig.joints[static_cast<std::size_t>(reach.joint)].parent;
    if (middle < 0 || source.rig.joints[static_cast<std::size_t>(middle)].parent < 0)
        args.fail("joint", "a joint that reaches has a parent and a grandparent to fold");
    reach.target = args.vec3("to");
    reach.bend = args.vec3("bend", {});
    reach.turned = args.has("turn");
    if (reach.turned) reach.turn = quatFromDegrees(readDegrees(args, "turn"));
    return reach;
}

void readPoseStatements(const std::vector<Statement>& statements, Scope& scope, Interpreter& interpreter,
                        const RigSource& source, Pose& pose) {
    interpreter.run(statements, scope, [&](const Statement& s, Scope& inner) {
        if (s.keyword == "reach") {
            reach(source.rig, pose, readReach(Arguments(s, inner, "joint to ; bend turn"), source));
            return;
        }
        const int joint = source.rig.find(evaluateName({s.place, s.keyword}, inner));
        if (joint < 0) failUnknown(s, "reach, and the rig's joints");
        const auto j = static_cast<std::size_t>(joint);
        const Arguments args(s, inner, "turn ; by move");
        if (args.has("turn")) pose.rotations[j] = quatFromDegrees(readDegrees(args, "turn"));
        if (args.has("by")) pose.rotations[j] = pose.rotations[j] * quatFromDegrees(readDegrees(args, "by"));
        if (args.has("move")) pose.offsets[j] = args.vec3("move");
        pose.touched[j] = true;
    });
}

void readPose(const Statement& statement, Scope& scope, Interpreter& interpreter, RigSource& source) {
    if (source.rig.joints.empty()) throw SourceError(statement.place, "a pose needs a rig before it");
    const Arguments args(statement, scope, "name ; from mirror");
    Pose pose(source.rig);
    if (args.has("from")) pose = findPose(args, "from", source);
    if (args.has("mirror")) pose = mirrored(source.rig, findPose(args, "mirror", source), source.mirrorAxis);
    Scope inner(&scope);
    readPoseStatements(statement.children, inner, interpreter, source, pose);
    if (!source.poses.emplace(args.name("name"), pose).second)
        args.fail("name", "there is a pose '" + args.name("name") + "' already");
}

} // namespace forge
