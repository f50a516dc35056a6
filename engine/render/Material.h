// How a surface is drawn, as the ".material" files say it.
#pragma once

#include "math/Math.h"

#include <string>
#include <vector>

namespace Zelkor {

enum class BlendMode {
    opaque = 0,
    add = 1,
    modulate = 2,
    alphaBlend = 3,
    alphaAdd = 4,
    brighten = 5,
    specialAlpha = 10
};

struct TexAnim {
    enum Type {
        scroll = 1,
        waveScrollX = 0x110,
        waveScrollY = 0x111,
        waveScaleX = 0x120,
        waveScaleY = 0x121
    };
    int type = scroll;
    // scroll: speed x, speed y. Waves: base, frequency, phase, amplitude.
    float p1 = 0, p2 = 0, p3 = 0, p4 = 0;
};

enum class TextureKind { flat = 0, normalMap = 1, cubeMap = 2 };

struct TextureUnit {
    int texture = -1;
    float scaleX = 1, scaleY = 1;
    float offsetX = 0, offsetY = 0;
    int filtering = 1; // 0 nearest, 1 bilinear
    int colourOp = 0;  // 1 add, 2 modulate; drawing always modulates
    TextureKind kind = TextureKind::flat;
    int texCoordSet = 0; // 255: normals as coordinates
    std::string textureName;
    std::vector<TexAnim> animations;
};

// A named uniform value: a scalar, a vector or an array.
struct ShaderParam {
    static constexpr int unresolved = -2;
    std::string name;
    float value = 0;
    bool isVec4 = false;
    Vec4 vec;
    std::vector<float> values; // an array when not empty
    int location = unresolved; // -1: the program has no such uniform
};

struct Material {
    std::string name;
    bool alphaAsSpecMap = false;
    int refCount = 0;
    BlendMode blendMode = BlendMode::opaque;
    float depthBias = 0;
    int shadowShader = -1;
    bool alphaTest = false;
    bool cullNone = false;
    bool cullFront = false;
    bool fogOverride = false;
    bool lightingOff = false;
    float alphaRef = 0.5f;
    Vec4 ambient{1, 1, 1, 1}, diffuse{1, 1, 1, 1}, specular{1, 1, 1, 1}, emissive{1, 1, 1, 1};
    bool normalTexCoords = false;
    bool useVertexColours = false;
    bool skinned = false;
    bool enabled = true;
    bool outlines = false;
    bool castShadows = false;
    bool receiveShadows = false;
    int shader = -1;
    bool normalMaps = false;
    bool specialAlpha = false;
    bool specialAlphaTest = true;
    std::vector<TextureUnit> textureUnits;
    std::vector<ShaderParam> shaderParams;
};

} // namespace Zelkor
