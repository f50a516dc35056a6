// A screen of the front end: what lies on the stack of the menu manager.
#pragma once

#include "gui/GuiWorkspace.h"
#include "math/Math.h"

#include <memory>
#include <string>
#include <variant>

namespace MenuKind {
inline constexpr int title = 0;
inline constexpr int options = 1;
inline constexpr int levelSelect = 2;
inline constexpr int levelStart = 3;
inline constexpr int popup = 5;
inline constexpr int buttonAssign = 6;
inline constexpr int startLoad = 7;
inline constexpr int stageClear = 8;
inline constexpr int pause = 9;
inline constexpr int death = 10;
inline constexpr int introCutscene = 11;
inline constexpr int spaceCutscene = 12;
inline constexpr int endingCutscene = 13;
} // namespace MenuKind

// Where a menu wants the stage's camera.
struct MenuCameraPose {
    float weight = 0; // 0..1 of the view; at 0 the rest says nothing
    Zelkor::Vec3 position;
    Zelkor::Quat orientation;
};

class MenuBase {
  public:
    explicit MenuBase(int ownKind);
    virtual ~MenuBase();
    MenuBase(const MenuBase&) = delete;

    // Once per update substep. total and dt: of the timer "main", seconds. isTop: it is the last of the stack.
    virtual void update(double total, float dt, bool isTop) = 0;
    // Begins to close: it lives until it has set closed.
    virtual void close() { closed = true; }
    // Whether the stage stands still while it is open.
    virtual bool pausesGame() const { return true; }
    virtual MenuCameraPose cameraPose() const { return {}; }

    bool closed = false; // finished; the manager deletes it after its update
    const int kind;      // a MenuKind
    // The flat things of the menu, over the whole screen.
    std::unique_ptr<Zelkor::GuiScreenWorkspace> workspace;
};

// What a menu is opened with: nothing, a text, or a slot of the bindings.
using MenuArgument = std::variant<std::monostate, std::string, int>;

// How a menu makes itself known: a constant of this type in its own file adds its row to the table of openMenu.
//     const MenuRow row{MenuKind::title, createMenu<TitleMenu>};
struct MenuRow {
    // Null when the argument is not what the menu needs.
    using Create = std::unique_ptr<MenuBase> (*)(const MenuArgument&);
    // kind: no other class has it.
    MenuRow(int kind, Create create);
};
inline constexpr int lastMenuKind = 13;

template <class Menu>
std::unique_ptr<MenuBase> createMenu(const MenuArgument&) {
    return std::make_unique<Menu>();
}

// Of a menu that cannot be opened without its argument.
template <class Menu, class Argument>
std::unique_ptr<MenuBase> createMenuWith(const MenuArgument& argument) {
    const auto* given = std::get_if<Argument>(&argument);
    return given ? std::make_unique<Menu>(*given) : nullptr;
}
