// From stage to stage: the map, the fades between stages, death and the end of a stage.
#include "frontend/DeathMenu.h"
#include "frontend/LevelSelectMenu.h"
#include "frontend/LevelStartMenu.h"
#include "frontend/MenuManager.h"
#include "game/Settings.h"
#include "game/WorldTest.h"

#include "VirtualKeys.h"

#include <cmath>

using namespace Zelkor;

namespace {

class JourneyTest : public WorldTest {
  protected:
    static constexpr float second = 50; // frames

    JourneyTest() {
        writeData("levels/level000.event", "{ SpawnPlayer{ pos 5 5 0 rot 0 0 0 1 mesh none } StartupTriggers 1 0 }");
        game->startSession();
    }
    // Of one substep each.
    void frames(float count) {
        for (int i = 0; i < static_cast<int>(std::lround(count)); ++i) {
            platform.clock += 20;
            game->runFrame();
        }
    }
    void press(int key) {
        managers->controllerManager->setButton(key, true);
        frames(1);
        managers->controllerManager->setButton(key, false);
        frames(1);
    }
    MenuManager& menus() { return *game->menuManager; }
    template <class Menu>
    Menu& top() {
        return dynamic_cast<Menu&>(*menus().menus.back());
    }
    LevelSelectMenu& openMap(int unlocked, int cleared, int current) {
        menus().closeMenus(nullptr, true);
        game->settings->unlockedStage = unlocked;
        game->settings->clearedMask = cleared;
        game->currentStage = current;
        menus().openMenu(MenuKind::levelSelect);
        frames(1);
        return top<LevelSelectMenu>();
    }
    std::vector<int> kinds() {
        std::vector<int> found;
        for (const auto& menu : menus().menus)
            found.push_back(menu->kind);
        return found;
    }
    // Somewhere on the screen where the item is.
    Vec2 screenPlace(const MapBoard& board, int item) {
        for (float y = 0; y < 1; y += 0.01f)
            for (float x = 0; x < 1; x += 0.01f)
                if (board.itemAt({x, y}) == item) return {x + 0.02f, y + 0.03f};
        ADD_FAILURE() << "nowhere on the screen: item " << item;
        return {};
    }
    void click(const Vec2& place) {
        managers->controllerManager->mouseX = place.x;
        managers->controllerManager->mouseY = place.y;
        press(platform::mouseLeftCode);
    }
    float fade() { return game->camera()->fade; }
    void killHero() {
        Thingy& hero = *actors(GROUP_PLAYER).front();
        hero.teleport({0, -5000, 0}); // below every camera area
        frames(1);
    }
};

constexpr int enter = platform::key::enter, left = platform::key::left, right = platform::key::right;
constexpr int down = platform::key::down, escape = platform::key::escape;

} // namespace

TEST_F(JourneyTest, SheetsHoldFiveStagesAndTheirWay) {
    const std::pair<std::pair<int, int>, std::vector<int>> ways[] = { // page and unlocked stage; where it leads
        {{0, 4}, {0, 1, 2, 3, 4}}, {{1, 12}, {4, 5, 6, 7, 8, 9, 10}}, {{3, 19}, {14, 15, 16, 17, 18, 19}}};
    for (const auto& [sheet, expected] : ways) {
        std::vector<int> leadTo;
        for (const MapItem& item : MapPage::items(sheet.first, sheet.second))
            leadTo.push_back(item.stage);
        EXPECT_EQ(leadTo, expected);
    }
    EXPECT_EQ(MapPage::items(0, 5).back().corner.x, 120);
    const std::pair<int, const char*> icons[] = {{3, "open"}, {4, "fifth"}, {5, "cleared"}, {9, "locked"}};
    for (const auto& [stage, name] : icons)
        EXPECT_STREQ(MapPage::icon(stage, 7, 1 << 5), name) << stage;
}

TEST_F(JourneyTest, KeysWalkOverTheMapAndDownToTheWayOut) {
    LevelSelectMenu& map = openMap(6, 3, 4);
    const MapBoard& board = map.board();
    EXPECT_EQ(map.selectedStage(), 4);
    EXPECT_FALSE(board.marker().visible || board.caption().visible);
    EXPECT_EQ(board.items().size(), 6u);
    press(right); // onto the second sheet
    EXPECT_EQ(map.selectedStage(), 5);
    EXPECT_EQ(board.items().front().stage, 4);
    EXPECT_TRUE(board.marker().visible && board.caption().visible);
    EXPECT_EQ(board.caption().text(), "STAGE_6");
    press(right);
    press(right); // no farther than what is unlocked
    EXPECT_EQ(map.selectedStage(), 6);
    press(down);
    EXPECT_TRUE(map.backChosen());
    EXPECT_FALSE(board.marker().visible);
    press(left); // nothing, beside BACK
    EXPECT_EQ(map.selectedStage(), 6);
    openMap(25, 0, 22); // as a file may say
    EXPECT_EQ(top<LevelSelectMenu>().selectedStage(), 19);
    openMap(-3, 0, 4);
    EXPECT_EQ(top<LevelSelectMenu>().selectedStage(), 0);
    press(escape);
    frames(0.36f * second);
    EXPECT_TRUE(menus().isOpen(MenuKind::levelSelect));
    frames(0.1f * second);
    EXPECT_TRUE(menus().empty());
}

TEST_F(JourneyTest, TheMouseShootsAtWhatIsUnlockedAndThePencilRubsTheSheetIn) {
    renderer().aspect = 4.0f / 3;
    LevelSelectMenu& map = openMap(6, 0, 0);
    const MapBoard& board = map.board();
    frames(0.36f * second);
    EXPECT_EQ(board.erased(), 1);
    frames(0.2f * second);
    EXPECT_NEAR(board.itemOpacity(1), 5 * (1 - board.erased()) - 0.3f, 1e-4f);
    EXPECT_NEAR(board.pathOpacity(1), 5 * (1 - board.erased()) - 0.45f, 1e-4f);
    click(screenPlace(board, 5)); // the arrow
    EXPECT_EQ(map.selectedStage(), 5);
    EXPECT_GT(board.erased(), 0.9f);
    click(screenPlace(board, 3)); // locked
    click(screenPlace(board, 0)); // and back
    EXPECT_EQ(map.selectedStage(), 4);
    click(screenPlace(board, 1));
    frames(0.2f * second);
    EXPECT_TRUE(menus().isOpen(MenuKind::levelStart));
    EXPECT_EQ(game->currentStage, 1);
}

TEST_F(JourneyTest, StagesChangeInTheDark) {
    const Session* before = game->session.get();
    menus().openMenu(MenuKind::options);
    game->goToStage(7);
    EXPECT_EQ(game->currentStage, 7);
    frames(0.4f * second);
    EXPECT_NEAR(fade(), 0.8f, 1e-4f);
    EXPECT_FALSE(top<LevelStartMenu>().pausesGame());
    EXPECT_EQ(game->session.get(), before);
    timer("game").paused = 1;
    frames(0.1f * second + 1);
    EXPECT_EQ(kinds(), std::vector<int>{MenuKind::levelStart});
    EXPECT_EQ(game->session->stage, 7);
    EXPECT_EQ(fade(), 1);
    frames(1);
    EXPECT_EQ(timer("game").paused, 0);
    frames(1);
    EXPECT_TRUE(top<LevelStartMenu>().pausesGame());
    frames(0.7f * second);
    EXPECT_EQ(fade(), 0);
    EXPECT_TRUE(menus().empty());

    game->restartTransition(); // the title outlives the closing of what was open before it
    frames(0.6f * second);
    EXPECT_EQ(kinds(), (std::vector<int>{MenuKind::levelStart, MenuKind::title}));
    frames(second);
    EXPECT_EQ(kinds(), std::vector<int>{MenuKind::title});
}

TEST_F(JourneyTest, TheRunningStageGoesOnWhenItIsChosenAgain) {
    game->currentStage = 3;
    game->startSession();
    const Session* running = game->session.get();
    menus().openMenu(MenuKind::title);
    frames(2);
    game->goToStage(3);
    frames(1.5f * second);
    EXPECT_TRUE(menus().empty());
    EXPECT_EQ(game->session.get(), running);
    game->currentStage = 0; // but the first begins anew
    game->goToStage(0);
    EXPECT_TRUE(menus().isOpen(MenuKind::levelStart));
}

TEST_F(JourneyTest, DeathShowsTheHeroAndRestartsTheStage) {
    frames(20);
    const Session* session = game->session.get();
    killHero();
    const float playedFor = session->time;
    EXPECT_GT(playedFor, 0);
    ASSERT_EQ(kinds(), std::vector<int>{MenuKind::death});
    frames(5);
    const MenuCameraPose pose = top<DeathMenu>().cameraPose();
    EXPECT_NEAR(pose.weight, 5.5f * 0.1f, 0.12f);
    EXPECT_NEAR(pose.position.z, 60, 0.1f);
    frames(0.4f * second);
    EXPECT_EQ(fade(), 0); // it waits
    EXPECT_EQ(session->time, playedFor);
    timer("game").paused = 1;
    frames(0.7f * second);
    EXPECT_EQ(game->session.get(), session);
    EXPECT_EQ(top<DeathMenu>().cameraPose().weight, 0);
    EXPECT_NEAR(actors(GROUP_PLAYER).front()->position().y, 5, 3); // a new one, in his place
    EXPECT_GT(fade(), 0.5f);
    EXPECT_NEAR(game->camera()->view.position.y, 5, 30); // and in the picture from its first light on
    EXPECT_EQ(timer("game").paused, 0);
    frames(second);
    EXPECT_TRUE(menus().empty());
    EXPECT_EQ(fade(), 0);
    EXPECT_LT(session->time, 0.6f);

    menus().openMenu(MenuKind::stageClear); // who has done it may fall
    killHero();
    EXPECT_EQ(kinds(), std::vector<int>{MenuKind::stageClear});
}

TEST_F(JourneyTest, AClearedStageLeadsOn) {
    game->currentStage = 4;
    menus().openMenu(MenuKind::stageClear);
    EXPECT_EQ(game->settings->clearedMask, 1 << 4);
    EXPECT_EQ(game->settings->unlockedStage, 5);
    frames(0.5f * second);
    press(enter); // too early
    EXPECT_EQ(kinds(), std::vector<int>{MenuKind::stageClear});
    frames(0.6f * second);
    press(enter);
    EXPECT_TRUE(menus().isOpen(MenuKind::levelStart));
    EXPECT_EQ(game->currentStage, 5);
    frames(2 * second);
    menus().openMenu(MenuKind::stageClear);
    frames(2.24f * second);
    EXPECT_EQ(game->currentStage, 5);
    frames(0.1f * second);
    EXPECT_EQ(game->currentStage, 6); // by itself
    frames(2 * second);

    game->currentStage = 19; // the end of the journey
    menus().openMenu(MenuKind::stageClear);
    EXPECT_EQ(game->settings->unlockedStage, 19);
    frames(4 * second);
    EXPECT_EQ(kinds(), std::vector<int>{MenuKind::title});
    EXPECT_EQ(game->session->stage, 19);
}

TEST_F(JourneyTest, APauseWaitsUntilItCanBe) {
    timer("game").paused = 1; // as while the view travels
    game->pauseSoon();
    frames(3);
    EXPECT_TRUE(menus().empty());
    timer("game").paused = 0;
    frames(1);
    EXPECT_EQ(kinds(), std::vector<int>{MenuKind::pause});
}
