// The stage map on its board: the sheet, which a pencil rubs in, the way over it, the marker and the caption.
#pragma once

#include "frontend/MapPage.h"
#include "frontend/MenuInput.h"
#include "frontend/MenuManager.h"

#include <string>

namespace Zelkor {
class Unit;
} // namespace Zelkor

class MapBoard {
  public:
    explicit MapBoard(MenuManager& manager);
    ~MapBoard();
    MapBoard(const MapBoard&) = delete;

    // Clears the sheet for the page, whose way and picture will have to be revealed.
    void show(int page, int unlockedStage, int clearedMask);
    // Rubs in picture and way by so many seconds.
    void reveal(float dt);
    // Where the lower left corner of the sheet comes to lie.
    void place(const Zelkor::Vec3& corner);
    const std::vector<MapItem>& items() const { return items_; }
    // The item that the screen shows at that place, -1 for none.
    int itemAt(const Zelkor::Vec2& screen) const;
    // angle: radians.
    void showMarker(const MapItem& item, float angle, bool visible);
    void showCaption(const std::string& text, bool visible);
    // A bullet hole in the middle of the item.
    void hit(const MapItem& item, float angle);
    const Zelkor::GuiObject& marker() const { return *marker_; }
    const Zelkor::GuiObject& caption() const { return *caption_; }
    // 1: the sheet is bare, 0: all is drawn.
    float erased() const { return erased_; }
    // Of an item and of the path behind it: 0..1.
    float itemOpacity(std::size_t item) const;
    float pathOpacity(std::size_t item) const;

  private:
    void addPath(const MapItem& from, const MapItem& to);
    void addItem(const MapItem& item, const char* icon);
    void showProgress();

    MenuManager& manager_;
    Zelkor::Unit* sheet_;         // of the manager's scene
    MenuPanel panel_;
    Zelkor::GuiPanel* way_ = nullptr; // the rest of the page: paths, icons, holes
    Zelkor::GuiObject *marker_, *caption_;
    std::vector<MapItem> items_;
    std::vector<Zelkor::GuiObject*> icons_, paths_; // a path behind each icon but the last
    float erased_ = 1, clock_ = 0;                  // clock: seconds of revealing
};
