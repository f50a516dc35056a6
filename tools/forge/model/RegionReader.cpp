#include "model/RegionReader.h"

#include "font/FontFile.h"
#include "model/TransformReader.h"

#include <cmath>
#include <stdexcept>

namespace forge {

using Zelkor::Vec2;
using Zelkor::Vec3;

namespace {

class RegionReader {
  public:
    explicit RegionReader(Interpreter& i) : interpreter(i) {}

    Region read(const std::vector<Statement>& statements, Scope& scope) {
        run(statements, scope);
        return region;
    }

  private:
    using Operation = Region (Region::*)(const Region&) const;

    void run(const std::vector<Statement>& statements, Scope& scope) {
        interpreter.run(statements, scope, placing(interpreter, placement, [this](const Statement& s, Scope& inner) {
                            statement(s, inner);
                        }));
    }

    void statement(const Statement& s, Scope& scope) {
        if (s.keyword == "cut" || s.keyword == "keep")
            operated(s, scope);
        else
            shape(s, scope);
    }

    // `cut disc ...` or `cut { ... }`. What a block holds is put together first.
    void operated(const Statement& s, Scope& scope) {
        if (region.empty()) throw SourceError(s.place, "there is nothing yet to cut or keep");
        RegionReader other(interpreter);
        other.placement = placement;
        Scope inner(&scope);
        if (s.hasBlock) {
            other.run(s.children, inner);
        } else {
            other.shape(afterKeyword(s), inner);
        }
        region = s.keyword == "cut" ? region.without(other.region) : region.within(other.region);
    }

    void shape(const Statement& s, Scope& scope) {
        const std::string common = " ; at turn step";
        const auto with = [&](const std::string& own) { return Arguments(s, scope, own + common); };
        if (s.keyword == "shape") {
            const Arguments args = with("points spline? steps");
            Outline points = args.points2("points");
            if (points.size() < 3) args.fail("points", "an outline needs three points");
            if (args.flag("spline")) points = splineThrough(points, true, args.integer("steps", 6));
            add(args, {points});
        } else if (s.keyword == "disc") {
            const Arguments args = with("r sides");
            const Vec2 r = args.pair("r", {1, 1});
            const int sides = args.integer("sides", 32);
            if (r.x <= 0 || r.y <= 0) args.fail("r", "radii are above 0");
            if (sides < 3 || sides > 128) args.fail("sides", "sides is 3 to 128");
            add(args, {ellipse({}, r, sides)});
        } else if (s.keyword == "stroke") {
            stroke(with("path width spline? steps"));
        } else if (s.keyword == "letters") {
            const Arguments args = with("text height file spacing");
            try {
                FontFile font(interpreter.fileFor(args.name("file"), args.place("file")));
                add(args, textOutlines(font, args.name("text"), args.number("height"), args.number("spacing", 0)));
            } catch (const SourceError&) {
                throw;
            } catch (const std::runtime_error& problem) {
                args.fail("file", problem.what());
            }
        } else {
            failUnknown(s, std::string(flatShapeKeywords) + " " + transformKeywords);
        }
    }

    // A band about a path, as wide at each knot as it says there.
    void stroke(const Arguments& args) {
        const float width = args.number("width", 1);
        std::vector<Vec3> rows; // x, y and width
        for (const std::vector<float>& knot : args.tuples("path", 3, width))
            rows.push_back({knot[0], knot[1], knot[2]});
        if (rows.size() < 2) args.fail("path", "a path needs two knots");
        if (args.flag("spline")) rows = splineThrough(rows, false, args.integer("steps", 8));
        // Piece by piece, for a band may cross itself. A curve turns its width along with it; a path with corners
        // has its pieces' own ends, rounded off where they meet.
        const bool curved = args.flag("spline");
        const auto across = [&](std::size_t i, std::size_t from, std::size_t to) {
            const float dx = rows[to].x - rows[from].x, dy = rows[to].y - rows[from].y;
            const float half = rows[i].z / 2 / std::max(std::hypot(dx, dy), 1e-6f);
            return Vec2{-dy * half, dx * half};
        };
        const std::size_t last = rows.size() - 1;
        for (std::size_t i = 0; i < last; ++i) {
            const Vec2 a = across(i, curved && i > 0 ? i - 1 : i, i + 1),
                       b = across(i + 1, i, curved && i + 1 < last ? i + 2 : i + 1);
            const Vec3 &p = rows[i], &q = rows[i + 1];
            add(args, {{{p.x + a.x, p.y + a.y}, {p.x - a.x, p.y - a.y}, {q.x - b.x, q.y - b.y}, {q.x + b.x, q.y + b.y}}});
            if (!curved && i > 0) add(args, {ellipse({p.x, p.y}, {p.z / 2, p.z / 2}, 16)});
        }
    }

    static Outline ellipse(const Vec2& at, const Vec2& r, int sides) {
        Outline rim;
        for (int i = 0; i < sides; ++i) {
            const float angle = 2 * Zelkor::pi * static_cast<float>(i) / static_cast<float>(sides);
            rim.push_back({at.x + r.x * std::cos(angle), at.y + r.y * std::sin(angle)});
        }
        return rim;
    }

    void add(const Arguments& args, std::vector<Outline> outlines) {
        WarpChain warps = placement.warps;
        if (args.has("at")) {
            const Vec2 at = args.pair("at", {});
            warps.push_back(moveWarp({at.x, at.y, 0}));
        }
        if (args.has("turn")) warps.push_back(turnWarp({0, 0, args.number("turn")}));
        const float step = args.number("step", 1);
        if (!(step >= 0.01f)) args.fail("step", "the step is from 0.01");
        for (Outline& outline : outlines) {
            if (curves(warps)) outline = roughened(outline, 0, step, 0);
            for (Vec2& p : outline) {
                const Vec3 moved = forward(warps, {p.x, p.y, 0});
                p = {moved.x, moved.y};
            }
        }
        region = region.joined(Region(outlines));
    }

    Interpreter& interpreter;
    Placement placement;
    Region region;
};

} // namespace

Region readRegion(const Statement& block, Scope& scope, Interpreter& interpreter) {
    Scope inner(&scope);
    try {
        Region region = RegionReader(interpreter).read(block.children, inner);
        if (region.empty()) throw SourceError(block.place, "nothing is left of this cutout");
        return region;
    } catch (const SourceError&) {
        throw;
    } catch (const std::runtime_error& problem) {
        throw SourceError(block.place, problem.what());
    }
}

} // namespace forge
