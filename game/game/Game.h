// The single object of the game layer.
#pragma once

#include "game/PostChain.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace Zelkor {
class GuiScreenWorkspace;
}
class EventList;
class GameCamera;
class MenuManager;
class Session;
class Settings;
class ThingyManager;
class TileGrid;

class Game {
  public:
    static constexpr int stageCount = 20;

    // Registers itself as the game that get() answers, and the timers "game", "paused", "boss" and "player".
    // The loading screen is open. The managers must exist. settingsFolder: where options and progress are loaded from, and saved to when the
    // game ends; none keeps them in memory.
    explicit Game(std::optional<std::filesystem::path> settingsFolder = {});
    ~Game();
    Game(const Game&) = delete;

    // The game, created if it does not exist yet.
    static Game& get();
    // Null when none exists.
    static Game* current();

    // One pass of the main loop: substeps, drawing, input's end of frame.
    void runFrame();
    // What every stage needs, so that nothing is read from disk while it plays. Missing files are left out.
    void loadSharedAssets();
    // That, the session of currentStage, and the title over it.
    void preloadAssets();
    // Straight into play, with no menu open.
    void startWithoutMenus();
    // Replaces the session by one for currentStage.
    void startSession();
    // From the stage map, or from a stage that has been cleared: the stage that runs goes on, with its music, unless it
    // is the first; any other begins after a fade.
    void goToStage(int stage);
    // Fades out, and in to the title over a new session of currentStage.
    void restartTransition();
    // The pause menu, as soon as it can be opened; nothing if another menu is open by then.
    void pauseSoon() { pauseWanted_ = true; }

    // Those of the running session, null without one.
    TileGrid* tileGrid() const;
    GameCamera* camera() const;
    EventList* eventList() const;

    // What the player has to see of his hero, such as the health bar.
    std::unique_ptr<Zelkor::GuiScreenWorkspace> playerDisplay;
    std::unique_ptr<MenuManager> menuManager;
    std::unique_ptr<ThingyManager> thingyManager;
    std::unique_ptr<Settings> settings;
    std::unique_ptr<Session> session;
    bool quitRequested = false;
    std::string musicName; // to go on with when the running stage is chosen again; set by the title
    int currentStage = 0;
    std::string stageFile; // played in place of currentStage while it is not empty
    PostChain postChain;

  private:
    void runSubsteps();
    void gameStep();
    void render();
    void renderGui();
    void flickerSketch();

    bool pauseWanted_ = false;
    float flickerTimer_ = 0; // seconds since the sketch was last redrawn
};
