#include "Program.h"

#include "FullscreenKeys.h"
#include "InputScript.h"
#include "Platform.h"
#include "PlayersPictures.h"
#include "Trace.h"

#include "audio/AudioManager.h"
#include "core/DebugManager.h"
#include "core/EngineManagers.h"
#include "core/Log.h"
#include "core/Random.h"
#include "core/TimerManager.h"
#include "game/Game.h"
#include "game/GameCamera.h"
#include "game/Settings.h"
#include "input/ControllerManager.h"
#include "io/DataFiles.h"
#include "render/GlRenderer.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>

using Zelkor::logLine;

namespace {

constexpr unsigned smallestSize = 16, largestSize = 16384; // pixels

// Without --settings, a run that nobody sees neither follows the player's file nor touches it.
std::optional<std::filesystem::path> settingsFolder(const Options& options) {
    if (!options.settings.empty()) return options.settings;
    return options.headless ? std::nullopt : Settings::playersFolder();
}

// A window too small to be found is not what the player chose.
void readStoredDisplay(const std::filesystem::path& folder, DisplaySettings& settings) {
    const auto content = Settings::readFile(folder);
    if (!content) return;
    logLine("load save file");
    DisplaySettings stored = settings;
    readDisplaySettings(content->text, stored);
    settings.fullscreen = stored.fullscreen;
    if (stored.width < smallestSize || stored.height < smallestSize) return;
    settings.width = std::min(stored.width, largestSize);
    settings.height = std::min(stored.height, largestSize);
}

// Full screen keeps a size the display offers, else takes the desktop's; a window is never larger than the
// desktop.
void fitToDisplay(platform::Platform& system, DisplaySettings& settings) {
    const auto desktop = system.currentDisplayMode();
    if (settings.fullscreen == 0) {
        if (!desktop) return;
        settings.width = std::min(settings.width, static_cast<unsigned>(desktop->width));
        settings.height = std::min(settings.height, static_cast<unsigned>(desktop->height));
        return;
    }
    logLine("test resolution");
    const auto modes = system.displayModes();
    const bool offered = std::any_of(modes.begin(), modes.end(), [&](const platform::DisplayMode& mode) {
        return static_cast<unsigned>(mode.width) == settings.width &&
               static_cast<unsigned>(mode.height) == settings.height;
    });
    if (offered || !desktop) return;
    settings.width = static_cast<unsigned>(desktop->width);
    settings.height = static_cast<unsigned>(desktop->height);
}

DisplaySettings chooseDisplay(platform::Platform& system, const Options& options,
                              const std::optional<std::filesystem::path>& folder) {
    DisplaySettings settings;
    if (folder) readStoredDisplay(*folder, settings);
    if (options.fullscreen) settings.fullscreen = *options.fullscreen;
    if (options.size) {
        settings.width = static_cast<unsigned>(options.size->width);
        settings.height = static_cast<unsigned>(options.size->height);
        if (options.headless) return settings; // no desktop to fit into
    }
    fitToDisplay(system, settings);
    return settings;
}

// What the command line asks to be fed into and written out of the run.
class Recording {
  public:
    // False, with a message on standard error, when a file cannot be opened or understood.
    bool open(const Options& options) {
        screenshots_ = options.screenshots;
        drawEvery_ = options.drawEvery;
        if (!options.input.empty()) {
            std::string reason;
            auto actions = readInputScript(options.input, reason);
            if (!actions) {
                std::fprintf(stderr, "rustpike: %s\n", reason.c_str());
                return false;
            }
            player_ = std::make_unique<InputPlayer>(std::move(*actions));
        }
        return openWriter(recorder_, options.record) &&
               openWriter(trace_, options.trace, options.traceEvery) &&
               openWriter(profile_, options.profile) && openWriter(measure_, options.measure);
    }

    bool playsInput() const { return player_ != nullptr; }

    void beforeFrame(int frame, Zelkor::ControllerManager& controllers, Zelkor::GlRenderer& renderer) {
        if (player_) player_->apply(frame, controllers);
        if (recorder_) recorder_->record(frame, controllers);
        if (profile_) profile_->beforeFrame();
        renderer.captureFrame =
            measure_ || std::any_of(screenshots_.begin(), screenshots_.end(),
                        [&](const ScreenshotRequest& shot) { return shot.frame == frame; });
        renderer.sceneHidden = !renderer.captureFrame && frame % drawEvery_ != 0;
    }

    // False when a picture could not be written.
    bool afterFrame(int frame, const Game& game, const Zelkor::GlRenderer& renderer) {
        if (trace_) trace_->write(frame, game);
        if (profile_) profile_->write(frame);
        if (measure_) measure_->write(frame, renderer.capturedFrame);
        bool written = true;
        for (const ScreenshotRequest& shot : screenshots_)
            if (shot.frame == frame && !renderer.capturedFrame.writePng(shot.file)) {
                std::fprintf(stderr, "rustpike: cannot write %s\n", shot.file.c_str());
                written = false;
            }
        return written;
    }

  private:
    template <class Writer, class... Arguments>
    bool openWriter(std::unique_ptr<Writer>& writer, const std::filesystem::path& file,
                    Arguments... arguments) {
        if (file.empty()) return true;
        writer = std::make_unique<Writer>(file, arguments...);
        if (!writer->failed()) return true;
        std::fprintf(stderr, "rustpike: cannot write %s\n", file.c_str());
        return false;
    }

    std::unique_ptr<InputPlayer> player_;
    std::unique_ptr<InputRecorder> recorder_;
    std::unique_ptr<TraceWriter> trace_;
    std::unique_ptr<ProfileWriter> profile_;
    std::unique_ptr<MeasureWriter> measure_;
    std::vector<ScreenshotRequest> screenshots_;
    int drawEvery_ = 1;
};

// What the command line sets for this run only: put back at its end, unless the player has changed it meanwhile.
class SettingOverrides {
  public:
    SettingOverrides(Settings& settings, const Options& options) : settings_(settings) {
        set(&Settings::postProcessing, options.postProcessing);
        set(&Settings::flicker, options.flicker);
        set(&Settings::superSample, options.superSample);
        set(&Settings::viewSize, options.viewSize);
        if (options.postProcessing)
            Zelkor::engineManagers()->renderer->reloadShaders(*options.postProcessing ? "post" : "direct");
    }
    ~SettingOverrides() {
        for (const Override& each : overrides_)
            if (settings_.*each.field == each.value) settings_.*each.field = each.before;
    }
    SettingOverrides(const SettingOverrides&) = delete;

  private:
    struct Override {
        int Settings::*field;
        int value, before;
    };

    template <class Value>
    void set(int Settings::*field, const std::optional<Value>& value) {
        if (!value) return;
        overrides_.push_back({field, static_cast<int>(*value), settings_.*field});
        settings_.*field = static_cast<int>(*value);
    }

    Settings& settings_;
    std::vector<Override> overrides_;
};

Zelkor::GlCapabilities probeWithoutShaders() {
    return {Zelkor::probeContext().entryPoints, false, false};
}

void readMouse(Zelkor::GlRenderer& renderer, Zelkor::ControllerManager& controllers) {
    if (!renderer.hasFocus() && renderer.fullscreen) return;
    if (!renderer.window()) return;
    const auto cursor = renderer.window()->cursorPosition();
    const auto size = renderer.window()->clientSize();
    if (!cursor || size.width <= 0 || size.height <= 0) return;
    controllers.mouseX = static_cast<float>(cursor->x) / static_cast<float>(size.width);
    controllers.mouseY = static_cast<float>(cursor->y) / static_cast<float>(size.height);
}

// Returns the exit code that the system asked for, or 0; 1 when something asked for could not be written.
int mainLoop(platform::Platform& system, const Options& options, Game& game, Recording& recording) {
    auto& managers = *Zelkor::engineManagers();
    auto& renderer = static_cast<Zelkor::GlRenderer&>(*managers.renderer);
    auto& controllers = *managers.controllerManager;
    int exitCode = 0;
    bool quit = options.frames == 0;
    bool askedAboutShaders = false;
    FullscreenKeys fullscreenKeys;
    for (int frame = 0; !quit;) {
        platform::Message message;
        while (system.pollMessage(message)) {
            if (message.kind == platform::MessageKind::quit) return message.code;
            if (renderer.fullscreen && message.kind == platform::MessageKind::activateApp && !message.down)
                game.pauseSoon(); // nobody is looking
            if (message.kind == platform::MessageKind::toggleFullscreen)
                fullscreenKeys.toggle(renderer, *game.settings, controllers);
            else
                renderer.handleMessage(message);
        }
        managers.audioManager->setAudible(renderer.hasFocus() || !renderer.fullscreen);
        if (renderer.active) {
            // Once more: a click must find the mouse where it was clicked.
            if (!recording.playsInput()) readMouse(renderer, controllers);
            recording.beforeFrame(frame, controllers, renderer);
            const bool wantsPicture = controllers.isPressed(pictureKey);
            if (wantsPicture) {
                renderer.captureFrame = true;
                renderer.sceneHidden = false;
            }
            if (options.fade && game.camera()) game.camera()->fade = *options.fade;
            game.runFrame();
            if (!recording.afterFrame(frame, game, renderer)) exitCode = 1;
            if (wantsPicture) savePlayersPicture(renderer.capturedFrame, system.picturesFolder());
            ++frame;
            quit = game.quitRequested || (options.frames && frame >= *options.frames);
        }
        if (renderer.shaderCompileFailed && !askedAboutShaders) {
            if (!system.askYesNo("One or more shaders failed to compile. Continue anyway?", "ERROR",
                                 platform::MessageIcon::exclamation))
                quit = true;
            askedAboutShaders = true;
            renderer.shaderCompileFailed = false;
        }
        if (!recording.playsInput()) readMouse(renderer, controllers);
    }
    return exitCode;
}

} // namespace

std::filesystem::path findDataFolder(const Options& options, const std::filesystem::path& executableFolder) {
    if (!options.data.empty()) return options.data;
    const std::filesystem::path candidates[] = {"data", executableFolder / "data",
                                                executableFolder / ".." / "data",
                                                executableFolder / ".." / "share/games/rustpike/data",
                                                RUSTPIKE_INSTALLED_DATA};
    for (const auto& candidate : candidates) { // other programs have data folders too
        std::error_code ignored;
        if (std::filesystem::exists(candidate / "sample.fnt", ignored)) return candidate;
    }
    return candidates[0];
}

int runProgram(platform::Platform& system, const Options& options) {
    if (!options.stageName.empty() && !Zelkor::dataFileExists("levels/" + options.stageName + ".level")) {
        std::fprintf(stderr, "rustpike: there is no stage %s\n", options.stageName.c_str());
        return 1;
    }
    Recording recording;
    if (!recording.open(options)) return 1;

    Zelkor::Log::instance().open("log.txt");
    logLine("init");
    auto managers = std::make_unique<Zelkor::EngineManagers>();
    Zelkor::seedRandom(options.seed ? *options.seed : static_cast<std::uint32_t>(system.counter()));
    managers->timerManager->fixedFrameSeconds = options.step;

    if (options.noShaders) managers->renderer = std::make_unique<Zelkor::GlRenderer>(probeWithoutShaders);
    const auto folder = settingsFolder(options);
    const DisplaySettings display = chooseDisplay(system, options, folder);
    logLine("init GL renderer");
    if (!managers->renderer->init("test", static_cast<int>(display.width), static_cast<int>(display.height),
                                  32, display.fullscreen != 0)) {
        managers->renderer.reset();
        Zelkor::Log::instance().close();
        return 0;
    }
    logLine("init profiler");
    managers->debugManager->startUp();
    managers->debugManager->showProfiler = options.showProfiler;
    managers->audioManager->initAudio(static_cast<Zelkor::GlRenderer&>(*managers->renderer).window());
    if (!options.soundFile.empty() && !managers->audioManager->hasDevice()) {
        std::fprintf(stderr, "rustpike: cannot write %s\n", options.soundFile.c_str());
        Zelkor::Log::instance().close();
        return 1;
    }
    if (folder && system.addPadMappings(*folder / "gamecontrollerdb.txt") > 0) logLine("load pad mappings");
    managers->controllerManager->startJoysticks();

    logLine("create game");
    auto game = std::make_unique<Game>(folder);
    auto overrides = std::make_unique<SettingOverrides>(*game->settings, options);
    if (options.stage) game->currentStage = *options.stage;
    game->stageFile = options.stageName;
    if (options.stage || !options.stageName.empty()) game->startWithoutMenus();

    const int exitCode = mainLoop(system, options, *game, recording);

    system.showCursor(true);
    overrides.reset(); // before the game saves its settings
    game.reset();
    managers.reset();
    Zelkor::Log::instance().close();
    return exitCode;
}
