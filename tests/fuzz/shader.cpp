#include "FuzzTarget.h"

#include "render/ShaderSource.h"

using namespace Zelkor;

// The data is the file "main", which may include itself, and behind its first zero byte any other file.
int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    const std::size_t zero = text.find('\0');
    const ShaderSource source =
        composeShader("main", [&](const std::string& name) -> std::optional<std::string> {
            if (name == "main") return text.substr(0, zero);
            if (zero == std::string::npos) return {};
            return text.substr(zero + 1);
        });
    for (int variant = 0; variant < shaderVariants; ++variant) {
        variantLines(source.vertex, variant);
        variantLines(source.pixel, variant);
        if (source.geometry) variantLines(*source.geometry, variant);
    }
    return 0;
}
