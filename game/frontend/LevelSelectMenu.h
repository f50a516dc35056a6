// The stage map: choosing a stage is shooting at it.
#pragma once

#include "frontend/MapBoard.h"
#include "frontend/MenuBase.h"
#include "frontend/MenuButton3D.h"

class LevelSelectMenu final : public MenuBase {
  public:
    LevelSelectMenu();
    void update(double total, float dt, bool isTop) override;
    void close() override;
    bool pausesGame() const override { return false; }

    int selectedStage() const { return selected_; }
    const MapBoard& board() const { return board_; }
    bool backChosen() const { return onBack_; }
    const MenuButton3D& backButton() const { return back_; }

  private:
    void select(int stage);
    void showPage(int page);
    void hang(float dt);
    void handle(const MenuInput& input);
    void handleKeys(const MenuInput& input);
    bool handleMouse(const MenuInput& input);
    void choose(const MapItem& item);
    void shoot();
    void leave();
    bool unlocked(int stage) const;
    const MapItem& selectedItem() const;

    MenuManager& manager_;
    MapBoard board_;
    MenuButton3D back_;
    int page_ = -1;
    int selected_ = 0;       // stage
    bool onBack_ = false;    // the keys are on BACK, not on the map
    bool marked_ = false;    // the keys have moved over the map
    int pressedItem_ = -1;   // that the left button was pressed over
    bool shot_ = false;      // and the stage begins soon
    float untilStart_ = 0;   // seconds, then
    float age_ = 0;          // seconds
    float arrival_ = 0;      // of the board: 0 above the picture .. 1 in its place
    float timeToLive_ = 1;   // seconds, counted once it is closing
    bool closing_ = false;
};
