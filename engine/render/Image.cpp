#include "render/Image.h"

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#include <stb/stb_image_write.h>

namespace Zelkor {

bool Image::writePng(const std::filesystem::path& file) const {
    if (pixels.empty()) return false;
    return stbi_write_png(file.c_str(), width, height, components, pixels.data(), width * components) != 0;
}

} // namespace Zelkor
