// The particle systems of the stage.
#pragma once

namespace Zelkor {

class ParticleManager {};

} // namespace Zelkor
