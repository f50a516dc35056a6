// All drawing goes through one object of this interface. The only implementation is GlRenderer.
#pragma once

#include "math/Math.h"
#include "render/GuiDrawList.h"
#include "render/Material.h"
#include "resources/Scene.h"
#include "resources/Unit.h"

#include <string>
#include <vector>

namespace platform {
class Window;
struct Message;
} // namespace platform

namespace Zelkor {

class ParticleSystem;
struct BillboardVertex;

struct ColouredLine {
    Vec3 from, to, colour;
};

// What translucent pencil work keeps of each colour.
inline constexpr Vec4 pencilTint{0.84f, 0.65f, 0.62f, 1.0f};

struct PostEffectParameters {
    Material* material = nullptr;
    float x = 0, y = 0, width = 1, height = 1; // viewport fractions
};

class Renderer {
  public:
    virtual ~Renderer() = default;

    // --- The virtual operations, in their fixed order. -----------------------------------------------------
    // Creates the window and its context, asking the player about what is missing. The title is not used.
    // False when the program must end.
    virtual bool init(const std::string&, int, int, int, bool) { return false; }
    virtual void resize(int, int) {}
    virtual bool isInactive() { return false; }
    virtual void present() {}
    // x, y, width and height as fractions of the current target's size.
    virtual void setViewport(float, float, float, float) {}
    virtual void beginScene(const Camera&) {}
    virtual void renderMesh(RenderItem&, Unit&) {}
    virtual void pushTransform(const Vec3&, const Quat&, const Vec3&) {}
    // The inverse of pushTransform.
    virtual void setViewTransform(const Vec3&, const Quat&, const Vec3&) {}
    virtual void setupLights(const Scene& scene, Unit& unit) = 0;
    // -1: no buffer, the submesh is drawn from its own arrays.
    virtual int createMeshBuffer(const Submesh& submesh) = 0;
    virtual int loadShader(const std::string&) { return 0; }
    virtual int loadTexture(const std::string& name, TextureKind kind, int slot) = 0;
    virtual bool hasFocus() const = 0;
    virtual void setFocus(bool focused) = 0;
    virtual void drawLine(const Vec3& from, const Vec3& to, const Vec3& colour) = 0;
    virtual void drawLines(const ColouredLine* lines, int count) = 0;
    virtual void applyCamera(const Camera& camera) = 0;
    virtual void begin2D() = 0;
    virtual void renderGuiObject(bool tint) = 0;
    // format 0: RGBA bytes, 1: depth, 2: 16-bit float RGB.
    virtual int createTexture(const std::string& name, int format, int width, int height) = 0;
    virtual void copyTexture(int texture, const Vec2& position, bool depth, bool clear) = 0;
    virtual void renderParticles(ParticleSystem& system) = 0;
    virtual void renderBackground(const Camera& camera) = 0;
    virtual void renderPostEffect(const PostEffectParameters&) {}
    virtual void resetProjection() {}
    virtual void setDisplayMode(bool fullscreen, int width, int height) = 0;
    virtual void buildStaticBatch(const Scene& scene) = 0;
    virtual void renderStaticBatch(int pass) = 0;
    virtual int getTexture(const std::string&, TextureKind = TextureKind::flat) { return -1; }
    virtual int getTextureByName(const std::string&) { return -1; }
    virtual void clearDepth() {}
    virtual void bindRenderTarget(int, bool) {}
    virtual int createRenderTarget(const std::string&, int, int) { return 0; }
    virtual void getTextureSize(int, int&, int&) {}
    // Every program is released and read again at its next use, from the sub-folder first.
    virtual void reloadShaders(const std::string& prefix) = 0;
    virtual void resizeRenderTarget(int target, int width, int height) = 0;
    virtual int getMaxTextureSize() = 0;
    virtual void bindPostBuffer(int) {}

    // --- What the material manager hands on to the renderer. -----------------------------------------------
    // Program, parameters, textures and fixed state for the next draw.
    virtual void applyMaterialState(Material&) {}

    // Quads in the world, four vertices each, with a material of theirs.
    virtual void drawBillboards(const BillboardVertex*, int /*count*/, Material&, BlendMode) {}

    // --- State that the main loop and the drawing code read. -----------------------------------------------
    bool shaderCompileFailed = false;
    bool active = true; // the application is in front; frames run only while it is
    float aspect = 1;
    int windowWidth = 0, windowHeight = 0;
    Vec4 clearColour{1, 1, 1, 0};
    bool fogEnabled = false;
    bool fullscreen = false;
    bool focused = false;
    unsigned currentProgram = 0;
    int updateCount = 0;    // update substeps run
    bool sceneHidden = false; // scenes live on (what would be seen is animated), but nothing of them is drawn
    int drawnUnits = 0;       // in the lists of the last scene drawn
    double runningTime = 0; // seconds of the timer "main" presented
    Mat4 modMatrix;         // mirrors the model-view matrix
    Camera currentCamera;   // of the last applyCamera
    GuiDrawList guiList;    // what renderGuiObject draws
    int guiBatches = 0;     // interface draws of the last frame presented
    bool shadersSupported = false;
    bool framebuffersSupported = true;
};

} // namespace Zelkor
