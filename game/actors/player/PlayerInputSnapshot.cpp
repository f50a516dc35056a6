#include "actors/player/PlayerInputSnapshot.h"

bool PlayerInputSnapshot::down(std::uint32_t mask) const {
    return ((overridden ? overrideButtons : device_->buttons) & mask) != 0;
}

bool PlayerInputSnapshot::pressed(std::uint32_t mask) const {
    const std::uint32_t previous = overridden ? overridePreviousButtons : device_->previousButtons;
    return down(mask) && (previous & mask) == 0;
}

Zelkor::Vec2 PlayerInputSnapshot::direction() const {
    const Zelkor::Vec3& stick = overridden ? overrideStick : device_->move;
    return {dot(mapping[0], stick), dot(mapping[1], stick)};
}
