// Interface items: the fixed pipeline, one draw a batch.
#include "core/ProfileSections.h"
#include "render/GlApi.h"
#include "render/GlRenderer.h"

#include <algorithm>

namespace Zelkor {

namespace {

constexpr unsigned blendModeBits = 0xff;

// 0 and 1 land on the centres of the outermost texels.
void setTexelCentres(const Texture& texture) {
    const float wide = 1 / static_cast<float>(std::max(texture.width, 1));
    const float high = 1 / static_cast<float>(std::max(texture.height, 1));
    glMatrixMode(GL_TEXTURE);
    glLoadIdentity();
    glTranslatef(0.5f * wide, 0.5f * high, 0);
    glScalef(1 - wide, 1 - high, 1);
    glMatrixMode(GL_MODELVIEW);
}

} // namespace

void GlRenderer::setGuiTexture(const GuiBatch& batch) {
    if (!textures_.contains(batch.texture)) {
        glDisable(GL_TEXTURE_2D);
        return;
    }
    bindTexture(batch.texture);
    glEnable(GL_TEXTURE_2D);
    texturedUnits_ = std::max(texturedUnits_, 1);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    const GLint filter = batch.filtered ? GL_LINEAR : GL_NEAREST;
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    setTexelCentres(textures_[batch.texture]);
}

void GlRenderer::renderGuiObject(bool tint) {
    if (!window_) return;
    ProfileSection section(ProfileId::renderGuiObject);
    useShader(-1);
    glDisable(GL_CULL_FACE);
    glDisable(GL_LIGHTING);
    disableTexturing();
    selectTextureUnit(0);
    glDisable(GL_TEXTURE_2D);

    guiList.gather(tint && currentTarget_ == 0);
    if (guiList.vertices().empty()) return;
    const GuiVertex& first = guiList.vertices().front();
    if (glClientActiveTexture) glClientActiveTexture(GL_TEXTURE0);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glVertexPointer(3, GL_FLOAT, sizeof first, &first.x);
    glTexCoordPointer(2, GL_FLOAT, sizeof first, &first.u);
    glColorPointer(4, GL_UNSIGNED_BYTE, sizeof first, first.colour);
    for (const GuiBatch& batch : guiList.batches()) {
        applyBlendState(static_cast<BlendMode>(batch.drawKey & blendModeBits), false, 0);
        glDisable(GL_FOG);
        glDisable(GL_LIGHTING);
        setGuiTexture(batch);
        glDepthMask(batch.drawKey == 0 ? GL_TRUE : GL_FALSE);
        if (batch.drawKey & guiNoDepthTest)
            glDisable(GL_DEPTH_TEST);
        else
            glEnable(GL_DEPTH_TEST);
        glDrawArrays(GL_QUADS, batch.firstVertex, batch.vertexCount);
        ++guiBatchesInFrame_;
    }
    glDisableClientState(GL_VERTEX_ARRAY);
    glDisableClientState(GL_COLOR_ARRAY);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);

    glMatrixMode(GL_TEXTURE);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glColor4f(1, 1, 1, 1);
    glEnable(GL_DEPTH_TEST);
    glDepthMask(GL_TRUE);
}

} // namespace Zelkor
