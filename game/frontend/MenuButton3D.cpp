#include "frontend/MenuButton3D.h"

#include "audio/AudioManager.h"
#include "core/EngineManagers.h"
#include "frontend/MenuText.h"

#include <algorithm>
#include <cmath>

using namespace Zelkor;

namespace {

// Towards the viewer while highlighted: units, and shares of the way to the middle of the view.
constexpr float pull = 15, pullAside = 0.05f, middleOfView = 50;
constexpr float labelLift = 0.6f;    // before the mesh's face, clear of its outline
constexpr float labelShare = 0.77f;  // of the mesh's width that a label may take
constexpr Vec3 shadowFrom{0.35f, 0.4f, 0};
constexpr Vec4 shadowColour{0, 0, 0, 0.75f};
constexpr float letterMiddle = 0.5f; // of a line's height, where its capitals have theirs

} // namespace

MenuButton3D::MenuButton3D(MenuManager& manager, const Design& design)
    : manager_(manager), unit_(manager.menuScene.createUnit(design.mesh)), panel_(manager),
      shadow_(*panel_.root().createChild(GuiKind::panel, 0, 0, 0, 1, 1)),
      label_(*panel_.root().createChild(GuiKind::panel, 0, 0, 0, 1, 1)), sound_(design.sound),
      rest_(design.rest), labelTurn_(design.labelTurn) {
    writeLabel(design);
    show(false);
}

// A shadow, then the letters, gone over twice like the chalk of a sign that must be read from afar.
void MenuButton3D::writeLabel(const Design& design) {
    auto& letters = static_cast<GuiPanel&>(label_);
    GuiObject* const texts[] = {&sceneText(static_cast<GuiPanel&>(shadow_), "MENUFONT", design.label, {}, design.labelHeight),
                                &sceneText(letters, "MENUFONT", design.label, {}, design.labelHeight),
                                &sceneText(letters, "MENUFONT", design.label, {}, design.labelHeight)};
    const float room = labelShare * (unit_->mesh->boxMax.x - unit_->mesh->boxMin.x);
    const float extent = textExtent(*texts[0]);
    const float height = room > 0 && extent > room ? design.labelHeight * room / extent : design.labelHeight;
    for (GuiObject* text : texts) {
        text->setTextParam(height);
        text->position = {-textExtent(*text) / 2, -height * letterMiddle, 0};
    }
    labelSize_ = {textExtent(*texts[0]), height};
    shadow_.position = shadowFrom;
    shadow_.colour = shadowColour;
}

MenuButton3D::~MenuButton3D() {
    manager_.menuScene.removeUnit(unit_);
}

void MenuButton3D::place(const Vec3& rest, float angle) {
    rest_ = rest;
    angle_ = angle;
}

MenuRect MenuButton3D::screenRectangle() const {
    Vec3 low = unit_->mesh->boxMin, high = unit_->mesh->boxMax;
    if (low == high) { // without a mesh the label is all there is to click
        high = {labelSize_.x / 2, labelSize_.y / 2, 0};
        low = -high;
    }
    const Quat turn = quatFromAxisAngle(angle_, {0, 0, 1});
    MenuRect rectangle{1e9f, 1e9f, -1e9f, -1e9f};
    for (int corner = 0; corner < 8; ++corner) {
        Vec3 point{corner & 1 ? high.x : low.x, corner & 2 ? high.y : low.y, corner & 4 ? high.z : low.z};
        const Vec3 screen = manager_.menuCamera.project(rest_ + quatRotate(point, turn, point));
        rectangle.left = std::min(rectangle.left, screen.x);
        rectangle.right = std::max(rectangle.right, screen.x);
        rectangle.top = std::min(rectangle.top, screen.y);
        rectangle.bottom = std::max(rectangle.bottom, screen.y);
    }
    return rectangle;
}

bool MenuButton3D::update(const MenuInput& input, bool selected, bool shown) {
    const bool clicked = !disabled && area_.update(input, screenRectangle().contains(input.mouse));
    const bool activated = clicked || (selected && input.accept);
    show(!activated && (area_.active() || (selected && shown)));
    if (activated && !sound_.empty()) engineManagers()->audioManager->playSound(sound_, 1);
    return activated;
}

void MenuButton3D::show(bool highlighted) {
    Vec3 position = rest_;
    if (highlighted) position += {-rest_.x * pullAside, (middleOfView - rest_.y) * pullAside, pull};
    unit_->position = position;
    unit_->orientation = quatFromAxisAngle(angle_, {0, 0, 1});
    Vec3 front{0, 0, unit_->mesh->boxMax.z + labelLift};
    panel_.place(position + front, angle_ + labelTurn_);
    label_.colour = highlighted ? highlightedLabel : plainLabel;
}
