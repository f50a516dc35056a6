#include "font/FontReader.h"

#include "text/Interpreter.h"

#include <optional>

namespace forge {
namespace {

FontSettings fontSettings(const Statement& s, const Scope& scope, const std::string& outlineFolder) {
    const Arguments args(s, scope, "name ; file texture size line leading weight grain seed");
    FontSettings settings;
    settings.name = args.name("name");
    settings.file = outlineFolder + "/" + args.name("file");
    settings.texture = args.name("texture");
    settings.size = args.integer("size", settings.size);
    settings.line = args.number("line", settings.line);
    settings.leading = args.number("leading", settings.leading);
    settings.weight = args.number("weight", settings.weight);
    settings.grain = args.number("grain", settings.grain);
    settings.seed = args.integer("seed", settings.seed);
    if (settings.size < 16 || settings.size > 4096) args.fail("size", "size is 16 to 4096");
    if (!(settings.line >= 6 && settings.line <= 512)) args.fail("line", "line is 6 to 512 texels");
    if (!(settings.leading >= 0 && settings.leading <= 0.5f)) args.fail("leading", "leading is 0 to 0.5");
    if (!(settings.weight >= 0 && settings.weight <= 8)) args.fail("weight", "weight is 0 to 8 texels");
    if (!(settings.grain >= 0 && settings.grain <= 1)) args.fail("grain", "grain is 0 to 1");
    return settings;
}

} // namespace

FontSource readFont(const std::string& path, const std::string& outlineFolder) {
    std::optional<FontSettings> settings;
    Interpreter interpreter;
    Scope root;
    interpreter.runFile(path, root, [&](const Statement& s, Scope& scope) {
        if (s.keyword != "font") failUnknown(s, "font");
        if (settings) throw SourceError(s.place, "a source has one font");
        settings = fontSettings(s, scope, outlineFolder);
    });
    if (!settings) throw SourceError({path, 1, 1}, "the source has no font");
    FontSource source{*settings, interpreter.files()};
    source.files.push_back(settings->file);
    return source;
}

} // namespace forge
