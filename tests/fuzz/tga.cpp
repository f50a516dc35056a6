#include "FuzzTarget.h"

#include "render/Tga.h"

using namespace Zelkor;

int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    std::string reason;
    const auto image = decodeTga({data, size}, &reason);
    fuzzCheck(image.has_value() == reason.empty());
    if (image)
        fuzzCheck(image->pixels.size() ==
                  static_cast<std::size_t>(image->width) * image->height * image->components);
    return 0;
}
