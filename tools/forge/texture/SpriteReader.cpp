#include "texture/SpriteReader.h"

#include "text/Scope.h"
#include "texture/Sprite.h"

namespace forge {
namespace {

using Zelkor::Vec2;

constexpr const char* marks = "shape puff star line scribble hatch smudge spatter";
const std::string penNames = " width ink taper broken";
const std::string paperNames = " tone worn outline?";

Pen penOf(const Arguments& args, Pen pen = {}) {
    pen.width = args.number("width", pen.width);
    pen.ink = args.number("ink", pen.ink);
    pen.taper = args.number("taper", pen.taper);
    pen.broken = args.number("broken", pen.broken);
    if (pen.width <= 0 || pen.width > 1) args.fail("width", "width is above 0, to 1");
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
    SpriteReader(int size, int seed) : sprite(size, seed) {}

    void mark(const Statement& s, Scope& scope) {
        const std::string& word = s.keyword;
        if (word == "shape") {
            const Arguments args(s, scope, "points spline?" + paperNames + penNames);
            cutOut(args, curve(args, "points", 3, true));
        } else if (word == "puff") {
            const Arguments args(s, scope, "at r lobes depth" + paperNames + penNames);
            cutOut(args, sprite.puffOutline(args.pair("at", {}), args.number("r", 0.8f),
                                            countOf(args, "lobes", 8, 3), args.number("depth", 0.25f)));
        } else if (word == "star") {
            const Arguments args(s, scope, "at inner outer spikes" + paperNames + penNames);
            cutOut(args, sprite.starOutline(args.pair("at", {}), args.number("inner", 0.3f),
                                            args.number("outer", 0.85f), countOf(args, "spikes", 8, 3)));
        } else if (word == "line") {
            const Arguments args(s, scope, "path spline?" + penNames);
            sprite.line(curve(args, "path", 2, false), penOf(args));
        } else if (word == "scribble") {
            const Arguments args(s, scope, "at to r loops" + penNames);
            const Vec2 at = args.pair("at", {});
            const float loops = args.number("loops", 4);
            if (!(loops > 0 && loops <= 100)) args.fail("loops", "loops is above 0, to 100");
            sprite.scribble(at, args.pair("to", at), args.pair("r", {0.5f, 0.5f}), loops, penOf(args));
        } else if (word == "hatch") {
            const Arguments args(s, scope, "at r angle gap" + penNames);
            const float gap = args.number("gap", 0.14f);
            if (!(gap >= 0.02f)) args.fail("gap", "gap is from 0.02");
            sprite.hatch(args.pair("at", {}), args.number("r", 0.6f), args.number("angle", 50), gap,
                         penOf(args, {.width = 0.035f, .ink = 0.55f}));
        } else if (word == "smudge") {
            const Arguments args(s, scope, "at r ink");
            sprite.smudge(args.pair("at", {}), args.number("r", 0.8f), args.number("ink", 0.4f));
        } else if (word == "spatter") {
            const Arguments args(s, scope, "at r count size ink");
            sprite.spatter(args.pair("at", {}), args.number("r", 0.7f), countOf(args, "count", 12, 1),
                           args.number("size", 0.06f), args.number("ink", 0.9f));
        } else {
            failUnknown(s, marks);
        }
    }
    Image image() const { return sprite.image(); }

  private:
    static Outline curve(const Arguments& args, const char* name, std::size_t least, bool closed) {
        const Outline points = args.points2(name);
        if (points.size() < least)
            args.fail(name, std::string(name) + " needs " + std::to_string(least) + " points");
        return args.flag("spline") ? splineThrough(points, closed, 8) : points;
    }

    // Paper, and a line around it unless `width=` is left out and `outline` too.
    void cutOut(const Arguments& args, const Outline& outline) {
        sprite.shape(outline, args.number("tone", 1), args.number("worn", 0));
        if (args.flag("outline") || args.has("width")) sprite.line(outline, penOf(args), true);
    }

    Sprite sprite;
};

} // namespace

Image readSprite(Interpreter& interpreter, const Statement& statement, Scope& scope, int size, int seed) {
    SpriteReader reader(size, seed);
    Scope inner(&scope);
    interpreter.run(statement.children, inner,
                    [&](const Statement& s, Scope& markScope) { reader.mark(s, markScope); });
    return reader.image();
}

} // namespace forge
