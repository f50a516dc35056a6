// Every shader program, by name and by index. An index is the program's identity for the life of the table,
// whether its GL objects exist at the moment or not.
#pragma once

#include "render/ShaderSource.h"

#include <array>
#include <string>
#include <vector>

namespace Zelkor {

// The uniforms whose locations are fetched once per build, in their fixed order.
namespace uniform {
inline constexpr int tex = 0; // tex, tex1 .. tex7
inline constexpr int shadowRange = 19, shadowStart = 20;
inline constexpr int skinMatrices = 23;
inline constexpr int time = 27, resScale = 28, alphaCol = 29, basecolor = 30;
inline constexpr int count = 34;
} // namespace uniform

struct ShaderProgram {
    bool loaded = false;  // the GL objects exist
    unsigned program = 0; // of the current variant
    int variant = 0;
    std::string name;
    std::array<std::array<int, uniform::count>, shaderVariants> uniforms{}; // -1: not in the program
    std::array<unsigned, shaderVariants> programs{}, pixelShaders{}, vertexShaders{}, geometryShaders{};
    bool usesVariants = false;
    bool failed = false; // the last build

    // The location of a uniform in the current variant.
    int location(int uniformIndex) const { return uniforms[variant][uniformIndex]; }
};

class ShaderTable {
  public:
    // The index of the named program, built from its file if it is new; -1 when that fails.
    int load(const std::string& name);
    // The program, made current for that many shadow-casting lights and rebuilt first if it was released. Its
    // program object is 0 when the rebuild fails. Null for an index outside the table.
    ShaderProgram* select(int index, int shadowCasters);
    // Deletes the GL objects of every program.
    void release();
    int size() const { return static_cast<int>(programs_.size()); }
    const ShaderProgram& operator[](int index) const { return programs_[static_cast<std::size_t>(index)]; }

    // A sub-folder of the shader folder that is looked into first; empty for none.
    std::string searchPrefix;
    // Set when a build has failed, and left to the reader to clear. A program that keeps failing at each use
    // sets it once.
    bool compileFailed = false;

  private:
    bool build(ShaderProgram& entry) const;

    std::vector<ShaderProgram> programs_;
};

} // namespace Zelkor
