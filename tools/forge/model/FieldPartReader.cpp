#include "model/PartReader.h"

namespace forge {

using namespace partreader;
using Zelkor::Vec2;
using Zelkor::Vec3;

namespace {

constexpr const char* shapeKeywords =
    "capsule ellipsoid sphere box cylinder cone torus extrude lathe tube plane group cut keep";

class FieldPartReader {
  public:
    FieldPartReader(Interpreter& i, const Placement& p, const Model& m, const std::vector<int>& b,
                    float blendDefault)
        : interpreter(i), placement(p), model(m), bones(b), blend(blendDefault) {}

    Field read(const std::vector<Statement>& statements, Scope& scope) {
        Field result;
        field = &result;
        interpreter.run(statements, scope, handler());
        return result;
    }

  private:
    Interpreter::Handler handler() {
        return placing(interpreter, placement,
                       [this](const Statement& s, Scope& inner) { statement(s, inner); });
    }

    void statement(const Statement& s, Scope& scope) {
        if (s.keyword == "cut" || s.keyword == "keep") {
            operated(s, scope);
        } else if (s.keyword == "group") {
            group(s, scope);
        } else {
            shape(s, scope);
        }
    }

    // `cut sphere ...` or `cut { ... }`.
    void operated(const Statement& s, Scope& scope) {
        const Field::Operation before = operation;
        operation = s.keyword == "cut" ? Field::Operation::Cut : Field::Operation::Keep;
        if (s.hasBlock) {
            Scope inner(&scope);
            interpreter.run(s.children, inner, handler());
        } else {
            shape(afterKeyword(s), scope);
        }
        operation = before;
    }

    // Put together by itself first, then joined to the rest as one shape.
    void group(const Statement& s, Scope& scope) {
        const Arguments args(s, scope, "; bone blend grow at turn inner");
        Field::Step step = stepOf(args);
        Placement inside;
        inside.otherSide = placement.otherSide;
        FieldPartReader reader(interpreter, inside, model, step.bones, args.number("inner", blend));
        Scope inner(&scope);
        step.group = std::make_unique<const Field>(reader.read(s.children, inner));
        if (step.group->empty()) throw SourceError(s.place, "this group is empty");
        field->add(std::move(step));
    }

    Field::Step stepOf(const Arguments& args) const {
        Field::Step step;
        step.operation = operation;
        step.blend = args.number("blend", blend);
        step.grow = args.number("grow", 0);
        step.bones = readBones(args, placement, model, bones);
        step.warps = ownPlace(args, placement);
        return step;
    }

    void shape(const Statement& s, Scope& scope) {
        const std::string& keyword = s.keyword;
        const std::string common = " ; bone blend grow turn round spline? at axis steps";
        const auto with = [&](const std::string& own) { return Arguments(s, scope, own + common); };
        const auto finish = [&](const Arguments& args, ShapePointer made) {
            Field::Step step = stepOf(args);
            step.shape = std::move(made);
            if (field->empty() && step.operation != Field::Operation::Add)
                throw SourceError(s.place, "there is nothing yet to cut or keep");
            field->add(std::move(step));
        };
        if (keyword == "capsule") {
            const Arguments args = with("from to r");
            const Vec2 r = radii(args);
            finish(args, capsuleShape(args.vec3("from"), args.vec3("to"), r.x, r.y));
        } else if (keyword == "cylinder" || keyword == "cone") {
            const Arguments args = with("from to r");
            const Vec2 r = args.pair("r", {1, 1});
            if (Zelkor::distance(args.vec3("from"), args.vec3("to")) < 1e-4f)
                args.fail("to", "from and to are the same");
            finish(args, coneShape(args.vec3("from"), args.vec3("to"), r.x, r.y, args.number("round", 0)));
        } else if (keyword == "ellipsoid" || keyword == "sphere") {
            const Arguments args = with("at r");
            const Vec3 r =
                args.value("r").tuple.size() == 1 ? Vec3{1, 1, 1} * args.number("r") : args.vec3("r");
            if (r.x <= 0 || r.y <= 0 || r.z <= 0) args.fail("r", "radii are above 0");
            finish(args, ellipsoidShape({}, r));
        } else if (keyword == "box") {
            const Arguments args = with("at size");
            finish(args, boxShape({}, args.vec3("size"), args.number("round", 0)));
        } else if (keyword == "torus") {
            const Arguments args = with("at r");
            const Vec2 r = args.pair("r", {1, 0.2f});
            finish(args, torusShape({}, r.x, r.y, readAxis(args, "axis", Axis::Y)));
        } else if (keyword == "extrude") {
            const Arguments args = with("points depth");
            finish(args, extrusionShape(outline(args), args.number("depth"), args.number("round", 0)));
        } else if (keyword == "lathe") {
            const Arguments args = with("points");
            finish(args, latheShape(outline(args), args.number("round", 0)));
        } else if (keyword == "tube") {
            tube(with("path"), finish);
        } else if (keyword == "plane") {
            const Arguments args = with("at normal");
            if (operation == Field::Operation::Add)
                throw SourceError(s.place, "a plane can only cut or be kept");
            finish(args, halfSpaceShape({}, args.vec3("normal")));
        } else {
            failUnknown(s, std::string(shapeKeywords) + " " + transformKeywords);
        }
    }

    static Vec2 radii(const Arguments& args) {
        const Vec2 r = args.pair("r", {1, 1});
        if (r.x < 0 || r.y < 0 || r.x + r.y <= 0) args.fail("r", "radii are not below 0");
        return r;
    }

    static Outline outline(const Arguments& args) {
        Outline points = args.points2("points");
        if (points.size() < 3) args.fail("points", "an outline needs three points");
        return args.flag("spline") ? splineThrough(points, true, args.integer("steps", 6)) : points;
    }

    template <class Finish>
    void tube(const Arguments& args, const Finish& finish) {
        std::vector<Vec3> centres;
        std::vector<Vec3> radiusRow;
        for (const std::vector<float>& knot : args.tuples("path", 4, 0.5f)) {
            centres.push_back({knot[0], knot[1], knot[2]});
            radiusRow.push_back({knot[3], 0, 0});
        }
        if (centres.size() < 2) args.fail("path", "a path needs two knots");
        const int steps = args.integer("steps", 5);
        centres = splineThrough(centres, false, steps);
        radiusRow = splineThrough(radiusRow, false, steps);
        std::vector<Zelkor::Vec4> knots;
        for (std::size_t i = 0; i < centres.size(); ++i)
            knots.push_back({centres[i].x, centres[i].y, centres[i].z, radiusRow[i].x});
        finish(args, tubeShape(knots));
    }

    Interpreter& interpreter;
    Placement placement;
    const Model& model;
    std::vector<int> bones;
    float blend;
    Field::Operation operation = Field::Operation::Add;
    Field* field = nullptr;
};

} // namespace

void readFieldPart(const Statement& statement, Scope& scope, Interpreter& interpreter,
                   const Placement& placement, Model& model) {
    const Arguments args(statement, scope,
                         std::string("name material bone ; soft influences blend triangles share cell ") +
                             mappingWords);
    Part part = readHead(args, statement, placement, model);
    part.cell = args.number("cell", 0);
    part.triangles = args.integer("triangles", 0);
    part.share = args.number("share", 1);
    FieldPartReader reader(interpreter, placement, model, readBones(args, placement, model, {}),
                           args.number("blend", 0.2f));
    Scope inner(&scope);
    part.field = reader.read(statement.children, inner);
    if (part.field.empty()) throw SourceError(statement.place, "part " + part.name + " has no shape");
    model.parts.push_back(std::move(part));
}

} // namespace forge
