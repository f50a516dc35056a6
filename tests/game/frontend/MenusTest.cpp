// The menus as a player has them: keys, pad and mouse go in, frames pass.
#include "frontend/OptionsMenu.h"
#include "frontend/PopupMenu.h"
#include "frontend/TitleMenu.h"

#include "VirtualKeys.h"
#include "actors/player/Player.h"
#include "audio/AudioManager.h"
#include "core/DebugManager.h"
#include "game/Settings.h"
#include "game/WorldTest.h"
#include "gui/GuiSprite.h"

#include <algorithm>
#include <cmath>

using namespace Zelkor;
namespace key = platform::key;

namespace {

using Kinds = std::vector<int>;

// Does what its test says.
struct ScriptedMenu final : MenuBase {
    explicit ScriptedMenu(int ownKind, std::function<void(ScriptedMenu&)> script = {})
        : MenuBase(ownKind), onUpdate(std::move(script)) {}
    void update(double, float, bool isTop) override {
        top = isTop;
        ++updates;
        if (onUpdate) onUpdate(*this);
    }
    bool pausesGame() const override { return pauses; }
    MenuCameraPose cameraPose() const override { return pose; }

    std::function<void(ScriptedMenu&)> onUpdate;
    MenuCameraPose pose;
    bool top = false, pauses = false;
    int updates = 0;
};

class MenusTest : public WorldTest {
  protected:
    MenusTest() {
        renderer().windowWidth = 1280;
        renderer().windowHeight = 720;
        managers->debugManager->startUp();
    }
    void frames(int count, float seconds = 1.0f / 60) {
        TimerManager::instance().fixedFrameSeconds = seconds;
        for (int i = 0; i < count; ++i)
            game->runFrame();
    }
    void wait(float seconds) { frames(static_cast<int>(seconds * 60 + 0.5f)); }
    void press(int code) {
        controllers().setButton(code, true);
        frames(2);
        controllers().setButton(code, false);
        frames(2);
    }
    void keys(const Kinds& codes) {
        for (const int code : codes)
            press(code);
    }
    void pad(int button) {
        platform.padState = platform::PadState{.buttons = static_cast<std::uint16_t>(button)};
        frames(2);
        platform.padState = platform::PadState{};
        frames(2);
    }
    void pointAt(const Vec2& screen) {
        controllers().mouseX = screen.x;
        controllers().mouseY = screen.y;
    }
    void click(const Vec2& screen) {
        pointAt(screen);
        press(platform::mouseLeftCode);
    }
    // A point of the menus' scene.
    Vec2 onScreen(const Vec3& point) const {
        const Vec3 screen = menus().project(point);
        return {screen.x, screen.y};
    }
    Kinds open() const {
        Kinds kinds;
        for (const auto& menu : menus().menus)
            kinds.push_back(menu->kind);
        return kinds;
    }
    // Whether it has been played since the test began.
    bool heard(const std::string& name) const {
        const auto& sounds = managers->audioManager->sounds();
        return std::any_of(sounds.begin(), sounds.end(), [&](const SoundEntry& s) { return s.name == name; });
    }
    Vec3 placeOf(const std::string& mesh) const {
        const auto& units = menus().menuScene.units();
        const auto found = std::find_if(units.begin(), units.end(), [&](const auto& u) { return u->name() == mesh; });
        return found == units.end() ? Vec3{} : (*found)->position;
    }
    ScriptedMenu& push(int kind, std::function<void(ScriptedMenu&)> script = {}) {
        auto menu = std::make_unique<ScriptedMenu>(kind, std::move(script));
        ScriptedMenu& pushed = *menu;
        menus().pushMenu(std::move(menu));
        return pushed;
    }
    OptionsMenu& openOptions() {
        menus().openMenu(MenuKind::options);
        wait(1.5f); // the board has come to hang still
        return dynamic_cast<OptionsMenu&>(*menus().menus.back());
    }
    // Where an item of the shown page can be clicked, at a share of its width.
    Vec2 itemOnScreen(const OptionsMenu& options, std::size_t item, float share = 0.1f) const {
        const MenuRect& r = options.page()->items.at(item)->rectangle();
        return pageOnScreen({r.left + (r.right - r.left) * share, r.top + 2});
    }
    // The page hangs still: its corner from the board's.
    Vec2 pageOnScreen(const Vec2& point) const {
        return onScreen({-60 + 5 + point.x, 85 - 5 - point.y, -3.8f});
    }
    MenuManager& menus() const { return *game->menuManager; }
    ControllerManager& controllers() const { return *managers->controllerManager; }
};

// --- The stack --------------------------------------------------------------------------------------------

TEST_F(MenusTest, TheStackIsUpdatedInOrderAndClosedAfterwards) {
    ScriptedMenu& low = push(MenuKind::levelStart);
    ScriptedMenu* pushed = nullptr;
    push(MenuKind::death, [&](ScriptedMenu& self) {
        if (self.updates == 1) pushed = &push(MenuKind::stageClear);
        if (self.updates == 2) {
            menus().closeMenus(&self, true); // from inside an update: right after it
            EXPECT_EQ(open(), (Kinds{3, 10, 8}));
        }
        self.closed = self.updates == 3;
    });
    EXPECT_FALSE(menus().updateMenus(0, 0.02f));
    EXPECT_EQ(pushed->updates, 1); // in the same pass, on top
    EXPECT_TRUE(pushed->top && !low.top);
    EXPECT_NEAR(menus().playLayer.colour.w + menus().menuLayer.colour.w, 1, 1e-6f);
    EXPECT_NEAR(menus().playLayer.colour.w, 0.8f, 1e-5f);
    low.pauses = true;
    EXPECT_TRUE(menus().updateMenus(0, 0.1f));
    EXPECT_EQ(open(), Kinds{10});
    EXPECT_EQ(menus().playLayer.colour.w, 0);
    menus().updateMenus(0, 0.1f);
    EXPECT_TRUE(menus().empty());
    EXPECT_NEAR(menus().playLayer.colour.w, 0.5f, 1e-5f);
    for (const int kind : {-1, 4, 99})
        menus().openMenu(kind);
    menus().openMenu(MenuKind::popup); // without a text
    menus().openMenu(MenuKind::buttonAssign, 6);
    EXPECT_TRUE(menus().empty());
}

TEST_F(MenusTest, PosesBlendAndTheCursorShowsInFullScreen) {
    push(MenuKind::title).pose = {0.5f, {10, 0, 0}, {}};
    push(MenuKind::options).pose = {0, {99, 99, 99}, {}};
    push(MenuKind::death).pose = {0.75f, {0, 8, 0}, quatFromAxisAngle(1, {0, 0, 1})};
    const MenuCameraPose pose = menus().cameraPose();
    EXPECT_EQ(pose.weight, 1);
    EXPECT_NEAR(pose.position.x, 2.5f, 1e-5f);
    EXPECT_NEAR(pose.position.y, 6, 1e-5f);
    EXPECT_NEAR(pose.orientation.z, std::sin(0.375f), 1e-5f);

    pointAt({0.25f, 0.75f});
    for (const bool fullscreen : {false, true}) {
        renderer().fullscreen = fullscreen;
        menus().updateMenus(0, 0.01f);
        EXPECT_EQ(menus().cursor.visible, fullscreen);
    }
    EXPECT_EQ(menus().cursor.position.x, 0.25f);
    EXPECT_FLOAT_EQ(menus().cursor.width, 16.0f / 1280);
    EXPECT_FLOAT_EQ(menus().cursor.height, 32.0f / 720);
}

// --- The title --------------------------------------------------------------------------------------------

class ColdStart : public MenusTest {
  protected:
    ColdStart() {
        writeData("levels/level000.level", "0 0 3 1 stone 0 -10 0 stone 10 -10 0 stone 20 -10 0\n");
        writeData("levels/level000.event", "{ Thingy{ pos 10 0 0 rot 0 0 0 1 mesh corvan type 1 }"
                                           "  Music{ pos 0 0 0 desert } StartupTriggers 2 0 1 }");
        menus().openMenu(MenuKind::startLoad);
    }
    Player& hero() { return dynamic_cast<Player&>(*actors(GROUP_PLAYER).front()); }
};

TEST_F(ColdStart, LoadsShowsTheTitleAndQuits) {
    frames(4);
    EXPECT_FALSE(game->session);
    frames(1);
    EXPECT_EQ(open(), (Kinds{7, 0}));
    ASSERT_TRUE(game->session);
    EXPECT_NEAR(placeOf("title/title_letter1").x, -250 * (1 - 4 / 60.0f), 1e-3f); // a substep old
    EXPECT_NEAR(placeOf("title/title_letter7").x, 250, 1e-3f);                    // not yet on its way
    EXPECT_EQ(game->musicName, "desert");
    EXPECT_EQ(managers->audioManager->musicName, "");
    frames(30);
    EXPECT_EQ(open(), Kinds{0});
    const Vec3 at = hero().position(), view = game->camera()->view.position;
    EXPECT_NEAR(distance(view, at + Vec3{12, 14, 42}), 0, 1e-3f);
    controllers().setButton(key::right, true);
    frames(30);
    controllers().setButton(key::right, false);
    EXPECT_EQ(hero().position().x, at.x);           // he is not spoken to
    EXPECT_GT(TimerManager::instance().findTimer("game")->total, 0.5); // and yet the stage runs
    EXPECT_EQ(game->session->time, 0);
    press(key::escape);
    EXPECT_EQ(open(), Kinds{0}); // there is no way out but QUIT
    EXPECT_FALSE(game->quitRequested);
    keys({key::down, key::down, key::down, 'Z'});
    EXPECT_TRUE(game->quitRequested && heard("dropBalloon"));
}

TEST_F(ColdStart, EveryDeviceOpensTheOptionsAndTheTitleGlidesAway) {
    frames(40);
    const std::function<void()> ways[] = {
        [&] { keys({key::down, key::enter}); },
        [&] { pad(platform::padA); }, // the choice has stayed where it was
        [&] {
            pointAt(onScreen({50, 32.5f, 0}));
            controllers().setButton(platform::mouseLeftCode, true);
            frames(2);
            EXPECT_NEAR(distance(placeOf("title/optionbtn"), {47.5f, 33.375f, 15}), 0, 1e-3f); // pulled
            pointAt({0.01f, 0.01f}); // let go elsewhere, it is none
            controllers().setButton(platform::mouseLeftCode, false);
            frames(2);
            EXPECT_EQ(open(), Kinds{0});
            click(onScreen({50, 32.5f, 0}));
        },
    };
    for (const auto& way : ways) {
        way();
        EXPECT_EQ(open(), (Kinds{0, 1}));
        wait(0.3f);
        EXPECT_EQ(menus().find(MenuKind::title)->workspace->root.colour.w, 0);
        press(key::backspace);
        EXPECT_TRUE(heard("fullballoon") && heard("dropballoon"));
        wait(0.5f);
        EXPECT_EQ(open(), Kinds{0});
        wait(0.3f); // until it listens again
    }
    menus().closeMenus(nullptr, false);
    wait(0.5f);
    EXPECT_EQ(menus().cameraPose().weight, 1);
    wait(0.25f);
    EXPECT_NEAR(menus().cameraPose().weight, 0.5f, 0.04f);
    wait(0.3f);
    EXPECT_TRUE(menus().empty());
}

// --- Pause ------------------------------------------------------------------------------------------------

TEST_F(MenusTest, PauseHoldsTheStageAlsoUnderTheOptions) {
    startStage("0 0 1 1\n", "{}");
    timer("game").paused = 1; // as during a pan
    press(key::escape);
    EXPECT_TRUE(menus().empty());
    timer("game").paused = 0;
    frames(5);
    const float before = game->session->time;
    press(key::escape); // does not close what it has just opened
    EXPECT_EQ(open(), Kinds{9});
    EXPECT_TRUE(timer("game").paused != 0 && timer("boss").paused != 0);
    const double stood = timer("game").total;
    keys({key::down, 'Z'});
    wait(1);
    EXPECT_EQ(open(), (Kinds{9, 1}));
    EXPECT_EQ(timer("game").total, stood);
    pad(platform::padB);
    wait(0.4f);
    EXPECT_EQ(open(), Kinds{9});
    pad(platform::padBack);
    EXPECT_EQ(open(), Kinds{9}); // the letters fly out first
    wait(0.3f);
    EXPECT_TRUE(menus().empty());
    EXPECT_TRUE(timer("game").paused == 0 && timer("boss").paused == 0);
    EXPECT_NEAR(game->session->time, before + 1.0f / 60, 0.1f);
    press(key::enter);
    press(key::enter); // RESUME is the choice from the beginning
    wait(0.3f);
    EXPECT_TRUE(menus().empty());
}

// --- Options ----------------------------------------------------------------------------------------------

TEST_F(MenusTest, TheBoardDropsSwingsAndHangs) {
    menus().openMenu(MenuKind::options);
    const auto& options = dynamic_cast<OptionsMenu&>(*menus().menus.back());
    frames(1);
    const float dt = 1.0f / 60, speed = -50 - 1500 * dt;
    EXPECT_NEAR(options.anchor().y, 150 + speed * dt, 1e-3f);
    EXPECT_NEAR(options.tilt(), -2 * dt * dt, 1e-6f);
    float lowest = 150, widest = 0;
    for (int i = 0; i < 90; ++i) {
        frames(1);
        lowest = std::min(lowest, options.anchor().y);
        widest = std::max(widest, std::abs(options.tilt()));
    }
    EXPECT_EQ(lowest, 45);
    EXPECT_GT(widest, 0.05f);
    EXPECT_NEAR(options.anchor().y, 45, 0.5f);
    EXPECT_NEAR(options.tilt(), 0, 0.02f);
    press(key::escape);
    wait(0.25f);
    EXPECT_LT(options.anchor().y, 20); // falls away
    wait(0.2f);
    EXPECT_TRUE(menus().empty());
}

TEST_F(MenusTest, KeysFindTheirWayThroughTabsAndPages) {
    OptionsMenu& options = openOptions();
    struct Step {
        int key, tab;
        bool inPage;
        int item; // -1: there is no page
    };
    const Vec4 pink{1, 0.7f, 0.7f, 1}, white{1, 1, 1, 1};
    EXPECT_EQ(options.tabButton(0).labelColour(), pink); // as an indicator
    const Step steps[] = {
        {key::up, 0, false, 0},   {'Z', 0, false, 0},       {key::right, 0, true, 0}, {key::up, 0, true, 0},
        {key::down, 0, true, 1},  {key::down, 1, true, 0},  {key::up, 0, true, 1},    {key::left, 0, false, 1},
        {key::down, 1, false, 0}, {key::down, 2, false, 0}, {key::right, 2, true, 0}, {key::up, 1, true, 6},
        {key::down, 2, true, 0},  {key::down, 2, true, 1},  {key::down, 2, true, 2},  {key::down, 2, true, 3},
        {key::down, 2, true, 4},  {key::down, 3, false, -1}, {key::right, 3, false, -1}, {key::down, 3, false, -1},
        {key::up, 2, false, 0},   {key::f1 + 2, 2, true, 0}, {key::left, 2, false, 0}, {key::down, 3, false, -1},
    };
    for (const Step& step : steps) {
        press(step.key);
        const int at = static_cast<int>(&step - steps);
        EXPECT_EQ(options.selectedTab(), step.tab) << at;
        EXPECT_EQ(options.pageFocused(), step.inPage) << at;
        EXPECT_EQ(options.page() ? options.page()->selected : -1, step.item) << at;
        if (options.page() && step.inPage) {
            const auto& item = *options.page()->items.at(static_cast<std::size_t>(step.item));
            EXPECT_EQ(item.label().colour, pink) << at;
        }
        EXPECT_EQ(options.tabButton(step.tab).labelColour(), pink) << at;
    }
    EXPECT_EQ(options.tabButton(0).labelColour(), white);
    EXPECT_FALSE(heard("fullballoon")); // no sound for keys that only move
    const MenuRect tab = options.tabButton(1).screenRectangle();
    const Vec2 middle{(tab.left + tab.right) / 2, (tab.top + tab.bottom) / 2};
    click(middle);
    EXPECT_TRUE(options.selectedTab() == 1 && !options.pageFocused() && heard("fullballoon"));
    keys({key::down, key::down, 'Z'});
    EXPECT_TRUE(heard("dropballoon"));
    wait(0.4f);
    EXPECT_TRUE(menus().empty());
}

TEST_F(MenusTest, SlidersAreMovedByKeysAndDragged) {
    OptionsMenu& options = openOptions();
    const auto& slider = dynamic_cast<const MenuSlider&>(*options.page()->items[0]);
    keys({key::right, 'Z'});
    EXPECT_TRUE(slider.editing());
    controllers().setButton(key::right, true);
    frames(15); // a quarter of a second: a quarter of the way
    controllers().setButton(key::right, false);
    EXPECT_NEAR(slider.value(), 0.75f, 0.02f);
    EXPECT_EQ(game->settings->musicVolume, static_cast<int>(slider.value() * 100));
    EXPECT_FLOAT_EQ(managers->audioManager->musicVolume,
                    static_cast<float>(game->settings->musicVolume) * 0.01f);
    keys({key::up, key::down, key::left}); // all of it belongs to the slider
    EXPECT_TRUE(options.pageFocused() && options.page()->selected == 0);
    keys({'Z', key::left});
    EXPECT_FALSE(slider.editing() || options.pageFocused());

    const auto& other = dynamic_cast<const MenuSlider&>(*options.page()->items[1]);
    const MenuRect& bar = other.bar();
    const auto onBar = [&](float share) {
        return pageOnScreen({bar.left + (bar.right - bar.left) * share, (bar.top + bar.bottom) / 2});
    };
    pointAt(onBar(0.2f));
    controllers().setButton(platform::mouseLeftCode, true);
    frames(2);
    EXPECT_NEAR(other.value(), 0.2f, 0.01f);
    EXPECT_TRUE(options.pageFocused() && options.page()->selected == 1);
    pointAt({1, 0}); // far beyond
    frames(2);
    EXPECT_EQ(game->settings->soundVolume, 100);
    controllers().setButton(platform::mouseLeftCode, false);
    frames(2);
    pointAt(onBar(0.5f));
    frames(2);
    EXPECT_EQ(other.value(), 1);
    EXPECT_FALSE(other.editing());
}

TEST_F(MenusTest, GraphicsAreChosenAndApplied) {
    game->settings->displayModes = {{800, 600, "800x600"}, {1280, 720, "1280x720"}, {1920, 1080, "1920x1080"}};
    game->settings->resolutionIndex = 1;
    OptionsMenu& options = openOptions();
    keys({key::down, key::down, key::right, 'Z'}); // FullScreen
    EXPECT_EQ(game->settings->fullScreen, 1);
    EXPECT_FALSE(renderer().fullscreen);
    keys({key::down, 'Z', key::right, key::right}); // round to the first
    EXPECT_EQ(game->settings->resolutionIndex, 0);
    keys({key::left, 'Z'});
    EXPECT_EQ(game->settings->resolutionIndex, 2);
    click(itemOnScreen(options, 2));
    click(itemOnScreen(options, 2));
    EXPECT_EQ(game->settings->superSample, 0); // from 1
    EXPECT_EQ(options.page()->selected, 2);
    click(itemOnScreen(options, 3));
    EXPECT_EQ(game->settings->flicker, 0);
    platform.calls.clear();
    platform.modes = {{1920, 1080, 32}};
    click(itemOnScreen(options, 4));
    EXPECT_EQ(std::count(platform.calls.begin(), platform.calls.end(), "switchDisplayMode 1920 1080 32"), 1);
    EXPECT_TRUE(renderer().fullscreen);
    press(key::f1 + 2);
    press('Z');
    EXPECT_TRUE(managers->debugManager->showProfiler);
}

TEST_F(MenusTest, KeysAreAssignedOrNot) {
    OptionsMenu& options = openOptions();
    keys({key::down, key::right, key::down, key::down, key::down, key::down}); // Jump
    const auto jump = [&] { return static_cast<int>(controllers().bindings[bindingJump]); };
    TimerManager::instance().fixedFrameSeconds = 0.1f; // so slow that the press that opens it is still fresh
    controllers().setButton('Z', true);
    frames(1, 0.1f);
    EXPECT_EQ(open(), (Kinds{1, 6}));
    EXPECT_EQ(jump(), 'Z');
    controllers().setButton('Z', false);
    EXPECT_TRUE(timer("game").paused != 0);
    wait(0.3f);
    const auto& popup = dynamic_cast<PopupMenu&>(*menus().menus.back());
    EXPECT_NEAR(popup.bandHeight(), 0.2f, 1e-5f);
    press(300);
    EXPECT_EQ(jump(), 300);
    wait(0.35f);
    EXPECT_EQ(open(), Kinds{1});
    EXPECT_EQ(timer("game").paused, 0);
    for (const int cancel : {key::escape, key::enter, key::backspace, platform::mouseLeftCode}) {
        press(300);
        EXPECT_EQ(open(), (Kinds{1, 6})) << cancel;
        wait(0.2f);
        press(cancel);
        wait(0.35f);
        EXPECT_EQ(jump(), 300);
        EXPECT_EQ(open(), Kinds{1}) << cancel; // and the options below have not heard it
    }
    click(itemOnScreen(options, 6)); // Reset_Defaults
    EXPECT_EQ(jump(), 'Z');
    timer("game").paused = 1;
    menus().openMenu(MenuKind::popup, std::string("Howdy"));
    wait(0.2f);
    pad(platform::padA);
    wait(0.35f);
    EXPECT_EQ(open(), Kinds{1});
    EXPECT_EQ(timer("game").paused, 1);
}

} // namespace
