#include "rig/RigReader.h"

#include <algorithm>
#include <cmath>

namespace forge {

using Zelkor::Vec3;

namespace {

constexpr const char* clipKeywords = "key also sway reach only below";
constexpr float sameTime = 1e-4f; // seconds

Easing readEasing(const Arguments& args) {
    Easing easing = Easing::Smooth;
    if (args.has("ease") && !easingNamed(args.name("ease"), easing))
        args.fail("ease", std::string("ease is one of: ") + easingNames);
    return easing;
}

class ClipReader {
  public:
    ClipReader(Interpreter& i, const RigSource& s, Clip& c, const Pose& b, bool h)
        : interpreter(i), source(s), clip(c), base(b), half(h) {}

    void read(const Statement& statement, Scope& scope) {
        interpreter.run(statement.children, scope, [this](const Statement& s, Scope& inner) {
            if (s.keyword == "key")
                key(s, inner);
            else if (s.keyword == "also")
                also(s, inner);
            else if (s.keyword == "sway")
                sway(s, inner);
            else if (s.keyword == "reach")
                held(s, inner);
            else if (s.keyword == "only" || s.keyword == "below")
                allow(s, inner);
            else
                failUnknown(s, clipKeywords);
        });
        if (clip.keys.empty()) clip.keys.push_back({0, base, Easing::Smooth});
        std::stable_sort(clip.keys.begin(), clip.keys.end(),
                         [](const auto& a, const auto& b) { return a.time < b.time; });
        if (half) addOtherHalf();
        if (clip.keys.front().time > sameTime)
            throw SourceError(statement.place, "clip " + clip.name + " has no key at 0");
        if (clip.loop) closeLoop(statement);
    }

  private:
    void key(const Statement& s, Scope& scope) {
        const Arguments args(s, scope, "time pose ; ease mirror?");
        ClipKey result;
        result.time = args.number("time");
        const float latest = half ? clip.length / 2 - sameTime : clip.length;
        if (result.time < 0 || result.time > latest + sameTime)
            args.fail("time", half ? "keys of a half clip lie in its first half"
                                   : "this key lies outside of the clip");
        for (const ClipKey& other : clip.keys)
            if (std::fabs(other.time - result.time) < sameTime)
                args.fail("time", "there is a key at that time already");
        result.pose = args.has("pose") ? findPose(args, "pose", source) : base;
        if (args.flag("mirror")) result.pose = mirrored(source.rig, result.pose, source.mirrorAxis);
        result.easing = readEasing(args);
        Scope inner(&scope);
        readPoseStatements(s.children, inner, interpreter, source, result.pose);
        clip.keys.push_back(std::move(result));
    }

    void also(const Statement& s, Scope& scope) {
        const Arguments args(s, scope, "joint");
        Overlay overlay;
        overlay.joint = readJoint(args, "joint", source);
        Scope inner(&scope);
        interpreter.run(s.children, inner, [&](const Statement& k, Scope& keyScope) {
            if (k.keyword != "key") failUnknown(k, "key");
            const Arguments keyArgs(k, keyScope, "time turn ; ease");
            overlay.keys.push_back(
                {keyArgs.number("time"), readDegrees(keyArgs, "turn"), readEasing(keyArgs)});
            if (overlay.keys.size() > 1 &&
                overlay.keys.back().time <= overlay.keys[overlay.keys.size() - 2].time)
                keyArgs.fail("time", "keys come in the order of their times");
        });
        if (overlay.keys.empty()) throw SourceError(s.place, "also JOINT { key TIME DEGREES ... }");
        clip.overlays.push_back(std::move(overlay));
    }

    void sway(const Statement& s, Scope& scope) {
        const Arguments args(s, scope, "joint turn ; cycles phase");
        Overlay overlay;
        overlay.joint = readJoint(args, "joint", source);
        overlay.sway = readDegrees(args, "turn");
        overlay.cycles = args.number("cycles", 1);
        overlay.phase = args.number("phase", 0);
        if (clip.loop && overlay.cycles != std::floor(overlay.cycles))
            args.fail("cycles", "a loop sways a whole number of cycles");
        clip.overlays.push_back(overlay);
    }

    void held(const Statement& s, Scope& scope) {
        const Arguments args(s, scope, "joint to ; bend turn from until travel fade");
        HeldReach result;
        result.reach = readReach(args, source);
        result.begin = args.number("from", 0);
        result.end = args.number("until", clip.length);
        result.travel = args.vec3("travel", {});
        result.fade = args.number("fade", 0);
        if (result.begin < 0 || result.end <= result.begin || result.end > 2 * clip.length)
            args.fail("until", "a reach begins at 0 or later and ends after it began");
        clip.reaches.push_back(result);
        if (half) clip.reaches.push_back(otherSideLater(result));
    }

    HeldReach otherSideLater(HeldReach held) const {
        const auto flipped = [&](Vec3 v) {
            (source.mirrorAxis == Axis::X ? v.x : source.mirrorAxis == Axis::Y ? v.y : v.z) *= -1;
            return v;
        };
        const int partner =
            source.rig.find(otherSide(source.rig.joints[static_cast<std::size_t>(held.reach.joint)].name));
        if (partner >= 0) held.reach.joint = partner;
        held.reach.target = flipped(held.reach.target);
        held.reach.bend = flipped(held.reach.bend);
        held.travel = flipped(held.travel);
        const Zelkor::Quat q = held.reach.turn;
        const Vec3 axis = flipped({q.x, q.y, q.z});
        held.reach.turn = {q.w, -axis.x, -axis.y, -axis.z};
        held.begin += clip.length / 2;
        held.end += clip.length / 2;
        if (held.begin >= clip.length) {
            held.begin -= clip.length;
            held.end -= clip.length;
        }
        return held;
    }

    // only a.r,b.r: the clip moves no other joints; below a.r: that joint and all it carries.
    void allow(const Statement& s, Scope& scope) {
        const Arguments args(s, scope, "joints");
        if (clip.allowed.empty()) clip.allowed.assign(source.rig.joints.size(), false);
        for (const std::string& name : args.names("joints")) {
            const int joint = source.rig.find(name);
            if (joint < 0) args.fail("joints", "the rig has no joint '" + name + "'");
            clip.allowed[static_cast<std::size_t>(joint)] = true;
        }
        if (s.keyword == "only") return;
        for (std::size_t j = 0; j < source.rig.joints.size(); ++j) {
            const int parent = source.rig.joints[j].parent;
            if (parent >= 0 && clip.allowed[static_cast<std::size_t>(parent)]) clip.allowed[j] = true;
        }
    }

    void addOtherHalf() {
        const std::size_t n = clip.keys.size();
        for (std::size_t i = 0; i < n; ++i) {
            ClipKey later = clip.keys[i];
            later.time += clip.length / 2;
            later.pose = mirrored(source.rig, later.pose, source.mirrorAxis);
            clip.keys.push_back(std::move(later));
        }
    }

    void closeLoop(const Statement& statement) {
        ClipKey& first = clip.keys.front();
        if (clip.keys.back().time < clip.length - sameTime) {
            clip.keys.push_back({clip.length, first.pose, first.easing});
        } else if (clip.keys.size() > 1) {
            first.easing = clip.keys.back().easing; // the same moment, and so the same way there
            const Pose &a = first.pose, &b = clip.keys.back().pose;
            for (std::size_t j = 0; j < a.rotations.size(); ++j)
                if (!(a.rotations[j] == b.rotations[j]) || !(a.offsets[j] == b.offsets[j]))
                    throw SourceError(statement.place, "the loop " + clip.name +
                                                           " ends in another pose than it begins (" +
                                                           source.rig.joints[j].name + ")");
        }
        for (const Overlay& overlay : clip.overlays) {
            if (overlay.keys.empty()) continue;
            const Vec3 apart = overlay.keys.back().degrees - overlay.keys.front().degrees;
            for (const float degrees : {apart.x, apart.y, apart.z})
                if (std::fabs(std::remainder(degrees, 360.0f)) > 0.01f)
                    throw SourceError(statement.place,
                                      "in the loop " + clip.name + " `also " +
                                          source.rig.joints[static_cast<std::size_t>(overlay.joint)].name +
                                          "` ends elsewhere than it begins");
        }
    }

    Interpreter& interpreter;
    const RigSource& source;
    Clip& clip;
    const Pose& base;
    bool half;
};

} // namespace

void readClip(const Statement& statement, Scope& scope, Interpreter& interpreter, RigSource& source) {
    if (source.rig.joints.empty()) throw SourceError(statement.place, "a clip needs a rig before it");
    const Arguments args(statement, scope, "name length ; loop? half? base");
    Clip clip;
    clip.name = args.name("name");
    clip.length = args.number("length");
    clip.loop = args.flag("loop") || args.flag("half");
    if (clip.length <= 0.01f || clip.length > 120) args.fail("length", "a clip is 0.01 to 120 seconds long");
    for (const Clip& other : source.clips)
        if (other.name == clip.name) args.fail("name", "there is a clip '" + clip.name + "' already");
    const Pose base = args.has("base") ? findPose(args, "base", source) : Pose(source.rig);
    Scope inner(&scope);
    ClipReader(interpreter, source, clip, base, args.flag("half")).read(statement, inner);
    source.clips.push_back(std::move(clip));
}

} // namespace forge
