// What the option pages are made of. Each lies on a panel and is told where the mouse points on it.
#pragma once

#include "frontend/MenuInput.h"

#include <functional>
#include <string>
#include <vector>

namespace Zelkor {
class GuiObject;
class GuiPanel;
class GuiSprite;
} // namespace Zelkor
class MenuManager;

// A row: a label, and what stands to the right of it.
class MenuWidget {
  public:
    static constexpr float textHeight = 6.2f; // units of the panel
    static constexpr float valueAt = 46;      // from the label's left edge to what it is set to

    // at: the upper left corner on the panel.
    MenuWidget(Zelkor::GuiPanel& panel, const std::string& label, const Zelkor::Vec2& at);
    virtual ~MenuWidget() = default;
    MenuWidget(const MenuWidget&) = delete;

    // pointer: where the mouse is on the panel. selected: the keys have chosen it. True when activated, by a click
    // or by accept.
    bool update(const MenuInput& input, const Zelkor::Vec2& pointer, float dt, bool selected);
    // Left and right belong to it.
    bool editing() const { return editing_; }
    void stopEditing() { editing_ = false; }
    const MenuRect& rectangle() const { return rectangle_; }
    const Zelkor::GuiObject& label() const { return label_; }

  protected:
    struct Act {
        const MenuInput& input;
        Zelkor::Vec2 pointer;
        float dt;
        bool clicked, accepted; // accepted: by key or pad
    };
    // Returns whether it was activated.
    virtual bool react(const Act& act) = 0;
    Zelkor::GuiObject& addText(const std::string& text, float x, float y);

    Zelkor::GuiPanel& panel_;
    Zelkor::GuiObject& label_;
    MenuRect rectangle_; // to click
    bool editing_ = false;

  private:
    ClickArea area_;
};

class MenuTextButton final : public MenuWidget {
  public:
    MenuTextButton(Zelkor::GuiPanel& panel, const std::string& label, const Zelkor::Vec2& at,
                   std::function<void()> action);

  protected:
    bool react(const Act& act) override;

  private:
    std::function<void()> action_;
};

class MenuCheckBox final : public MenuWidget {
  public:
    // change is told of every new value.
    MenuCheckBox(Zelkor::GuiPanel& panel, const std::string& label, const Zelkor::Vec2& at, bool value,
                 std::function<void(bool)> change);
    bool value() const { return value_; }

  protected:
    bool react(const Act& act) override;

  private:
    void show();

    Zelkor::GuiSprite& box_;
    bool value_;
    std::function<void(bool)> change_;
};

// One of several choices. Accept begins and ends to choose with left and right, a click takes the next one; behind
// the last comes the first.
class MenuAltButton final : public MenuWidget {
  public:
    // choice outside the choices shows the first. Without choices it shows nothing and changes nothing.
    MenuAltButton(Zelkor::GuiPanel& panel, const std::string& label, const Zelkor::Vec2& at,
                  std::vector<std::string> choices, int choice, std::function<void(int)> change);
    int choice() const { return choice_; }

  protected:
    bool react(const Act& act) override;

  private:
    void step(int by);
    void show();

    Zelkor::GuiObject& value_;
    std::vector<std::string> choices_;
    int choice_;
    std::function<void(int)> change_;
};

// Shows what is bound in a slot of the bindings, and asks for another.
class MenuKeyBindBtn final : public MenuWidget {
  public:
    MenuKeyBindBtn(Zelkor::GuiPanel& panel, const std::string& label, const Zelkor::Vec2& at, int slot);

  protected:
    bool react(const Act& act) override;

  private:
    Zelkor::GuiObject& name_;
    int slot_;
};

// A value of 0..1 under its label. Accept begins and ends to move it with the stick, the mouse drags it.
class MenuSlider final : public MenuWidget {
  public:
    MenuSlider(Zelkor::GuiPanel& panel, const std::string& label, const Zelkor::Vec2& at, float value,
               std::function<void(float)> change);
    float value() const { return value_; }
    const MenuRect& bar() const { return bar_; }

  protected:
    bool react(const Act& act) override;

  private:
    void set(float value);
    void show();

    MenuRect bar_;
    Zelkor::GuiSprite &empty_, &full_; // the bar, and as much of it as the value is
    float value_;
    bool dragging_ = false;
    std::function<void(float)> change_;
};

// A picture that stirs under the mouse.
class MenuButton {
  public:
    // Upper left corner and height in units of the panel; shape: width over height.
    MenuButton(Zelkor::GuiPanel& panel, const std::string& sprite, const Zelkor::Vec2& at, float height,
               float shape);
    // True when clicked.
    bool update(const MenuInput& input, const Zelkor::Vec2& pointer, float shape);
    bool hovered() const { return area_.hovered(); }

  private:
    Zelkor::GuiSprite& sprite_;
    ClickArea area_;
};
