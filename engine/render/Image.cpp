#include "render/Image.h"

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#include <stb/stb_image_write.h>

#include <cstdlib>
#include <fstream>

namespace Zelkor {

bool Image::writePng(const std::filesystem::path& file) const {
    if (pixels.empty()) return false;
    int size = 0;
    unsigned char* bytes =
        stbi_write_png_to_mem(pixels.data(), width * components, width, height, components, &size);
    if (!bytes) return false;
    std::ofstream out(file, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes), size);
    out.close(); // where a full disk shows
    std::free(bytes);
    if (out) return true;
    std::error_code ignored;
    if (std::filesystem::is_regular_file(file, ignored)) std::filesystem::remove(file, ignored);
    return false;
}

} // namespace Zelkor
