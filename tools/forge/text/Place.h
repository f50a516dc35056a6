// Where something stands in a source text, and the one way a source is refused.
#pragma once

#include <stdexcept>
#include <string>

namespace forge {

// Lines and columns count from 1.
struct Place {
    std::string file;
    int line = 1;
    int column = 1;
};

// what() reads "file:line:column: reason".
class SourceError : public std::runtime_error {
  public:
    SourceError(const Place& place, const std::string& reason)
        : std::runtime_error(place.file + ":" + std::to_string(place.line) + ":" +
                             std::to_string(place.column) + ": " + reason) {}
};

} // namespace forge
