#include "model/PartReader.h"

#include "mesh/Primitives.h"
#include "model/RegionReader.h"

#include <cmath>

namespace forge {

using namespace partreader;
using Zelkor::Vec2;
using Zelkor::Vec3;
using Zelkor::Vec4;

namespace {

constexpr const char* primitiveKeywords =
    "box plank prism cutout lathe cylinder cone sphere torus tube loft plane strip rock";

class SolidPartReader {
  public:
    SolidPartReader(Interpreter& i, const Placement& p, const Model& m, Part& target,
                    const std::vector<int>& b, float smoothDefault)
        : interpreter(i), placement(p), model(m), part(target), bones(b), smooth(smoothDefault) {}

    void read(const std::vector<Statement>& statements, Scope& scope) {
        interpreter.run(statements, scope, handler());
    }

  private:
    Interpreter::Handler handler() {
        return placing(interpreter, placement,
                       [this](const Statement& s, Scope& inner) { statement(s, inner); });
    }

    void statement(const Statement& s, Scope& scope) {
        if (s.keyword == "loft")
            loft(s, scope);
        else if (s.keyword == "cutout")
            cutout(s, scope);
        else
            primitive(s, scope);
    }

    static std::string common(const std::string& own) {
        return own + " ; at turn bone smooth step seed " + mappingWords;
    }

    int seedOf(const Arguments& args, const Scope& scope) {
        // Without a seed of its own each primitive gets the next: neighbours differ, and the same source
        // always gives the same model.
        ++made;
        if (args.has("seed")) return args.integer("seed", 0);
        const Value* seed = scope.variable("seed");
        return made + (seed && !seed->tuple.empty() ? 100 * static_cast<int>(seed->tuple[0]) : 0);
    }

    void finish(const Arguments& args, Surface surface) {
        Piece piece;
        piece.surface = std::move(surface);
        piece.warps = ownPlace(args, placement);
        piece.mapping = readMapping(args, part.mapping);
        piece.bones = readBones(args, placement, model, bones);
        piece.smoothAngle = args.number("smooth", smooth);
        const Vec3 size = boundsOf(piece.surface).size();
        piece.step = args.number("step", std::max(0.2f, Zelkor::length(size) / 8));
        if (piece.step <= 0) args.fail("step", "the step is above 0");
        part.pieces.push_back(std::move(piece));
    }

    void primitive(const Statement& s, Scope& scope) {
        const std::string& keyword = s.keyword;
        const auto with = [&](const std::string& own) { return Arguments(s, scope, common(own)); };
        if (keyword == "box") {
            const Arguments args = with("size bevel");
            finish(args, boxSurface(positive(args, "size"), args.number("bevel", 0)));
        } else if (keyword == "plank") {
            const Arguments args = with("size bevel wobble chip");
            const Vec3 size = positive(args, "size");
            finish(args, plankSurface(size, args.number("bevel", 0), args.number("wobble", 0.06f * size.y),
                                      args.number("chip", 0.25f * size.y),
                                      args.number("step", std::max(2.5f, size.x / 6)), seedOf(args, scope)));
        } else if (keyword == "prism") {
            prism(s, scope);
        } else if (keyword == "lathe") {
            const Arguments args = with("profile sides arc spline? steps");
            std::vector<Vec2> profile = args.points2("profile");
            if (profile.size() < 2) args.fail("profile", "a profile needs two points");
            if (args.flag("spline")) profile = splineThrough(profile, false, args.integer("steps", 4));
            finish(args, latheSurface(profile, sides(args, 12), args.number("arc", 360)));
        } else if (keyword == "cylinder" || keyword == "cone") {
            cylinder(with("r height bevel sides"));
        } else if (keyword == "sphere") {
            const Arguments args = with("r sides");
            const int n = sides(args, 12);
            finish(args, latheSurface(arcProfile(args.number("r"), 0, n / 2, 180, -90), n, 360));
        } else if (keyword == "torus") {
            const Arguments args = with("r sides rings");
            const Vec2 r = args.pair("r", {1, 0.2f});
            std::vector<Vec2> profile = arcProfile(r.y, r.x, sides(args, 6), 360, -180);
            finish(args, latheSurface(profile, args.integer("rings", 16), 360));
        } else if (keyword == "tube") {
            tube(with("path r sides spline? steps closed?"));
        } else if (keyword == "plane") {
            const Arguments args = with("size double?");
            finish(args, planeSurface(args.pair("size", {1, 1}), args.flag("double")));
        } else if (keyword == "strip") {
            const Arguments args = with("left right double?");
            const std::vector<Vec3> left = row3(args, "left"), right = row3(args, "right");
            if (left.size() != right.size() || left.size() < 2)
                args.fail("right", "left and right have equally many points, two or more");
            finish(args, stripSurface(left, right, args.flag("double")));
        } else if (keyword == "rock") {
            const Arguments args = with("size cuts triangles");
            finish(args, rockSurface(positive(args, "size"), args.integer("cuts", 16),
                                     args.integer("triangles", 60), seedOf(args, scope)));
        } else {
            failUnknown(s, std::string(primitiveKeywords) + " " + transformKeywords);
        }
    }

    void prism(const Statement& s, Scope& scope) {
        const Arguments args(s, scope, common("points depth bevel rough spline? steps"));
        Outline outline = args.points2("points");
        if (outline.size() < 3) args.fail("points", "an outline needs three points");
        if (args.flag("spline")) outline = splineThrough(outline, true, args.integer("steps", 4));
        const int seed = seedOf(args, scope);
        if (args.has("rough"))
            outline = roughened(outline, args.number("rough"), args.number("step", 2), seed);
        const Surface surface = prismSurface(outline, args.number("depth"), args.number("bevel", 0));
        if (surface.triangles.empty()) args.fail("points", "this outline crosses itself");
        finish(args, surface);
    }

    // cutout depth= { shapes joined and cut from one another }: sawn out of a board, holes and all.
    void cutout(const Statement& s, Scope& scope) {
        const Arguments args(s, scope, common("depth bevel grow band"));
        Region region = readRegion(s, scope, interpreter).grown(args.number("grow", 0));
        const float band = args.number("band", 0), depth = args.number("depth", 1);
        if (depth <= 0) args.fail("depth", "the depth is above 0");
        if (band > 0) region = region.without(region.grown(-band));
        if (region.empty()) args.fail("grow", "nothing is left of this cutout");
        finish(args, cutoutSurface(region, depth, args.number("bevel", 0)));
    }

    void cylinder(const Arguments& args) {
        const Vec2 r = args.pair("r", {1, 1});
        const float h = args.number("height"), b = args.number("bevel", 0);
        std::vector<Vec2> profile{{0, -h / 2}};
        const auto rim = [&](float radius, float y, float towards) {
            if (b > 0 && radius > b) {
                profile.push_back({radius - (towards > 0 ? b : 0), y + (towards > 0 ? 0 : -b)});
                profile.push_back({radius - (towards > 0 ? 0 : b), y + (towards > 0 ? b : 0)});
            } else {
                profile.push_back({radius, y});
            }
        };
        rim(r.x, -h / 2, 1);
        rim(r.y, h / 2, -1);
        profile.push_back({0, h / 2});
        finish(args, latheSurface(profile, sides(args, 12), 360));
    }

    void tube(const Arguments& args) {
        const float radius = args.number("r", 0.3f);
        std::vector<Vec3> centres, radiusRow;
        for (const std::vector<float>& knot : args.tuples("path", 4, radius)) {
            centres.push_back({knot[0], knot[1], knot[2]});
            radiusRow.push_back({knot[3], 0, 0});
        }
        if (centres.size() < 2) args.fail("path", "a path needs two knots");
        const bool closed = args.flag("closed");
        if (args.flag("spline")) {
            const int steps = args.integer("steps", 4);
            centres = splineThrough(centres, closed, steps);
            radiusRow = splineThrough(radiusRow, closed, steps);
        }
        std::vector<Vec4> knots;
        for (std::size_t i = 0; i < centres.size(); ++i)
            knots.push_back({centres[i].x, centres[i].y, centres[i].z, radiusRow[i].x});
        finish(args, tubeSurface(knots, sides(args, 6), closed));
    }

    // loft { ring y=0 points=[x,z ...] ... }: outlines seen from above, joined upwards.
    void loft(const Statement& s, Scope& scope) {
        const Arguments args(s, scope, common("open?"));
        std::vector<std::vector<Vec3>> rings;
        Scope inner(&scope);
        interpreter.run(s.children, inner, [&](const Statement& ring, Scope& ringScope) {
            if (ring.keyword != "ring") failUnknown(ring, "ring");
            const Arguments ringArgs(ring, ringScope, "points y ; at turn scale");
            Outline points = ringArgs.points2("points");
            makeCounterClockwise(points);
            const Vec3 at = ringArgs.vec3("at", {});
            const Zelkor::Vec2 scale = ringArgs.pair("scale", {1, 1});
            const WarpPointer turn = turnWarp(ringArgs.vec3("turn", {}));
            std::vector<Vec3> result;
            // The outline's y runs away from the viewer, so that counter-clockwise holds seen from above.
            for (const Vec2& p : points)
                result.push_back(turn->forward({p.x * scale.x, 0, -p.y * scale.y}) + at +
                                 Vec3{0, ringArgs.number("y", 0), 0});
            if (!rings.empty() && rings[0].size() != result.size())
                ringArgs.fail("points", "every ring has equally many points");
            rings.push_back(std::move(result));
        });
        if (rings.size() < 2 || rings[0].size() < 3)
            throw SourceError(s.place, "a loft needs two rings of three points");
        finish(args, loftSurface(rings, !args.flag("open")));
    }

    static Vec3 positive(const Arguments& args, const std::string& name) {
        const Vec3 size = args.vec3(name);
        if (size.x <= 0 || size.y <= 0 || size.z <= 0) args.fail(name, name + " is above 0 on every axis");
        return size;
    }

    static int sides(const Arguments& args, int fallback) {
        const int n = args.integer("sides", fallback);
        if (n < 3 || n > 128) args.fail("sides", "sides is 3 to 128");
        return n;
    }

    static std::vector<Vec3> row3(const Arguments& args, const std::string& name) {
        std::vector<Vec3> result;
        for (const std::vector<float>& p : args.tuples(name, 3, 0))
            result.push_back({p[0], p[1], p[2]});
        return result;
    }

    // Part of a circle about (offset, 0), from the lowest point of a half one upwards.
    static std::vector<Vec2> arcProfile(float radius, float offset, int pieces, float arc, float from) {
        std::vector<Vec2> profile;
        for (int i = 0; i <= pieces; ++i) {
            const float angle =
                (from + arc * static_cast<float>(i) / static_cast<float>(pieces)) * Zelkor::pi / 180;
            profile.push_back({offset + radius * std::cos(angle), radius * std::sin(angle)});
        }
        if (offset == 0) profile.front().x = profile.back().x = 0;
        return profile;
    }

    Interpreter& interpreter;
    Placement placement;
    const Model& model;
    Part& part;
    std::vector<int> bones;
    float smooth;
    int made = 0;
};

} // namespace

void readSolidPart(const Statement& statement, Scope& scope, Interpreter& interpreter,
                   const Placement& placement, Model& model) {
    const Arguments args(statement, scope,
                         std::string("name material bone ; soft influences smooth ") + mappingWords);
    Part part = readHead(args, statement, placement, model);
    part.solid = true;
    SolidPartReader reader(interpreter, placement, model, part, readBones(args, placement, model, {}),
                           args.number("smooth", 30));
    Scope inner(&scope);
    reader.read(statement.children, inner);
    if (part.pieces.empty()) throw SourceError(statement.place, "solid " + part.name + " has no primitive");
    model.parts.push_back(std::move(part));
}

} // namespace forge
