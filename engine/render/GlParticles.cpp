// Drawing a particle set, or a list of sprites: one call, whatever its size.
#include "core/EngineManagers.h"
#include "fx/ParticleSystem.h"
#include "render/GlApi.h"
#include "render/GlRenderer.h"
#include "render/MaterialManager.h"

namespace Zelkor {

void GlRenderer::renderParticles(ParticleSystem& system) {
    Material* const material = system.material();
    if (!shadersSupported || !material || !material->enabled || system.live() == 0) return;
    Vec3 right, up;
    quatAxisX(right, cameraOrientation_);
    quatAxisY(up, cameraOrientation_);
    const int count = buildBillboards(system, right, up, billboards_);
    drawBillboards(billboards_.data(), count, *material, static_cast<BlendMode>(system.desc().blendMode));
}

void GlRenderer::drawBillboards(const BillboardVertex* first, int count, Material& material, BlendMode blend) {
    if (!shadersSupported || count == 0) return;
    engineManagers()->materialManager->applyMaterial(material);
    applyBlendState(blend, material.alphaTest, material.alphaRef);
    glDisable(GL_CULL_FACE); // a negative width shows the picture from behind
    glDisable(GL_LIGHTING);

    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    glVertexPointer(3, GL_FLOAT, sizeof *first, &first->position);
    glTexCoordPointer(2, GL_FLOAT, sizeof *first, &first->texCoord);
    glColorPointer(4, GL_UNSIGNED_BYTE, sizeof *first, &first->colour);
    glDrawArrays(GL_QUADS, 0, 4 * count);
    glDisableClientState(GL_COLOR_ARRAY);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    glDisableClientState(GL_VERTEX_ARRAY);
    glDepthMask(GL_TRUE);
}

} // namespace Zelkor
