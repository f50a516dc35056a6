// One running stage.
#pragma once

#include "resources/Scene.h"

#include <memory>
#include <string>
#include <vector>

class EventList;
class GameCamera;
class ThingyManager;
class TileGrid;

// "level" and three digits: "level007".
std::string stageFileName(int stage);

class Session {
  public:
    explicit Session(ThingyManager& thingyManager);
    ~Session();
    Session(const Session&) = delete;

    // Loads the stage and starts its events. Called once.
    void start(int stage);
    // As start, of a stage whose files have the given name.
    void start(int stage, const std::string& fileName);
    // One step of the stage. Reads its timers, the input and the random source and nothing else. dt: delta of
    // the timer "game".
    void update(float dt);
    // The same stage from its beginning, in the same session.
    void restart();

    ThingyManager& thingyManager;
    Zelkor::Scene scene;
    std::vector<Zelkor::Unit*> levelUnits;
    std::unique_ptr<TileGrid> tileGrid;
    std::unique_ptr<GameCamera> camera;
    std::unique_ptr<EventList> eventList;
    float gravityFactor = 1;
    float time = 0; // seconds played with no menu open
    int stage = 0;
    bool restartRequested = false; // at the end of the next update

  private:
    void setUpView();

    std::string fileName_;
};
