// Clips to the keys that are written.
#pragma once

#include "rig/Clip.h"
#include "write/MeshFile.h"

namespace forge {

// One track a joint. A joint the clip moves has at least three keys, as few as follow the motion closely, and
// in a loop the last equals the first; any other has two resting ones, which leave it to other clips. `yaw`
// turns root joints from the author's space to the game's.
ClipRecord bakeClip(const Rig& rig, const Clip& clip, float yaw);

// Bind poses and names, without clips.
SkeletonRecord bakeRig(const Rig& rig, float yaw);

} // namespace forge
