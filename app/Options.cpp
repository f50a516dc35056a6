#include "Options.h"

#include <CLI/CLI.hpp>

#include <cctype>
#include <charconv>
#include <map>

namespace {

constexpr int lastStage = 19;

bool parseInt(std::string_view text, int& out) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), out);
    return error == std::errc() && end == text.data() + text.size();
}

bool parseSize(const std::string& text, WindowSize& out) {
    const auto x = text.find('x');
    return x != std::string::npos && parseInt(std::string_view(text).substr(0, x), out.width) &&
           parseInt(std::string_view(text).substr(x + 1), out.height) && out.width >= 16 &&
           out.height >= 16 && out.width <= 16384 && out.height <= 16384;
}

bool parseScreenshot(const std::string& text, ScreenshotRequest& out) {
    const auto at = text.rfind('@');
    if (at == std::string::npos || at == 0) return false;
    out.file = text.substr(0, at);
    return parseInt(std::string_view(text).substr(at + 1), out.frame) && out.frame >= 0;
}

// A file under data/levels, without its extension: words joined by '/'.
bool isStageName(const std::string& text) {
    bool inWord = false;
    for (const char c : text) {
        if (c == '/' && !inWord) return false;
        inWord = c != '/';
        if (inWord && c != '_' && c != '-' && !std::isalnum(static_cast<unsigned char>(c))) return false;
    }
    return inWord;
}

bool parseStage(const std::string& text, Options& out) {
    int number = 0;
    if (parseInt(text, number)) {
        out.stage = number;
        return number >= 0 && number <= lastStage;
    }
    out.stageName = text;
    return isStageName(text) && std::isalpha(static_cast<unsigned char>(text[0]));
}

} // namespace

std::optional<Options> parseCommandLine(int argc, const char* const* argv, int& exitCode) {
    Options options;
    CLI::App app("Rustpike: a platform shooter drawn in pencil. Without arguments it plays.", "rustpike");
    app.set_version_flag("--version", "rustpike " RUSTPIKE_VERSION);
    app.add_option("--data", options.data, "The data folder")->type_name("DIR");
    app.add_option("--settings", options.settings, "The folder of the settings file, instead of the player's")
        ->type_name("DIR");
    app.add_flag("--headless", options.headless,
                 "No window, no message box, nothing heard, and no settings file without --settings");
    app.add_option_function<std::string>(
           "--size",
           [&](const std::string& text) {
               WindowSize size;
               if (!parseSize(text, size))
                   throw CLI::ValidationError("--size", "wants WIDTHxHEIGHT, 16 to 16384");
               options.size = size;
           },
           "The size of the picture")
        ->type_name("WxH");
    auto* windowed = app.add_flag_callback(
        "--windowed", [&] { options.fullscreen = false; }, "Play in a window");
    app.add_flag_callback(
           "--fullscreen", [&] { options.fullscreen = true; }, "Play in full screen")
        ->excludes(windowed);
    app.add_option_function<std::string>(
           "--stage",
           [&](const std::string& text) {
               if (!parseStage(text, options))
                   throw CLI::ValidationError("--stage", "wants 0 to 19, or a name such as proving/ladders");
           },
           "Start in this stage, with no menu open")
        ->type_name("N|NAME");
    app.add_option("--frames", options.frames, "End after so many frames")->check(CLI::Range(0, 1000000000));
    app.add_option("--step", options.step, "Seconds of every frame, instead of the wall clock")
        ->check(CLI::Range(0.0001, 10.0))
        ->type_name("SECONDS");
    app.add_option("--seed", options.seed, "Seed of the random numbers");
    app.add_option("--input", options.input, "Play an input script")->type_name("FILE");
    app.add_option("--record", options.record, "Write an input script")->type_name("FILE");
    app.add_option_function<std::vector<std::string>>(
           "--screenshot",
           [&](const std::vector<std::string>& texts) {
               for (const std::string& text : texts) {
                   ScreenshotRequest request;
                   if (!parseScreenshot(text, request))
                       throw CLI::ValidationError("--screenshot", "wants FILE.png@FRAME");
                   options.screenshots.push_back(request);
               }
           },
           "Write the picture of a frame; may be repeated")
        ->type_name("FILE.png@FRAME");
    app.add_option("--trace", options.trace, "Write the state of the game, a JSON object a frame")
        ->type_name("FILE");
    app.add_option("--trace-every", options.traceEvery, "Trace every K frames")
        ->check(CLI::Range(1, 1000000000))
        ->type_name("K");
    app.add_option("--draw-every", options.drawEvery,
                   "Draw the stage only every K frames, and where a picture is taken; the game is the same")
        ->check(CLI::Range(1, 1000000000))
        ->type_name("K");
    app.add_option("--profile", options.profile, "Write the profiler's sections, a JSON object a frame")
        ->type_name("FILE");
    const std::map<std::string, bool> onOff{{"on", true}, {"off", false}};
    const auto addSwitch = [&](const char* name, std::optional<bool>& value, const char* text) {
        app.add_option(name, value, text)
            ->transform(CLI::Transformer(onOff, CLI::ignore_case))
            ->type_name("on|off");
    };
    addSwitch("--post", options.postProcessing, "The passes that finish the picture, in this run");
    addSwitch("--flicker", options.flicker, "Redraw the sketch on its tick, in this run");
    app.add_option("--super-sample", options.superSample,
                   "In this run: 0 off, 1 twice the height, 2 twice the width and the height")
        ->check(CLI::Range(0, 2));
    app.add_option("--view-size", options.viewSize, "Size of the view of the stage in percent, in this run")
        ->check(CLI::Range(0, 100));
    app.add_option("--fade", options.fade, "Hold the picture's fade at this, 0 to 1")
        ->check(CLI::Range(0.0, 1.0));
    app.add_flag("--no-shaders", options.noShaders, "Draw as a machine without shaders does");
    app.add_flag("--show-profiler", options.showProfiler, "Show where the time of each frame goes");
    app.add_option("--measure", options.measure,
                   "Write how light and how ragged the picture is and what each frame changes, as JSON")
        ->type_name("FILE");
    app.add_option("--sound-file", options.soundFile, "Write what is heard to a wave file, instead of playing it")
        ->type_name("FILE.wav");
    app.add_flag("--check-data", options.checkData, "Read every data file and list what is wrong");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        exitCode = app.exit(error) == 0 ? 0 : 1;
        return std::nullopt;
    }
    return options;
}
