#include "render/ShaderTable.h"

#include "core/Log.h"
#include "io/DataFiles.h"
#include "render/GlApi.h"

#include <algorithm>
#include <optional>

namespace Zelkor {

namespace {

constexpr std::array<const char*, uniform::count> uniformNames = {
    "tex",
    "tex1",
    "tex2",
    "tex3",
    "tex4",
    "tex5",
    "tex6",
    "tex7",
    "param0",
    "param1",
    "param2",
    "param3",
    "param4",
    "param5",
    "param6",
    "param7",
    "shadowTex",
    "shadowTexSize",
    "shadow_scale",
    "shadow_range",
    "shadow_start",
    "shadowMatrices",
    "shadow_opacity",
    "SkinMatrices",
    "SupportSkinMatrices",
    "BajsSkinMatrices",
    "Bajs2SkinMatrices",
    "time",
    "resScale",
    "alphaCol",
    "basecolor",
    "ProjMatrix",
    "ModMatrix",
    "NormalMatrix",
};

// A geometry stage is written in words that both kinds of geometry stage can be given: the extension's and
// the core one's. A stage that begins with a "#version" line of its own is left as it is.
constexpr const char* extensionGeometryWords = R"(#version 120
#extension GL_EXT_geometry_shader4 : require
#define STRIP_OUT(vertices)
#define STAGE_IN varying in
#define STAGE_OUT varying out
#define POSITION_IN(i) gl_PositionIn[i]
#define FRONT_COLOR_IN(i) gl_FrontColorIn[i]
#define TEX_COORD_IN(i, set) gl_TexCoordIn[i][set]
)";
constexpr const char* coreGeometryWords = R"(#version 150 compatibility
layout(triangles) in;
#define STRIP_OUT(vertices) layout(triangle_strip, max_vertices = vertices) out;
#define STAGE_IN in
#define STAGE_OUT out
#define POSITION_IN(i) gl_in[i].gl_Position
#define FRONT_COLOR_IN(i) gl_in[i].gl_FrontColor
#define TEX_COORD_IN(i, set) gl_in[i].gl_TexCoord[set]
)";

enum class GeometrySupport { none, extension, core };

GeometrySupport geometrySupport() {
    if (GLEW_EXT_geometry_shader4 && glProgramParameteriEXT) return GeometrySupport::extension;
    if (GLEW_VERSION_3_2) return GeometrySupport::core;
    return GeometrySupport::none;
}

std::optional<std::string> readShaderFile(const std::string& prefix, const std::string& name) {
    std::optional<std::vector<uint8_t>> bytes;
    if (!prefix.empty()) bytes = readDataFile("shaders/" + prefix + "/" + name + ".shader");
    if (!bytes) bytes = readDataFile("shaders/" + name + ".shader");
    if (!bytes) return std::nullopt;
    logLine("load shader " + name);
    return std::string(bytes->begin(), bytes->end());
}

unsigned compile(unsigned kind, std::vector<std::string> lines) {
    if (kind == GL_GEOMETRY_SHADER && !(!lines.empty() && lines.front().starts_with("#version")))
        lines.insert(lines.begin(), geometrySupport() == GeometrySupport::extension ? extensionGeometryWords
                                                                                    : coreGeometryWords);
    std::vector<const char*> pointers;
    std::transform(lines.begin(), lines.end(), std::back_inserter(pointers),
                   [](const std::string& line) { return line.c_str(); });
    const unsigned shader = glCreateShader(kind);
    glShaderSource(shader, static_cast<GLsizei>(pointers.size()), pointers.data(), nullptr);
    glCompileShader(shader);
    return shader;
}

bool compiled(unsigned shader) {
    GLint status = GL_FALSE;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &status);
    return status == GL_TRUE;
}

using ShaderNames = std::array<unsigned, shaderVariants>;

// False when a variant did not compile.
bool compileStage(unsigned kind, const ShaderStage& stage, ShaderNames& shaders) {
    bool good = true;
    for (int v = 0; v < (stage.varies ? shaderVariants : 1); ++v) {
        shaders[v] = compile(kind, variantLines(stage, v));
        good = good && compiled(shaders[v]);
    }
    return good;
}

void logCompiler(const std::string& heading, unsigned shader) {
    logLine(heading);
    GLint length = 0;
    if (shader != 0) glGetShaderiv(shader, GL_INFO_LOG_LENGTH, &length);
    if (length <= 1) return;
    std::string text(static_cast<std::size_t>(length), '\0');
    glGetShaderInfoLog(shader, length, &length, text.data());
    text.resize(static_cast<std::size_t>(std::max(length, 0)));
    if (text.size() > 1) logLine("compiler_log: " + text);
}

void deleteObjects(ShaderProgram& entry) {
    for (int v = 0; v < shaderVariants; ++v) {
        for (ShaderNames* shaders : {&entry.vertexShaders, &entry.geometryShaders, &entry.pixelShaders}) {
            if ((*shaders)[v] == 0) continue;
            if (entry.programs[v] != 0) glDetachShader(entry.programs[v], (*shaders)[v]);
            glDeleteShader((*shaders)[v]);
            (*shaders)[v] = 0;
        }
        if (entry.programs[v] != 0) glDeleteProgram(entry.programs[v]);
        entry.programs[v] = 0;
    }
    entry.program = 0;
    entry.variant = 0;
    entry.loaded = false;
}

// Variant v of a stage, or its only one.
unsigned stageShader(const ShaderNames& shaders, int v) {
    return shaders[v] != 0 ? shaders[v] : shaders[0];
}

// False when the program does not link.
bool link(ShaderProgram& entry, int v, bool geometry) {
    while (glGetError() != GL_NO_ERROR) {
    }
    const unsigned program = entry.programs[v] = glCreateProgram();
    glAttachShader(program, stageShader(entry.vertexShaders, v));
    glAttachShader(program, stageShader(entry.pixelShaders, v));
    if (geometry) {
        glAttachShader(program, stageShader(entry.geometryShaders, v));
        if (geometrySupport() == GeometrySupport::extension) {
            GLint vertices = 0;
            glGetIntegerv(GL_MAX_GEOMETRY_OUTPUT_VERTICES_EXT, &vertices);
            glProgramParameteriEXT(program, GL_GEOMETRY_INPUT_TYPE_EXT, GL_TRIANGLES);
            glProgramParameteriEXT(program, GL_GEOMETRY_OUTPUT_TYPE_EXT, GL_TRIANGLE_STRIP);
            glProgramParameteriEXT(program, GL_GEOMETRY_VERTICES_OUT_EXT, vertices);
        }
    }
    glLinkProgram(program);
    GLint status = GL_FALSE;
    glGetProgramiv(program, GL_LINK_STATUS, &status);
    return status == GL_TRUE;
}

} // namespace

bool ShaderTable::build(ShaderProgram& entry) const {
    const ShaderSource source = composeShader(
        entry.name, [this](const std::string& name) { return readShaderFile(searchPrefix, name); });
    bool good = !source.failed();
    if (!good) logLine("shader " + entry.name + ": " + source.error);
    // A geometry stage that the context cannot run is a broken stage.
    const bool geometry = source.geometry.has_value();
    if (geometry && geometrySupport() == GeometrySupport::none) good = false;

    good = good && compileStage(GL_VERTEX_SHADER, source.vertex, entry.vertexShaders);
    // A geometry stage that does not compile is found out by the link.
    if (good && geometry) compileStage(GL_GEOMETRY_SHADER, *source.geometry, entry.geometryShaders);
    good = good && compileStage(GL_FRAGMENT_SHADER, source.pixel, entry.pixelShaders);
    entry.usesVariants = source.usesVariants;
    const int variants = entry.usesVariants ? shaderVariants : 1;
    for (int v = 0; good && v < variants; ++v)
        good = link(entry, v, geometry);

    logLine("loading shader: " + entry.name);
    logCompiler("vertex shader: ", entry.vertexShaders[0]);
    if (geometry) logCompiler("geometry shader: ", entry.geometryShaders[0]);
    logCompiler("pixel shader: ", entry.pixelShaders[0]);

    entry.failed = !good;
    if (!good) {
        deleteObjects(entry);
        return false;
    }
    entry.variant = 0;
    entry.program = entry.programs[0];
    for (int v = 0; v < variants; ++v)
        for (int i = 0; i < uniform::count; ++i)
            entry.uniforms[v][i] = glGetUniformLocation(entry.programs[v], uniformNames[i]);
    entry.loaded = true;
    return true;
}

int ShaderTable::load(const std::string& name) {
    for (int i = 0; i < size(); ++i)
        if (programs_[i].name == name) return i;
    ShaderProgram entry;
    entry.name = name;
    if (!build(entry)) {
        compileFailed = true;
        return -1;
    }
    programs_.push_back(std::move(entry));
    return size() - 1;
}

ShaderProgram* ShaderTable::select(int index, int shadowCasters) {
    if (index < 0 || index >= size()) return nullptr;
    ShaderProgram& entry = programs_[index];
    if (!entry.loaded) {
        const bool failedBefore = entry.failed;
        if (!build(entry) && !failedBefore) compileFailed = true;
    }
    entry.variant = entry.usesVariants ? std::clamp(shadowCasters, 0, shaderVariants - 1) : 0;
    entry.program = entry.programs[entry.variant];
    return &entry;
}

void ShaderTable::release() {
    for (ShaderProgram& entry : programs_) {
        if (entry.loaded) deleteObjects(entry);
        entry.failed = false;
    }
}

} // namespace Zelkor
