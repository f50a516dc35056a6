// What the player asks of a menu in one update substep, with keys, pad or mouse.
#pragma once

#include "math/Math.h"

struct MenuInput {
    // Nothing asked, the mouse far away: for menus that are covered or closing.
    static MenuInput none() { return {}; }
    static MenuInput read();

    // The stick has just gone beyond half of its way.
    bool up = false, down = false, left = false, right = false;
    float stickX = 0; // as it is
    // Just pressed.
    bool accept = false, back = false, start = false, click = false;
    bool mouseHeld = false;                // the left button
    Zelkor::Vec2 mouse{-1000, -1000}; // fractions of the screen, y down
};

// A place that the mouse can click: armed by a press over it, clicked by letting go over it.
class ClickArea {
  public:
    // True when it is clicked.
    bool update(const MenuInput& input, bool hovered);
    // Armed, with the mouse over it.
    bool active() const { return armed_ && hovered_; }
    bool hovered() const { return hovered_; }

  private:
    bool armed_ = false, hovered_ = false;
};

struct MenuRect {
    float left = 0, top = 0, right = 0, bottom = 0; // y down
    bool contains(const Zelkor::Vec2& p) const {
        return p.x >= left && p.x <= right && p.y >= top && p.y <= bottom;
    }
};

// Which button of a column the keys have chosen.
struct MenuSelection {
    int index = 0;
    bool shown = false; // only after the first move

    void move(const MenuInput& input, int count);
};

inline constexpr Zelkor::Vec4 plainLabel{1, 1, 1, 1}, highlightedLabel{1, 0.7f, 0.7f, 1};
