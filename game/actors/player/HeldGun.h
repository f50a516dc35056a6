// The gun in the hero's right hand: a unit of its own that follows a joint of its holder.
#pragma once

#include "math/Math.h"

#include <memory>
#include <string>

namespace Zelkor {
class Unit;
}

class HeldGun {
  public:
    // The joint by its whole path. The mesh is modelled in that joint's own axes, with its origin at the
    // joint.
    static constexpr const char* rightHand =
        "rig_JT_DRV_neck_Base1|rig_JT_DRV_R_Clavicle|rig_JT_DRV_R_Shoulder|"
        "rig_JT_DRV_R_Elbow|rig_JT_DRV_R_Wrist|rig_JT_DRV_R_Hand";

    // Empty hands where the holder has no such joint, or where there are no units to be had.
    HeldGun(Zelkor::Unit& holder, const std::string& meshName, const char* joint = rightHand);
    ~HeldGun();
    HeldGun(const HeldGun&) = delete;

    // Puts the gun where the holder's hand is now. After the holder has been posed and placed.
    void follow();
    // The end of its barrel, in the world.
    Zelkor::Vec3 muzzle() const;
    // Null for empty hands.
    Zelkor::Unit* unit() const { return unit_.get(); }

  private:
    Zelkor::Unit& holder_;
    std::unique_ptr<Zelkor::Unit> unit_;
    int joint_ = -1;
};
