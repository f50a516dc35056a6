// Panels own their children and lend them their place, rotation, colour and visibility.
#pragma once

#include "gui/GuiObject.h"

namespace Zelkor {

class GuiSprite;

class GuiPanel : public GuiObject {
  public:
    GuiPanel(const Vec3& at, float wide, float high)
        : GuiObject(GuiKind::panel, at, wide, high) {}

    const GuiChildren* children() const override { return &children_; }
    GuiObject* createChild(GuiKind what, float x, float y, float z, float wide, float high) override;
    void removeChild(const GuiObject* object) override;
    void deleteChildren() override { children_.clear(); }
    // Slot 20: a child with texture and size of the named definition; one of no size when it is missing.
    virtual GuiSprite* createSprite(const std::string& definition, const Vec3& at);

  private:
    GuiChildren children_;
};

// Shows a second list in place of its children.
class GuiPanelList final : public GuiPanel {
  public:
    using GuiPanel::GuiPanel;

    const GuiChildren* children() const override { return &listed; }

    GuiChildren listed;
};

} // namespace Zelkor
