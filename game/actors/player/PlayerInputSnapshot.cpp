#include "actors/player/PlayerInputSnapshot.h"

#include "frontend/MenuManager.h"

const Zelkor::PlayerInput& PlayerInputSnapshot::device() const {
    static const Zelkor::PlayerInput atRest;
    return menus_ && menus_->isOpen(MenuKind::title) ? atRest : *device_;
}

bool PlayerInputSnapshot::down(std::uint32_t mask) const {
    return ((overridden ? overrideButtons : device().buttons) & mask) != 0;
}

bool PlayerInputSnapshot::pressed(std::uint32_t mask) const {
    const std::uint32_t previous = overridden ? overridePreviousButtons : device().previousButtons;
    return down(mask) && (previous & mask) == 0;
}

Zelkor::Vec2 PlayerInputSnapshot::direction() const {
    const Zelkor::Vec3& stick = overridden ? overrideStick : device().move;
    return {dot(mapping[0], stick), dot(mapping[1], stick)};
}
