// A board in the menus' scene with its label, to be clicked or chosen with keys.
#pragma once

#include "frontend/MenuInput.h"
#include "frontend/MenuManager.h"

#include <string>

namespace Zelkor {
class Unit;
}

class MenuButton3D {
  public:
    // The mesh's origin comes to lie on rest. The label is centred on the mesh, its lines of that height, or less
    // if it would stick out.
    struct Design {
        std::string mesh;
        std::string label;
        Zelkor::Vec3 rest;
        std::string sound = "fullballoon"; // of a click; empty for none
        float labelHeight = 8;
        float labelTurn = 0; // radians, counterclockwise
    };

    MenuButton3D(MenuManager& manager, const Design& design);
    ~MenuButton3D();
    MenuButton3D(const MenuButton3D&) = delete;

    // selected: the keys have chosen it, and accept activates it; shown: and it looks so. True when activated.
    bool update(const MenuInput& input, bool selected, bool shown);
    // Moves its place of rest; angle: about the depth axis, radians.
    void place(const Zelkor::Vec3& rest, float angle = 0);
    // Of the label, 0..1.
    void setOpacity(float opacity) { panel_.root().colour.w = opacity; }
    const Zelkor::Vec4& labelColour() const { return label_.colour; }
    // On the screen, at rest.
    MenuRect screenRectangle() const;

    bool disabled = false;

  private:
    void writeLabel(const Design& design);
    void show(bool highlighted);

    MenuManager& manager_;
    Zelkor::Unit* unit_; // of the manager's scene
    MenuPanel panel_;
    Zelkor::GuiObject& shadow_;
    Zelkor::GuiObject& label_; // the letters, without their shadow
    Zelkor::Vec2 labelSize_;
    std::string sound_;
    Zelkor::Vec3 rest_;
    float angle_ = 0, labelTurn_ = 0;
    ClickArea area_;
};
