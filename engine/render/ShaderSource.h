// The text of a shader program, put together from its file and the files that it includes. Nothing here needs
// a context.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Zelkor {

// A program that mentions the number of shadows or lights is built once for each number of shadow-casting
// lights, 0 to 4.
inline constexpr int shaderVariants = 5;

struct ShaderStage {
    std::vector<std::string> lines; // each ends in a line feed
    bool varies = false;            // built once for each variant, else only as variant 0
};

struct ShaderSource {
    ShaderStage vertex;
    std::optional<ShaderStage> geometry;
    ShaderStage pixel;
    bool usesVariants = false;
    std::string error;                    // what is wrong with it, empty for nothing
    std::vector<std::string> openedFiles; // names in the order of opening, included files too

    bool failed() const { return !error.empty(); }
};

// The whole text of the named shader file, or none when there is no such file.
using ShaderFileReader = std::function<std::optional<std::string>(const std::string& name)>;

// Reads the file of that name and everything that it includes.
ShaderSource composeShader(const std::string& name, const ShaderFileReader& read);

// The lines of a stage as variant 0..4 is compiled: with the numbers of shadows and lights patched in.
std::vector<std::string> variantLines(const ShaderStage& stage, int variant);

} // namespace Zelkor
