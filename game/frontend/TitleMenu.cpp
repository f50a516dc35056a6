#include "frontend/TitleMenu.h"

#include "actors/ThingyManager.h"
#include "audio/AudioManager.h"
#include "core/EngineManagers.h"
#include "frontend/MenuText.h"
#include "game/Game.h"
#include "render/Renderer.h"

#include <algorithm>

using namespace Zelkor;

namespace {

const MenuRow row{MenuKind::title, createMenu<TitleMenu>};

constexpr float inputFrom = 0.2f;            // seconds of age
constexpr float showRate = 5, hideRate = 10; // opacity of the flat things, per second
constexpr float musicFade = 1;               // seconds
constexpr float closingTime = 1;             // seconds
constexpr float poseRate = 2;                // weight, per second of those left

constexpr int letterCount = 11, lettersFromLeft = 6;
constexpr float letterWay = 250; // units
constexpr float poleRate = 3, poleWay = 75;

// From the hero to the camera.
constexpr Vec3 besideHero{12, 14, 42}, besideRocket{14, 8, 42}, withoutHero{0, 0, 40};

// The game and its version, and what it is made with.
constexpr const char* creditLines[] = {"Rustpike " RUSTPIKE_VERSION ", in pencil", "SDL, OpenAL, FluidSynth"};
constexpr Vec2 creditPlaces[] = {{0.55f, 0.905f}, {0.55f, 0.95f}};
constexpr float creditHeight = 0.0479f;
constexpr Vec4 creditColour{0.788f, 0.294f, 0.153f, 1};

constexpr const char* iconSprites[] = {"twittericon", "bloggericon", "androidicon"};
constexpr float iconPlaces[] = {0.02f, 0.14f, 0.26f}; // left edges
constexpr float iconTop = 0.775f, iconSize = 0.1333f;

// The arms of the signpost.
const MenuButton3D::Design boards[] = {
    {"title/startbtn", "START", {50, 46, 0}},
    {"title/optionbtn", "OPTIONS", {50, 32.5f, 0}},
    {"title/quitbtn", "QUIT", {50, 18, 0}, "dropBalloon"},
};

float screenAspect() {
    return std::max(engineManagers()->renderer->aspect, 0.1f);
}

} // namespace

TitleMenu::TitleMenu()
    : MenuBase(MenuKind::title), manager_(*Game::get().menuManager),
      letters_(manager_, "title/title_letter", letterCount),
      pole_(manager_.menuScene.createUnit("title/pole")) {
    AudioManager& audio = *engineManagers()->audioManager;
    Game::get().musicName = audio.musicName;
    audio.fadeOutMusic(musicFade);
    for (const MenuButton3D::Design& board : boards)
        buttons_.push_back(std::make_unique<MenuButton3D>(manager_, board));
    GuiPanel& root = workspace->root;
    for (const std::size_t i : {0u, 1u, 2u})
        icons_.push_back(std::make_unique<MenuButton>(root, iconSprites[i], Vec2{iconPlaces[i], iconTop},
                                                      iconSize, 1 / screenAspect()));
    for (const std::size_t i : {0u, 1u}) {
        credits_[i] = &screenText(root, "FONT2", creditLines[i], {creditPlaces[i].x, creditPlaces[i].y, 0},
                                  creditHeight);
        credits_[i]->colour = creditColour;
    }
    root.colour.w = 0;
    fly(0, true);
}

TitleMenu::~TitleMenu() {
    manager_.menuScene.removeUnit(pole_);
}

void TitleMenu::update(double, float dt, bool isTop) {
    age_ += dt;
    const bool shown = isTop && !closing_;
    if (closing_) timeToLive_ -= dt;
    closed = timeToLive_ <= 0;
    float& opacity = workspace->root.colour.w;
    opacity = clamp(opacity + (shown ? showRate : -hideRate) * dt, 0, 1);
    fly(dt, shown);
    updateButtons(shown && age_ > inputFrom ? MenuInput::read() : MenuInput::none());
}

// Covered, everything leaves as when it closes, and comes back.
void TitleMenu::fly(float dt, bool wanted) {
    letters_.advance(dt, wanted);
    for (int i = 0; i < letterCount; ++i)
        letters_.shift(i, (1 - letters_.progress(i)) * (i < lettersFromLeft ? -letterWay : letterWay));
    arrival_ = clamp(arrival_ + (wanted ? poleRate : -poleRate) * dt, 0, 1);
    const float below = -(1 - arrival_) * (1 - arrival_) * poleWay;
    pole_->position.y = below;
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        buttons_[i]->place(boards[i].rest + Vec3{0, below, 0});
        buttons_[i]->setOpacity(workspace->root.colour.w);
    }
}

void TitleMenu::updateButtons(const MenuInput& input) {
    selection_.move(input, buttonCount);
    for (int i = 0; i < buttonCount; ++i)
        if (buttons_[static_cast<std::size_t>(i)]->update(input, i == selection_.index, selection_.shown)) {
            activate(i);
            break; // it may have opened another menu, whose input this is now
        }
    const float shape = 1 / screenAspect();
    for (const auto& icon : icons_)
        icon->update(input, input.mouse, shape);
    for (GuiObject* line : credits_)
        keepLetterShape(*line);
}

void TitleMenu::activate(int button) {
    if (button == start) manager_.openMenu(MenuKind::levelSelect);
    if (button == options) manager_.openMenu(MenuKind::options);
    if (button == quit) Game::get().quitRequested = true;
}

void TitleMenu::close() {
    if (!closing_) timeToLive_ = closingTime;
    closing_ = true;
}

MenuCameraPose TitleMenu::cameraPose() const {
    MenuCameraPose pose;
    pose.weight = closing_ ? clamp(poseRate * timeToLive_, 0, 1) : 1;
    std::vector<Thingy*> heroes;
    Game::get().thingyManager->collectAll(GROUP_PLAYER, heroes);
    if (heroes.empty())
        pose.position = withoutHero;
    else
        pose.position = heroes.front()->position() +
                        (heroes.front()->spawnType == SpawnType::rocketPlayer ? besideRocket : besideHero);
    return pose;
}
