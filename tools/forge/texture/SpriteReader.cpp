#include "texture/SpriteReader.h"

#include "font/FontFile.h"
#include "model/TransformReader.h"
#include "text/Scope.h"
#include "texture/Sprite.h"

#include <cmath>
#include <stdexcept>

namespace forge {
namespace {

using Zelkor::Vec2;

constexpr const char* marks = "shape puff star letters line scribble hatch wash smudge spatter";
const std::string penNames = " width ink taper broken colour";
const std::string paperNames = " tone tint worn outline?";

Tint tintOf(const Arguments& args, const char* name, const Tint& fallback) {
    if (!args.has(name)) return fallback;
    const Zelkor::Vec3 v = args.vec3(name);
    return {v.x, v.y, v.z};
}

// What a line is drawn with where it does not say.
struct Pencil {
    Tint lead{0, 0, 0};
    float grain = 0;
};

Pen penOf(const Arguments& args, const Pencil& pencil, Pen pen = {}) {
    pen.width = args.number("width", pen.width);
    pen.ink = args.number("ink", pen.ink);
    pen.taper = args.number("taper", pen.taper);
    pen.broken = args.number("broken", pen.broken);
    pen.tint = tintOf(args, "colour", pencil.lead);
    pen.grain = pencil.grain;
    if (pen.width <= 0 || pen.width > 10) args.fail("width", "width is above 0, to 10");
    if (pen.ink < 0 || pen.ink > 1) args.fail("ink", "ink is 0 to 1");
    return pen;
}

int countOf(const Arguments& args, const char* name, int fallback, int least) {
    const int n = args.integer(name, fallback);
    if (n < least || n > 400) args.fail(name, std::string(name) + " is " + std::to_string(least) + " to 400");
    return n;
}

class SpriteReader {
  public:
    SpriteReader(Interpreter& i, const Ground& ground, const Pencil& p, int seed)
        : interpreter(i), pencil(p), sprite(ground, seed) {}

    void read(const std::vector<Statement>& statements, Scope& scope) {
        interpreter.run(statements, scope, placing(interpreter, placement, [this](const Statement& s, Scope& inner) {
                            mark(s, inner);
                        }));
    }
    Image image() const { return sprite.image(); }

  private:
    void mark(const Statement& s, Scope& scope) {
        const std::string& word = s.keyword;
        if (word == "shape") {
            const Arguments args(s, scope, "points spline?" + paperNames + penNames);
            cutOut(args, curve(args, "points", 3, true));
        } else if (word == "puff") {
            const Arguments args(s, scope, "at r lobes depth" + paperNames + penNames);
            cutOut(args, sprite.puffOutline(place(args.pair("at", {})), args.number("r", 0.8f),
                                            countOf(args, "lobes", 8, 3), args.number("depth", 0.25f)));
        } else if (word == "star") {
            const Arguments args(s, scope, "at inner outer spikes" + paperNames + penNames);
            cutOut(args, sprite.starOutline(place(args.pair("at", {})), args.number("inner", 0.3f),
                                            args.number("outer", 0.85f), countOf(args, "spikes", 8, 3)));
        } else if (word == "line") {
            const Arguments args(s, scope, "path spline?" + penNames);
            sprite.line(curve(args, "path", 2, false), penOf(args, pencil));
        } else if (word == "scribble") {
            const Arguments args(s, scope, "at to r loops" + penNames);
            const Vec2 at = args.pair("at", {});
            const float loops = args.number("loops", 4);
            if (!(loops > 0 && loops <= 100)) args.fail("loops", "loops is above 0, to 100");
            sprite.scribble(place(at), place(args.pair("to", at)), args.pair("r", {0.5f, 0.5f}), loops, penOf(args, pencil));
        } else if (word == "hatch") {
            const Arguments args(s, scope, "at r angle gap points spline?" + penNames);
            const float gap = args.number("gap", 0.14f), angle = args.number("angle", 50);
            if (!(gap >= 0.02f)) args.fail("gap", "gap is from 0.02");
            const Pen pen = penOf(args, pencil, {.width = 0.035f, .ink = 0.55f});
            if (args.has("points"))
                sprite.hatch(curve(args, "points", 3, true), angle, gap, pen);
            else
                sprite.hatch(place(args.pair("at", {})), args.number("r", 0.6f), angle, gap, pen);
        } else if (word == "wash") {
            const Arguments args(s, scope, "points tint spline?");
            sprite.wash(curve(args, "points", 3, true), tintOf(args, "tint", {0.8f, 0.8f, 0.8f}));
        } else if (word == "letters") {
            letters(Arguments(s, scope, "text height file at turn spacing tone tint"));
        } else if (word == "smudge") {
            const Arguments args(s, scope, "at r ink");
            sprite.smudge(place(args.pair("at", {})), args.number("r", 0.8f), args.number("ink", 0.4f));
        } else if (word == "spatter") {
            const Arguments args(s, scope, "at r count size ink");
            sprite.spatter(place(args.pair("at", {})), args.number("r", 0.7f), countOf(args, "count", 12, 1),
                           args.number("size", 0.06f), args.number("ink", 0.9f));
        } else {
            failUnknown(s, marks);
        }
    }
    Vec2 place(const Vec2& p) const {
        const Zelkor::Vec3 placed = forward(placement.warps, {p.x, p.y, 0});
        return {placed.x, placed.y};
    }

    Outline curve(const Arguments& args, const char* name, std::size_t least, bool closed) const {
        Outline points = args.points2(name);
        if (points.size() < least)
            args.fail(name, std::string(name) + " needs " + std::to_string(least) + " points");
        if (args.flag("spline")) points = splineThrough(points, closed, 8);
        for (Vec2& p : points)
            p = place(p);
        return points;
    }

    static Tint paperOf(const Arguments& args, float tone) {
        tone = args.number("tone", tone);
        Tint tint = tintOf(args, "tint", {1, 1, 1});
        for (float& channel : tint)
            channel *= tone;
        return tint;
    }

    // Paper, and a line around it unless `width=` is left out and `outline` too.
    void cutOut(const Arguments& args, const Outline& outline) {
        sprite.shape({outline}, paperOf(args, 1), args.number("worn", 0));
        if (args.flag("outline") || args.has("width")) sprite.line(outline, penOf(args, pencil), true);
    }

    void letters(const Arguments& args) {
        try {
            FontFile font(interpreter.fileFor(args.name("file"), args.place("file")));
            std::vector<Outline> outlines =
                textOutlines(font, args.name("text"), args.number("height"), args.number("spacing", 0));
            const Vec2 at = args.pair("at", {});
            const WarpPointer move = moveWarp({at.x, at.y, 0}), turn = turnWarp({0, 0, args.number("turn", 0)});
            for (Outline& outline : outlines)
                for (Vec2& p : outline) {
                    const Zelkor::Vec3 moved = move->forward(turn->forward({p.x, p.y, 0}));
                    p = place({moved.x, moved.y});
                }
            sprite.shape(outlines, paperOf(args, args.has("tint") ? 1.0f : 0.0f));
        } catch (const SourceError&) {
            throw;
        } catch (const std::runtime_error& problem) {
            args.fail("file", problem.what());
        }
    }

    Interpreter& interpreter;
    Placement placement;
    Pencil pencil;
    Sprite sprite;
};

} // namespace

Image readSprite(Interpreter& interpreter, const Statement& statement, Scope& scope) {
    const Arguments args(statement, scope, "size seed wide pencil grain");
    const Vec2 size = args.pair("size", {128, 128});
    for (const float side : {size.x, size.y})
        if (side < 8 || side > largestTexture || side != std::floor(side))
            args.fail("size", "a size is 8 to " + std::to_string(largestTexture));
    const int width = static_cast<int>(size.x), height = static_cast<int>(size.y);
    if (width != height && !args.has("wide")) args.fail("size", "a picture that is not square says wide=");
    const float wide = args.number("wide", 2);
    if (!(wide > 0 && wide <= 1000)) args.fail("wide", "wide is above 0, to 1000 units");
    const Ground ground = args.has("wide") ? Ground::sheet(width, height, wide) : Ground::square(width);
    const Pencil pencil{tintOf(args, "pencil", {0, 0, 0}), args.number("grain", 0)};
    if (!(pencil.grain >= 0 && pencil.grain <= 1)) args.fail("grain", "grain is 0 to 1");
    SpriteReader reader(interpreter, ground, pencil, args.integer("seed", 1));
    Scope inner(&scope);
    reader.read(statement.children, inner);
    return reader.image();
}

} // namespace forge
