// Drawing one submesh of a unit, its outline and the background.
#include "core/EngineManagers.h"
#include "core/ProfileSections.h"
#include "render/GlApi.h"
#include "render/GlRenderer.h"
#include "render/MaterialManager.h"

#include <cmath>

namespace Zelkor {

namespace {

// Depth bias: full at nearBias world units in front of the camera, shrinking with the distance.
constexpr float nearBias = 40, biasRange = 100;
constexpr float biasFar = 0.02f, biasNear = 0.5f, biasUnits = -2000;
// Fog that starts at the eye and ends here paints everything in its colour.
constexpr float silhouetteFogEnd = 0.1f;

// Array pointers for the scope of one draw.
class VertexArrays {
  public:
    void set(GLenum which, const void* data) {
        glEnableClientState(which);
        switch (which) {
        case GL_VERTEX_ARRAY:
            glVertexPointer(3, GL_FLOAT, 0, data);
            break;
        case GL_NORMAL_ARRAY:
            glNormalPointer(GL_FLOAT, 0, data);
            break;
        case GL_COLOR_ARRAY:
            glColorPointer(3, GL_UNSIGNED_BYTE, 0, data);
            break;
        case GL_TEXTURE_COORD_ARRAY:
            glTexCoordPointer(2, GL_FLOAT, 0, data);
            break;
        default:
            break;
        }
    }
    VertexArrays() = default;
    VertexArrays(const VertexArrays&) = delete;
    ~VertexArrays() {
        for (const GLenum which : {GL_VERTEX_ARRAY, GL_NORMAL_ARRAY, GL_COLOR_ARRAY, GL_TEXTURE_COORD_ARRAY})
            glDisableClientState(static_cast<GLenum>(which));
    }
};

} // namespace

Material& GlRenderer::edgeMaterial() {
    if (!edge_) edge_ = engineManagers()->materialManager->findMaterial("edge");
    return *edge_;
}

Material& GlRenderer::materialInUse(RenderItem& item, const Unit& unit) {
    Material* material = &item.drawnMaterial();
    Material& edge = edgeMaterial();
    if (outlining_) {
        edge.ambient = material->ambient;
        material = &edge;
    } else if (material == &edge) {
        edge.ambient = {1, 1, 1, 1};
    }
    MaterialManager::setShaderParam(*material, "scale", 1 / unit.scale.x);
    return *material;
}

void GlRenderer::renderMesh(RenderItem& item, Unit& unit) {
    ProfileSection section(ProfileId::renderMesh);
    Material& material = materialInUse(item, unit);
    if (!material.enabled) return;
    glDepthMask(GL_TRUE);
    material.skinned = !item.skinnedPositions.empty();
    engineManagers()->materialManager->applyMaterial(material);
    if (material.depthBias > 0) {
        const float far = (-unit.viewDepth - nearBias) / biasRange;
        glPolygonOffset(0, biasUnits * material.depthBias * (biasFar * far + biasNear * (1 - far)));
    }
    if (!shadersSupported) {
        Vec4 colour = material.ambient;
        if (&material == edge_)
            colour = {colour.x * pencilTint.x, colour.y * pencilTint.y, colour.z * pencilTint.z,
                      colour.w * pencilTint.w};
        beginSilhouette(colour);
    } else {
        glColor4f(1, 1, 1, 1);
    }
    drawItem(item, unit.mesh->vertices);
    if (!shadersSupported) endSilhouette();

    if (!outlining_ && material.outlines) {
        outlining_ = true;
        renderMesh(item, unit);
        outlining_ = false;
    }
}

void GlRenderer::drawItem(const RenderItem& item, const VertexData& vertices) {
    const Submesh& submesh = *item.submesh;
    if (submesh.indices.empty() || vertices.positions.empty()) return;
    const bool skinned = !item.skinnedPositions.empty();
    VertexArrays arrays;
    arrays.set(GL_VERTEX_ARRAY, skinned ? item.skinnedPositions.data() : vertices.positions.data());
    if (skinned)
        arrays.set(GL_NORMAL_ARRAY, item.skinnedNormals.data());
    else if (!vertices.normals.empty())
        arrays.set(GL_NORMAL_ARRAY, vertices.normals.data());
    if (!vertices.texCoords.empty()) arrays.set(GL_TEXTURE_COORD_ARRAY, vertices.texCoords.data());
    if (!vertices.colours.empty()) arrays.set(GL_COLOR_ARRAY, vertices.colours.data());
    glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(submesh.indices.size()), GL_UNSIGNED_INT,
                   submesh.indices.data());
}

void GlRenderer::beginSilhouette(const Vec4& colour) {
    const float values[4] = {colour.x, colour.y, colour.z, colour.w};
    disableTexturing();
    glDisable(GL_LIGHTING);
    glColor4fv(values);
    glFogfv(GL_FOG_COLOR, values);
    glFogi(GL_FOG_MODE, GL_LINEAR);
    glHint(GL_FOG_HINT, GL_DONT_CARE);
    glFogf(GL_FOG_START, 0);
    glFogf(GL_FOG_END, silhouetteFogEnd);
    glEnable(GL_FOG);
}

// What is drawn flat after the scene must not be painted over too.
void GlRenderer::endSilhouette() {
    if (!fogEnabled) glDisable(GL_FOG);
}

void GlRenderer::renderBackground(const Camera& camera) {
    useShader(camera.backgroundShader);
    glDisable(GL_CULL_FACE); // whatever the last material culled
    glDisable(GL_LIGHTING);
    glDisable(GL_FOG);
    glDisable(GL_BLEND);
    glDisable(GL_ALPHA_TEST);
    glDepthMask(GL_FALSE);
    disableTexturing();
    if (textures_.contains(camera.backgroundTexture)) {
        bindTexture(camera.backgroundTexture);
        glEnable(camera.backgroundIsCubeMap ? GL_TEXTURE_CUBE_MAP : GL_TEXTURE_2D);
        texturedUnits_ = 1;
    }
    if (const ShaderProgram* program = boundProgram()) {
        if (const int location = program->location(uniform::tex); location >= 0) glUniform1i(location, 0);
        const int matrices = program->location(uniform::skinMatrices);
        if (camera.backgroundIsCubeMap && matrices >= 0)
            glUniformMatrix4fv(matrices, 1, GL_FALSE, modMatrix.m);
    }
    glMatrixMode(GL_TEXTURE);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();

    const float away = camera.farDistance - 0.1f;
    const float high = away * std::tan(camera.fieldOfView * pi / 180 / 2);
    const float wide = high * camera.aspect;
    const float corners[4][2] = {{-wide, high}, {-wide, -high}, {wide, -high}, {wide, high}};
    glColor4f(1, 1, 1, 1);
    glBegin(GL_QUADS);
    for (int i = 0; i < 4; ++i) {
        glTexCoord2f(camera.backgroundTexCoords[i].x, camera.backgroundTexCoords[i].y);
        glVertex3f(corners[i][0], corners[i][1], -away);
    }
    glEnd();
    glDepthMask(GL_TRUE);
    resetProjection();
}

} // namespace Zelkor
