#include "model/TransformReader.h"

#include "mesh/Noise.h"

#include <cmath>

namespace forge {

using Zelkor::Vec3;

namespace {

// A block with its warp pushed for as long as it lives.
class Pushed {
  public:
    Pushed(Placement& p, WarpPointer warp) : placement(p) { placement.warps.push_back(std::move(warp)); }
    ~Pushed() { placement.warps.pop_back(); }
    Pushed(const Pushed&) = delete;
    Pushed& operator=(const Pushed&) = delete;

  private:
    Placement& placement;
};

int seedOf(const Arguments& args, const Scope& scope) {
    if (args.has("seed")) return args.integer("seed", 0);
    const Value* seed = scope.variable("seed");
    return seed && !seed->tuple.empty() ? static_cast<int>(seed->tuple[0]) : 0;
}

Vec3 jitter(const Vec3& amount, int index, int seed) {
    return {amount.x * (2 * hashUnit(index, seed, 31) - 1), amount.y * (2 * hashUnit(index, seed, 32) - 1),
            amount.z * (2 * hashUnit(index, seed, 33) - 1)};
}

void around(const Statement& statement, Scope& scope, Placement& placement,
            const std::function<void(Scope&)>& body) {
    const Arguments args(statement, scope, "count axis ; arc from as");
    const int count = args.integer("count", 0);
    if (count < 1) args.fail("count", "around needs a count of at least 1");
    const Axis axis = readAxis(args, "axis", Axis::Z);
    const float arc = args.number("arc", 360), from = args.number("from", 0);
    for (int i = 0; i < count; ++i) {
        const float angle = from + arc * static_cast<float>(i) /
                                       static_cast<float>(arc >= 360 ? count : std::max(count - 1, 1));
        const Vec3 degrees{axis == Axis::X ? angle : 0, axis == Axis::Y ? angle : 0,
                           axis == Axis::Z ? angle : 0};
        const Pushed pushed(placement, turnWarp(degrees));
        Scope inner(&scope);
        inner.set(args.name("as", "i"), Value::number(i));
        body(inner);
    }
}

void row(const Statement& statement, Scope& scope, Placement& placement,
         const std::function<void(Scope&)>& body) {
    const Arguments args(statement, scope, "count step ; jitter turn seed as");
    const int count = args.integer("count", 0), seed = seedOf(args, scope);
    if (count < 0 || count > 1000) args.fail("count", "row counts from 0 to 1000");
    const Vec3 step = args.vec3("step");
    for (int i = 0; i < count; ++i) {
        const Pushed moved(placement,
                           moveWarp(step * static_cast<float>(i) + jitter(args.vec3("jitter", {}), i, seed)));
        const Pushed turned(placement, turnWarp(jitter(args.vec3("turn", {}), i, seed + 1)));
        Scope inner(&scope);
        inner.set(args.name("as", "i"), Value::number(i));
        body(inner);
    }
}

WarpPointer singleWarp(const Statement& statement, const Scope& scope) {
    const std::string& keyword = statement.keyword;
    if (keyword == "move") return moveWarp(Arguments(statement, scope, "by").vec3("by"));
    if (keyword == "turn") {
        const Arguments args(statement, scope, "by");
        // One number turns in the picture plane.
        const Value value = args.value("by");
        return turnWarp(value.tuple.size() == 1 ? Vec3{0, 0, args.number("by")} : args.vec3("by"));
    }
    if (keyword == "scale") {
        const Arguments args(statement, scope, "by");
        const Value value = args.value("by");
        const Vec3 factors = value.tuple.size() == 1 ? Vec3{1, 1, 1} * args.number("by") : args.vec3("by");
        if (factors.x == 0 || factors.y == 0 || factors.z == 0)
            args.fail("by", "a scale of 0 leaves nothing");
        return scaleWarp(factors);
    }
    if (keyword == "bend") {
        const Arguments args(statement, scope, "degrees length ; axis towards at");
        const Axis along = readAxis(args, "axis", Axis::Y),
                   towards = readAxis(args, "towards", along == Axis::X ? Axis::Y : Axis::X);
        if (args.number("degrees") == 0 || args.number("length") == 0 || along == towards)
            args.fail("degrees", "bend needs degrees, a length and two different axes");
        return bendWarp(along, towards, args.number("degrees"), args.number("length"));
    }
    if (keyword == "twist" || keyword == "taper") {
        const Arguments args(statement, scope,
                             keyword == "twist" ? "degrees length ; axis at" : "factor length ; axis at");
        if (args.number("length") == 0) args.fail("length", "the length must not be 0");
        const Axis along = readAxis(args, "axis", Axis::Y);
        if (keyword == "twist") return twistWarp(along, args.number("degrees"), args.number("length"));
        if (args.number("factor") <= 0) args.fail("factor", "the factor is above 0");
        return taperWarp(along, args.number("factor"), args.number("length"));
    }
    if (keyword == "wobble") {
        const Arguments args(statement, scope, "amount size ; seed");
        if (args.number("size") <= 0) args.fail("size", "the size is above 0");
        return wobbleWarp(args.number("amount"), args.number("size"), seedOf(args, scope));
    }
    return nullptr;
}

// Where a bend, twist or taper begins.
Vec3 baseOf(const Statement& statement, const Scope& scope) {
    const std::string& k = statement.keyword;
    if (k != "bend" && k != "twist" && k != "taper") return {};
    return Arguments(statement, scope, "degrees length ; axis towards at factor").vec3("at", {});
}

// Runs `body` once for each copy the block makes. False when the statement is no such block.
bool readTransform(const Statement& statement, Scope& scope, Placement& placement,
                   const std::function<void(Scope&)>& body) {
    if (statement.keyword == "around") {
        around(statement, scope, placement, body);
    } else if (statement.keyword == "row") {
        row(statement, scope, placement, body);
    } else if (statement.keyword == "mirror") {
        const Arguments args(statement, scope, "axis ; only?");
        const Axis axis = readAxis(args, "axis", Axis::Z);
        if (!args.flag("only")) {
            Scope inner(&scope);
            body(inner);
        }
        const Pushed pushed(placement, mirrorWarp(axis));
        placement.otherSide = !placement.otherSide;
        Scope inner(&scope);
        body(inner);
        placement.otherSide = !placement.otherSide;
    } else if (const WarpPointer warp = singleWarp(statement, scope)) {
        const Vec3 base = baseOf(statement, scope);
        const Pushed there(placement, moveWarp(base)), pushed(placement, warp),
            back(placement, moveWarp(-base));
        Scope inner(&scope);
        body(inner);
    } else {
        return false;
    }
    return true;
}

} // namespace

Axis readAxis(const Arguments& args, const std::string& name, Axis fallback) {
    if (!args.has(name)) return fallback;
    const std::string axis = args.name(name);
    if (axis == "x") return Axis::X;
    if (axis == "y") return Axis::Y;
    if (axis == "z") return Axis::Z;
    args.fail(name, name + " is x, y or z");
}

Interpreter::Handler placing(Interpreter& interpreter, Placement& placement, Interpreter::Handler others) {
    return [&interpreter, &placement, others](const Statement& statement, Scope& scope) {
        const auto body = [&](Scope& inner) {
            interpreter.run(statement.children, inner, placing(interpreter, placement, others));
        };
        if (!readTransform(statement, scope, placement, body)) others(statement, scope);
    };
}

} // namespace forge
