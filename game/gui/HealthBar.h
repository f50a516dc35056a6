// A thin upright bar at the right edge of the screen: the health of the hero, or of a boss.
#pragma once

namespace Zelkor {
class GuiObject;
class GuiPanel;
} // namespace Zelkor

class HealthBar {
  public:
    static constexpr float fullHeight = 0.65f; // of the screen

    // The bar is a child of parent, which must outlive it. Hidden at first.
    explicit HealthBar(Zelkor::GuiPanel& parent);
    ~HealthBar();
    HealthBar(const HealthBar&) = delete;

    // From now on; filling: it grows from nothing to what it has to show.
    void show(bool filling);
    void hide();
    // share: health / full health; seconds.
    void update(float share, float dt);
    bool visible() const;
    // Drawn, of the screen.
    float height() const;

  private:
    Zelkor::GuiPanel& parent_;
    Zelkor::GuiObject& bar_;
    float shown_ = 1; // share
    bool filling_ = false;
};
