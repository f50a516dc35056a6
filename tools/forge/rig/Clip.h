// Poses and clips as records, and their sampling.
#pragma once

#include <string>
#include <vector>

namespace forge {

struct Clip {
    std::string name;
};

} // namespace forge
