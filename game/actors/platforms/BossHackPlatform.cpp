#include "actors/platforms/BossHackPlatform.h"

#include "actors/ThingyManager.h"

namespace {

const SpawnRow row{39, createActor<BossHackPlatform>};

} // namespace

void BossHackPlatform::update(float, float) {
    finishMove(position());
}
