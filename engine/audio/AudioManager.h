// The sound device of the system, and what plays on it.
#pragma once

namespace Zelkor {

class AudioManager {};

} // namespace Zelkor
