#include "actors/player/HeldGun.h"

#include "animation/SkeletonInstance.h"
#include "core/EngineManagers.h"
#include "resources/Unit.h"
#include "resources/UnitManager.h"

using namespace Zelkor;

namespace {

constexpr float barrelHeight = 0.5f; // share of the gun above the hand

} // namespace

HeldGun::HeldGun(Unit& holder, const std::string& meshName, const char* joint) : holder_(holder) {
    if (holder.skeleton) joint_ = holder.skeleton->findJoint(joint);
    const EngineManagers* managers = engineManagers();
    if (joint_ < 0 || !managers || !managers->unitManager) return;
    unit_ = managers->unitManager->createUnit(meshName);
    holder.attach(unit_.get());
    follow();
}

HeldGun::~HeldGun() {
    if (unit_) holder_.detach(unit_.get());
}

void HeldGun::follow() {
    if (!unit_) return;
    const JointState& hand = holder_.skeleton->joints[static_cast<std::size_t>(joint_)];
    Vec3 fromHolder;
    quatRotate(fromHolder, holder_.orientation, scaled(hand.worldPosition, holder_.scale));
    unit_->scale = holder_.scale;
    unit_->position = holder_.position + fromHolder;
    quatMultiply(unit_->orientation, holder_.orientation, hand.worldRotation);
}

// The barrel lies along x, in the middle of the upper half.
Vec3 HeldGun::muzzle() const {
    const Mesh& mesh = *unit_->mesh;
    const Vec3 mouth{mesh.boxMax.x, barrelHeight * mesh.boxMax.y, 0};
    Vec3 fromHand;
    quatRotate(fromHand, unit_->orientation, scaled(mouth, unit_->scale));
    return unit_->position + fromHand;
}
