#include "texture/TextureReader.h"

#include "text/Interpreter.h"
#include "texture/Hatch.h"
#include "texture/SpriteReader.h"
#include "texture/Surfaces.h"

#include <optional>

namespace forge {
namespace {

int sizeOf(const Arguments& args, int fallback) {
    const int size = args.integer("size", fallback);
    if (size < 8 || size > largestTexture) args.fail("size", "size is 8 to " + std::to_string(largestTexture));
    return size;
}

Image hatch(const Statement& s, const Scope& scope) {
    const Arguments args(s, scope, "size seed angle scatter cross crossAngle length width");
    HatchSettings settings;
    settings.size = sizeOf(args, settings.size);
    settings.seed = args.integer("seed", settings.seed);
    settings.angle = args.number("angle", settings.angle);
    settings.scatter = args.number("scatter", settings.scatter);
    settings.cross = args.number("cross", settings.cross);
    settings.crossAngle = args.number("crossAngle", settings.crossAngle);
    const Zelkor::Vec2 length = args.pair("length", {settings.length[0], settings.length[1]});
    const Zelkor::Vec2 width = args.pair("width", {settings.halfWidth[0], settings.halfWidth[1]});
    if (length.x < 4 || length.y < length.x) args.fail("length", "length is least,most; from 4 texels");
    if (width.x < 0.3f || width.y < width.x) args.fail("width", "width is least,most; from 0.3 texels");
    settings.length[0] = length.x;
    settings.length[1] = length.y;
    settings.halfWidth[0] = width.x;
    settings.halfWidth[1] = width.y;
    return hatchThresholds(settings).grey();
}

Image paper(const Statement& s, const Scope& scope) {
    const Arguments args(s, scope, "size seed");
    return paperGrain(sizeOf(args, 256), args.integer("seed", 1)).grey();
}

Image surface(const Statement& s, const Scope& scope) {
    const std::string counts = s.keyword == "wood"    ? "lines knots"
                               : s.keyword == "rock"  ? "facets"
                               : s.keyword == "brick" ? "courses bricks"
                               : s.keyword == "wash"  ? "spots"
                                                      : "clumps";
    const Arguments args(s, scope, "size seed ink " + counts);
    SurfaceSettings settings;
    settings.size = sizeOf(args, settings.size);
    settings.seed = args.integer("seed", settings.seed);
    settings.ink = args.number("ink", settings.ink);
    const auto count = [&](const char* name, int fallback) {
        const int n = args.integer(name, fallback);
        if (n < (s.keyword == "wood" ? 0 : 1) || n > 2000)
            args.fail(name, std::string(name) + " is 1 to 2000");
        return n;
    };
    if (s.keyword == "wood") return woodGrain(settings, count("lines", 34), count("knots", 2)).grey();
    if (s.keyword == "rock") return rockFacets(settings, count("facets", 16)).grey();
    if (s.keyword == "brick") return brickWork(settings, count("courses", 8), count("bricks", 4)).grey();
    if (s.keyword == "foliage") return foliageCurls(settings, count("clumps", 60)).grey();
    return washStain(settings, count("spots", 4)).grey();
}

} // namespace

TextureSource readTexture(const std::string& path, const std::vector<std::string>& includeFolders) {
    std::optional<Image> image;
    Interpreter interpreter(includeFolders);
    Scope root;
    interpreter.runFile(path, root, [&](const Statement& s, Scope& scope) {
        if (image) throw SourceError(s.place, "a texture has one generator");
        if (s.keyword == "hatch")
            image = hatch(s, scope);
        else if (s.keyword == "paper")
            image = paper(s, scope);
        else if (s.keyword == "sprite")
            image = readSprite(interpreter, s, scope);
        else if (s.keyword == "wood" || s.keyword == "rock" || s.keyword == "brick" ||
                 s.keyword == "foliage" || s.keyword == "wash")
            image = surface(s, scope);
        else
            failUnknown(s, "hatch paper sprite wood rock brick foliage wash");
    });
    if (!image) throw SourceError({path, 1, 1}, "the texture has no generator");
    return {std::move(*image), interpreter.files()};
}

} // namespace forge
