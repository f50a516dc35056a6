// Uncompressed Targa pictures.
#pragma once

#include "render/Image.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace Zelkor {

// 8 bits a pixel give 1 component, or 4 with a palette; 32 bits give 4; other depths hold three bytes a pixel
// and give 3. The file's rows run from the bottom, whatever its origin bit says. None for a
// run-length-encoded picture, an image-ID field, 15 or 16 bits a pixel, an empty picture or one cut short;
// reason, if given, then says which.
std::optional<Image> decodeTga(std::span<const uint8_t> bytes, std::string* reason = nullptr);

} // namespace Zelkor
