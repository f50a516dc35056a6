// The stack of open menus: what lies on it decides whether the stage runs, what the camera shows and where input
// goes.
#pragma once

#include "frontend/MenuBase.h"
#include "game/PostChain.h"
#include "resources/Scene.h"

#include <memory>
#include <vector>

namespace Zelkor {
class GuiObject;
class GuiSprite;
} // namespace Zelkor

class MenuManager {
  public:
    // playDisplay: what is shown while no menu is open and fades while one is; it must outlive the manager.
    explicit MenuManager(Zelkor::GuiScreenWorkspace& playDisplay);
    ~MenuManager();
    MenuManager(const MenuManager&) = delete;

    // Pushes a new menu of that kind; nothing for kinds without a class, or without the argument they need.
    void openMenu(int kind, const MenuArgument& argument = {});
    void pushMenu(std::unique_ptr<MenuBase> menu);
    // Its flat things cover those of the other menus from now on.
    void raise(const MenuBase& menu);
    // All that are open now but keep, which may be null. Immediately: they are deleted, inside updateMenus right after
    // it has gone through the stack; else they are told to close.
    void closeMenus(const MenuBase* keep, bool immediately);
    // Once per update substep, with the timer "main". True when a menu holds the stage.
    bool updateMenus(double total, float dt);
    // The lowest open menu of that kind, null when there is none.
    MenuBase* find(int kind) const;
    bool isOpen(int kind) const { return find(kind) != nullptr; }
    bool empty() const { return menus.empty(); }
    // What the open menus together want of the stage's camera.
    MenuCameraPose cameraPose() const;
    // Over the picture of the stage. rectangle: a part of the current target, in fractions from its lower left.
    void drawMenus(float aspect, const PostChain::Area& rectangle);
    // A point of menuScene as the screen shows it: fractions, y down.
    Zelkor::Vec3 project(const Zelkor::Vec3& point) const { return menuCamera.project(point); }
    // The way from the menus' camera through a point of the screen, to its end at a distance of 1.
    Zelkor::Vec3 rayThrough(float screenX, float screenY) const;

    std::vector<std::unique_ptr<MenuBase>> menus; // bottom first
    // What is shown in play, and what is shown in menus: their opacities always add up to 1.
    Zelkor::GuiObject& playLayer;
    Zelkor::GuiObject& menuLayer;
    Zelkor::GuiSprite& cursor;
    // What menus show in three dimensions: at z = 0 the camera sees y = 0 to 100, and on narrow
    // screens some more.
    Zelkor::Scene menuScene;
    Zelkor::Camera menuCamera;

  private:
    friend class MenuPanel;

    MenuManager(Zelkor::GuiScreenWorkspace& playDisplay, std::unique_ptr<Zelkor::GuiScreenWorkspace> own);
    void deleteMenus(const MenuBase* keep);
    void deleteDoomed();
    void fadeLayers(float dt);
    void updateCursor();
    void fitCamera(float aspect);

    std::unique_ptr<Zelkor::GuiScreenWorkspace> workspace_; // of menuLayer and cursor
    std::vector<Zelkor::GuiSceneWorkspace*> panels_;        // drawn in this order, over menuScene
    bool updating_ = false;
    std::vector<const MenuBase*> doomed_; // to be deleted after the update
};

// Flat things in menuScene: labels and pages. x to the right and y down, in units of the scene; what comes later
// covers what comes before, if all have z = 0. Drawn while it lives.
class MenuPanel {
  public:
    explicit MenuPanel(MenuManager& manager);
    ~MenuPanel();
    MenuPanel(const MenuPanel&) = delete;

    // Its origin, and the rotation about the depth axis (radians, counterclockwise).
    void place(const Zelkor::Vec3& position, float angle = 0);
    // The point of the panel that the screen shows at that place.
    Zelkor::Vec2 pointAt(float screenX, float screenY) const;
    Zelkor::GuiPanel& root() { return workspace_.root; }

  private:
    MenuManager& manager_;
    Zelkor::GuiSceneWorkspace workspace_;
    float angle_ = 0;
};
