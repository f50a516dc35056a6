// Making a material the one that draws next.
#include "core/EngineManagers.h"
#include "core/ProfileSections.h"
#include "core/TimerManager.h"
#include "render/GlApi.h"
#include "render/GlRenderer.h"
#include "render/MaterialManager.h"

#include <algorithm>
#include <cmath>

namespace Zelkor {

namespace {

constexpr float depthBiasUnits = -2000; // of polygon offset for a bias of 1
// Colours are lifted a little before paper that is not white darkens them.
constexpr float paperLift = 0.07f;
constexpr float waveScroll = 5; // texture widths for a wave of 1
// Above any alpha, clamped to 1: only what is not fully opaque passes.
constexpr float lessThanOpaque = 240;

void setAlphaTest(bool on, float reference) {
    if (on) {
        glEnable(GL_ALPHA_TEST);
        glAlphaFunc(GL_GREATER, reference);
    } else {
        glDisable(GL_ALPHA_TEST);
    }
}

void setCulling(const Material& material) {
    glCullFace(material.cullFront ? GL_FRONT : GL_BACK);
    if (material.cullNone)
        glDisable(GL_CULL_FACE);
    else
        glEnable(GL_CULL_FACE);
}

void setTextureMatrix(const TextureUnit& unit, float seconds) {
    glMatrixMode(GL_TEXTURE);
    glLoadIdentity();
    float extraX = 0, extraY = 0;
    for (const TexAnim& anim : unit.animations) {
        const auto wave = [&] {
            return anim.p1 + 0.25f * anim.p4 + 0.5f * anim.p4 * std::sin(pi * anim.p2 * (anim.p3 + seconds));
        };
        switch (anim.type) {
        case TexAnim::scroll:
            glTranslatef(anim.p1 * seconds, anim.p2 * seconds, 0);
            break;
        case TexAnim::waveScrollX:
            glTranslatef(waveScroll * wave(), 0, 0);
            break;
        case TexAnim::waveScrollY:
            glTranslatef(0, waveScroll * wave(), 0);
            break;
        case TexAnim::waveScaleX:
            extraX += wave();
            break;
        case TexAnim::waveScaleY:
            extraY += wave();
            break;
        default:
            break;
        }
    }
    glTranslatef(unit.offsetX, unit.offsetY, 0);
    glScalef(1 / (unit.scaleX + extraX), 1 / (unit.scaleY + extraY), 1);
}

} // namespace

void GlRenderer::applyMaterialState(Material& material) {
    disableTexturing();
    glCullFace(GL_BACK);
    useShader(material.shader);
    uploadParameters(material);
    uploadColours(material);
    bindTextureUnits(material);
    glEnable(GL_LIGHTING);
    glDepthMask(GL_TRUE);
    setCulling(material);
    if (material.depthBias > 0) {
        glEnable(GL_POLYGON_OFFSET_FILL);
        glPolygonOffset(0, depthBiasUnits * material.depthBias);
    } else {
        glDisable(GL_POLYGON_OFFSET_FILL);
    }
    applyBlendState(material.blendMode, material.alphaTest, material.alphaRef);
    if (material.specialAlpha && material.specialAlphaTest && material.blendMode != BlendMode::opaque) {
        glEnable(GL_ALPHA_TEST);
        glAlphaFunc(GL_LESS, lessThanOpaque);
    }
}

void GlRenderer::uploadParameters(Material& material) {
    if (currentProgram == 0) return;
    for (ShaderParam& param : material.shaderParams) {
        if (param.location == ShaderParam::unresolved) param.location = getUniformLoc(param.name);
        if (param.location < 0) continue;
        if (param.isVec4)
            glUniform4f(param.location, param.vec.x, param.vec.y, param.vec.z, param.vec.w);
        else if (param.values.empty())
            glUniform1f(param.location, param.value);
        else
            glUniform1fv(param.location, static_cast<GLsizei>(param.values.size()), param.values.data());
    }
}

void GlRenderer::uploadColours(const Material& material) {
    const ShaderProgram* program = boundProgram();
    if (!program || program->location(uniform::basecolor) < 0) return;
    Vec4 colour = material.ambient;
    if (clearColour.z < 1) {
        colour.x = clamp(colour.x + paperLift, 0, 1) * clearColour.x;
        colour.y = clamp(colour.y + paperLift, 0, 1) * clearColour.y;
        colour.z = clamp(colour.z + paperLift, 0, 1) * clearColour.z;
    }
    glUniform4f(program->location(uniform::basecolor), colour.x, colour.y, colour.z, colour.w);
    if (const int location = program->location(uniform::alphaCol); location >= 0)
        glUniform4f(location, colour.x * pencilTint.x, colour.y * pencilTint.y, colour.z * pencilTint.z,
                    colour.w);
}

void GlRenderer::bindTextureUnits(const Material& material) {
    glDisable(GL_TEXTURE_2D);
    // Without multitexture there is only one unit.
    const int available = glActiveTexture ? maxTextureUnits : 1;
    const int count = std::min(static_cast<int>(material.textureUnits.size()), available);
    for (int i = 0; i < count; ++i)
        bindTextureUnit(material.textureUnits[i], i);
    texturedUnits_ = count;
    selectTextureUnit(0);
    glMatrixMode(GL_MODELVIEW);
}

void GlRenderer::bindTextureUnit(const TextureUnit& unit, int index) {
    const GameTimer* timer = engineManagers()->timerManager->findTimer("main");
    selectTextureUnit(index);
    setTextureMatrix(unit, timer ? static_cast<float>(timer->total) : 0);
    if (!textures_.contains(unit.texture)) {
        glDisable(GL_TEXTURE_2D);
        return;
    }
    bindTexture(unit.texture);
    const GLenum target =
        textures_[unit.texture].kind == TextureKind::cubeMap ? GL_TEXTURE_CUBE_MAP : GL_TEXTURE_2D;
    glEnable(target);
    if (unit.filtering == 0) {
        glTexParameteri(target, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        glTexParameteri(target, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    } else {
        glTexParameteri(target, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    }
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    if (const ShaderProgram* program = boundProgram())
        if (const int location = program->location(uniform::tex + index); location >= 0)
            glUniform1i(location, index);
}

void GlRenderer::applyBlendState(BlendMode mode, bool alphaTest, float alphaRef) {
    setAlphaTest(alphaTest, alphaRef);
    if (mode == BlendMode::opaque) {
        glDisable(GL_BLEND);
        if (fogEnabled) glEnable(GL_FOG);
        return;
    }
    glEnable(GL_BLEND);
    glDepthMask(GL_FALSE);
    switch (mode) {
    case BlendMode::add:
        glDisable(GL_FOG);
        glBlendFunc(GL_ONE, GL_ONE);
        glDisable(GL_LIGHTING);
        break;
    case BlendMode::modulate:
        glDisable(GL_FOG);
        glBlendFunc(GL_DST_COLOR, GL_ZERO);
        glDisable(GL_LIGHTING);
        break;
    case BlendMode::alphaBlend:
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        break;
    case BlendMode::alphaAdd:
        glBlendFunc(GL_SRC_ALPHA, GL_ONE);
        break;
    case BlendMode::brighten:
        glBlendFunc(GL_DST_COLOR, GL_ONE);
        break;
    case BlendMode::specialAlpha:
        glBlendFunc(GL_SRC_ALPHA, currentTarget_ == 0 ? GL_ONE_MINUS_SRC_ALPHA : GL_ONE);
        break;
    default:
        break; // other numbers keep the function that was there
    }
}

} // namespace Zelkor
