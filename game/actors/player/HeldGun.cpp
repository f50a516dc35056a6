#include "actors/player/HeldGun.h"

#include "animation/SkeletonInstance.h"
#include "core/EngineManagers.h"
#include "resources/Unit.h"
#include "resources/UnitManager.h"

using namespace Zelkor;

HeldGun::HeldGun(Unit& holder, const std::string& meshName) : holder_(holder) {
    if (holder.skeleton) joint_ = holder.skeleton->findJoint(rightHand);
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
