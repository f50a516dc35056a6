// One page of the options: rows on a panel, of which keys choose one.
#pragma once

#include "frontend/MenuManager.h"
#include "frontend/MenuWidgets.h"

#include <memory>
#include <vector>

class OptionsPage {
  public:
    enum Kind { soundPage, inputPage, graphicsPage, profilerPage };

    OptionsPage(MenuManager& manager, Kind kind);

    // Where the board's upper left corner is now.
    void place(const Zelkor::Vec3& corner, float angle);
    // focused: the keys are on this page. True when an item was activated, which is then the selected one.
    bool update(const MenuInput& input, float dt, bool focused);
    // The selected item, or another that is clicked, keeps left and right for itself.
    bool editing() const;

    std::vector<std::unique_ptr<MenuWidget>> items; // on the panel
    int selected = 0;
    MenuPanel panel;
};
