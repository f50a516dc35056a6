// rustpike-viewer: looks at units, clip by clip, and at particle effects, in a window or as a contact sheet; at
// fonts and sprites on sheets.
#include "EffectShow.h"
#include "Exhibit.h"
#include "GuiSheet.h"
#include "MenuView.h"
#include "Orbit.h"
#include "Sheet.h"
#include "Studio.h"

#include "sdl/SdlPlatform.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <filesystem>

namespace {

constexpr int windowWidth = viewer::guiSheetWidth, windowHeight = viewer::guiSheetHeight;

struct Arguments {
    viewer::SheetOptions sheet;
    viewer::EffectOptions effects;
    std::string data, font, sprite;
    bool headless = false, menu = false;
    float erase = 0;
    int frames = -1;
};

void describe(CLI::App& app, Arguments& arguments) {
    viewer::SheetOptions& sheet = arguments.sheet;
    CLI::Option_group* subject = app.add_option_group("What to show");
    subject->add_option("--unit", sheet.units, "A unit, as corvan or tiles/area1/ladder; may be repeated");
    subject->add_option("--effect", arguments.effects.effects, "A particle effect; may be repeated");
    subject->add_option("--font", arguments.font, "With --sheet: a font, as FONT2");
    subject->add_option("--gui", arguments.sprite, "With --sheet: the animations of a sprite definition")
        ->type_name("FILE.spritedef");
    subject->require_option(1);
    app.add_option("--drift", arguments.effects.drift, "Speed of an effect to the right, units per second");
    app.add_option("--hold", sheet.held, "UNIT@JOINT: a unit in the hand of the other; may be repeated");
    app.add_option("--clip", sheet.clips, "Only these clips; may be repeated");
    app.add_option("--sheet", sheet.file, "Write a contact sheet instead of opening a window")
        ->type_name("FILE.png");
    app.add_option("--moments", sheet.moments, "Moments of each clip on a sheet")->check(CLI::Range(1, 64));
    app.add_option("--size", sheet.size, "Pixels of a cell of a sheet")->check(CLI::Range(16, 720));
    app.add_option("--zoom", sheet.zoom, "1: as near as in the game")->check(CLI::Range(0.01, 100.0));
    app.add_option("--scale", sheet.scale, "Scale of the unit")->check(CLI::Range(0.001, 1000.0));
    app.add_option("--yaw", sheet.yaw, "Degrees about the vertical axis; figures look right at 90")
        ->check(CLI::Range(-360.0, 360.0));
    app.add_flag("--menu", arguments.menu, "With --sheet: units together as menus show them; UNIT@X,Y moves one");
    app.add_option("--erase", arguments.erase, "With --menu: how much of a map is still to be drawn")
        ->check(CLI::Range(0.0, 1.0));
    app.add_flag("--silhouette", sheet.silhouette, "Filled black shapes");
    app.add_option("--data", arguments.data, "The data folder")->type_name("DIR");
    app.add_flag("--headless", arguments.headless, "No window");
    app.add_option("--frames", arguments.frames, "Close the window after so many frames");
}

bool ofInterface(const Arguments& arguments) {
    return arguments.menu || !arguments.font.empty() || !arguments.sprite.empty();
}

bool writeSheet(const Arguments& arguments, viewer::Studio& studio) {
    if (!arguments.font.empty()) return viewer::writeFontSheet(studio, arguments.font, arguments.sheet.file);
    if (!arguments.sprite.empty())
        return viewer::writeSpriteSheet(studio, arguments.sprite, arguments.sheet.file);
    if (arguments.menu)
        return viewer::writeMenuView(studio, {arguments.sheet.units, arguments.erase, arguments.sheet.file});
    return viewer::writeSheet(studio, arguments.sheet);
}

int show(const Arguments& arguments, platform::Platform& system, viewer::Studio& studio) {
    const viewer::SheetOptions& sheet = arguments.sheet;
    viewer::Exhibit exhibit(studio.scene,
                            {.unit = sheet.units[0], .scale = sheet.scale, .yaw = 90, .held = sheet.held});
    if (!exhibit.drawable()) {
        std::fprintf(stderr, "rustpike-viewer: there is no unit %s\n", sheet.units[0].c_str());
        return 1;
    }
    return viewer::Orbit(system, studio, exhibit, sheet.clips.empty() ? "" : sheet.clips[0])
        .run(arguments.frames);
}

// What units and effects have in common is said once.
viewer::EffectOptions effectOptions(const CLI::App& app, const Arguments& arguments) {
    viewer::EffectOptions options = arguments.effects;
    options.zoom = arguments.sheet.zoom;
    options.size = arguments.sheet.size;
    options.file = arguments.sheet.file;
    if (app.count("--moments") > 0) options.moments = arguments.sheet.moments;
    return options;
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Shows units as the game draws them", "rustpike-viewer");
    Arguments arguments;
    describe(app, arguments);
    CLI11_PARSE(app, argc, argv);
    const bool sheet = !arguments.sheet.file.empty();
    if (ofInterface(arguments) && !sheet) {
        std::fputs("rustpike-viewer: --font, --gui and --menu want --sheet FILE.png\n", stderr);
        return 1;
    }
    if (!sheet && !arguments.headless && !platform::SdlPlatform::displayAvailable()) {
        std::fputs("rustpike-viewer: there is no display to open a window on; --sheet needs none\n", stderr);
        return 2;
    }
    if (arguments.data.empty()) {
        std::error_code ignored;
        const auto program = std::filesystem::canonical(argv[0], ignored);
        arguments.data = (program.parent_path() / ".." / "data").string();
    }
    platform::SdlPlatform system({.headless = sheet || arguments.headless});
    platform::setCurrent(&system);
    viewer::Studio studio;
    const bool square = sheet && !ofInterface(arguments);
    const int height = square ? viewer::sheetLines : windowHeight;
    const int width = square ? viewer::sheetLines : windowWidth;
    if (!studio.open(arguments.data, width, height)) return 1;
    if (!arguments.effects.effects.empty()) {
        viewer::EffectShow effects(studio, effectOptions(app, arguments));
        return sheet ? !effects.writeStrips() : effects.run(system, arguments.frames);
    }
    if (sheet) return writeSheet(arguments, studio) ? 0 : 1;
    return show(arguments, system, studio);
}
