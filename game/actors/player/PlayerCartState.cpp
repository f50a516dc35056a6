#include "actors/player/PlayerCartState.h"

#include "actors/ThingyManager.h"
#include "actors/player/HeroClips.h"
#include "actors/player/HeroConstants.h"
#include "actors/player/PlayerStandard.h"
#include "actors/rides/Minecart.h"
#include "resources/Unit.h"

#include <algorithm>

using namespace Zelkor;

namespace {

constexpr float centreRate = 50; // units per second, to the middle of the cart
constexpr float rollShare = 0.85f; // of the cart's tilt
constexpr float boardBelow = 3, boardAbove = 10; // feet from the floor
constexpr float thrownSpeed = 45, thrownUpSpeed = 85; // out of a stopped cart, over a wall of one cell

} // namespace

Minecart* PlayerCartState::cartToRide(PlayerStandard& hero) {
    Minecart* cart = hero.actors() ? hero.actors()->nearestOf<Minecart>(GROUP_RIDES, hero.position()) : nullptr;
    if (!cart || cart->stopped()) return nullptr;
    const Vec3 feet = hero.feet();
    const float aside = feet.x - cart->position().x, above = feet.y - cart->top();
    if (absolute(aside) >= Minecart::halfWidth || above <= -Minecart::depth || above > boardAbove)
        return nullptr;
    // To the top, below, to the left and to the right.
    const Vec3 ways[] = {{0, -above, 0},
                         {0, -above - Minecart::depth, 0},
                         {-Minecart::halfWidth - aside, 0, 0},
                         {Minecart::halfWidth - aside, 0, 0}};
    const Vec3& nearest = *std::min_element(
        std::begin(ways), std::end(ways), [](const Vec3& a, const Vec3& b) { return length(a) < length(b); });
    if (&nearest == &ways[0] && above >= -boardBelow) return cart;
    if (above < 0) hero.bodyCentre += nearest;
    return nullptr;
}

void PlayerCartState::enter(float /*time*/, int /*previousState*/) {
    hero.cart = cart;
    fallSpeed_ = std::max(-hero.velocity.y, 0.0f);
    hero.velocity = {};
    offset_ = hero.feet() - Vec3{cart->position().x, cart->top(), 0};
    offset_.z = 0;
    hero.facing = 1;
    hero.aimAngle = pi / 2;
    playClip(*hero.unit, HeroClips::idle);
}

void PlayerCartState::leave(float /*time*/) {
    hero.cart = cart = nullptr;
    hero.targetRoll = 0;
}

void PlayerCartState::update(float /*time*/, float dt) {
    if (!hero.actors() || !hero.actors()->contains(GROUP_RIDES, cart)) {
        playClip(*hero.unit, HeroClips::fall);
        hero.changeState(inAir);
        return;
    }
    if (!hero.dead && hero.input.pressed(PlayerInputSnapshot::fire) && hero.fire(false))
        playClip(*hero.unit, HeroClips::idleRecoil);
    const bool jumps = !hero.dead && hero.input.pressed(PlayerInputSnapshot::jump);
    if (jumps && cart->onRails()) playClip(*hero.unit, HeroClips::cartJump);
    const bool flew = !cart->onRails();
    cart->drive(dt, jumps, hero.input.down(PlayerInputSnapshot::jump), hero.gravity, hero.heldJumpGravity);
    if (flew && cart->onRails()) playClip(*hero.unit, HeroClips::cartLand);
    if (cart->stopped()) {
        throwOut();
        return;
    }
    fallInto(dt);
    hero.targetRoll = hero.rollAngle = cart->tilt * rollShare;
    const Vec3 feet = Vec3{cart->position().x, cart->top(), 0} + offset_;
    hero.standAt(feet);
    hero.skipTileCollision = true;
    hero.updateCameraOffset(1, dt);
}

void PlayerCartState::fallInto(float dt) {
    offset_.x = moveTowards(offset_.x, 0, centreRate * dt);
    fallSpeed_ += hero.gravity * dt;
    offset_.y = std::max(offset_.y - fallSpeed_ * dt, 0.0f);
    if (offset_.y == 0) fallSpeed_ = 0;
}

// The cart has run into a wall; he goes over it.
void PlayerCartState::throwOut() {
    playClip(*hero.unit, HeroClips::fall);
    hero.changeState(inAir);
    hero.velocity = {thrownSpeed, thrownUpSpeed, 0};
}
