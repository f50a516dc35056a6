// The renderer over OpenGL: owns the window, its context and everything that lives in it. Without a context
// (before init, or when a window could not be made again) every operation is harmless.
#pragma once

#include "Platform.h"
#include "fx/Billboards.h"
#include "render/Image.h"
#include "render/RenderLists.h"
#include "render/RenderTarget.h"
#include "render/Renderer.h"
#include "render/ShaderTable.h"
#include "render/Texture.h"

#include <memory>
#include <string>
#include <vector>

namespace Zelkor {

// What the program asks of the context that is current.
struct GlCapabilities {
    bool entryPoints = false;  // those beyond OpenGL 1.1 could be looked up; the rest is known only then
    bool shaders = false;      // OpenGL 2.0
    bool framebuffers = false; // framebuffer objects
};

// Looks the entry points up.
GlCapabilities probeContext();

class GlRenderer final : public Renderer {
  public:
    using Probe = GlCapabilities (*)();
    explicit GlRenderer(Probe probe = probeContext) : probe_(probe) {}

    // --- Window and context ---
    bool init(const std::string& title, int width, int height, int bits, bool fullscreen) override;
    void setDisplayMode(bool fullscreen, int width, int height) override;
    void resize(int width, int height) override;
    // What the window does about a message. False: nothing of ours.
    bool handleMessage(const platform::Message& message);
    bool isInactive() override { return !active; }
    bool hasFocus() const override { return focused; }
    void setFocus(bool value) override { focused = value; }
    // Null while there is none.
    platform::Window* window() const { return window_.get(); }

    // --- Frame and view ---
    // Shows the frame and clears the next one. While captureFrame is set, keeps a copy in capturedFrame.
    void present() override;
    void setViewport(float x, float y, float width, float height) override;
    void resetProjection() override;
    void beginScene(const Camera& camera) override;
    void pushTransform(const Vec3& position, const Quat& orientation, const Vec3& scale) override;
    void setViewTransform(const Vec3& position, const Quat& orientation, const Vec3& scale) override;
    void applyCamera(const Camera& camera) override;
    void begin2D() override;
    void clearDepth() override;
    void drawLine(const Vec3& from, const Vec3& to, const Vec3& colour) override;
    void drawLines(const ColouredLine* lines, int count) override;
    int getMaxTextureSize() override;
    // What has been drawn into the current target so far: red, green and blue, top row first.
    Image readFramebuffer();
    bool captureFrame = false;
    Image capturedFrame;

    // --- Shaders ---
    int loadShader(const std::string& name) override;
    void reloadShaders(const std::string& prefix) override;
    // Binds a program and sets its uniforms that depend on nothing drawn; an index outside the table unbinds.
    void useShader(int index);
    // The location of a uniform of the bound program, -1 when it has no such uniform.
    int getUniformLoc(const std::string& name);
    const ShaderTable& shaders() const { return shaders_; }

    // --- Textures and targets ---
    int loadTexture(const std::string& name, TextureKind kind, int slot) override;
    int getTexture(const std::string& name, TextureKind kind = TextureKind::flat) override;
    int getTextureByName(const std::string& name) override { return getTexture(name); }
    int createTexture(const std::string& name, int format, int width, int height) override;
    void copyTexture(int texture, const Vec2& position, bool depth, bool clear) override;
    void getTextureSize(int texture, int& width, int& height) override;
    // To the flat target of the current unit, made again first if it was released.
    void bindTexture(int index);
    void disableTexturing();
    TextureList& textures() { return textures_; }
    int createRenderTarget(const std::string& name, int width, int height) override;
    void bindRenderTarget(int index, bool clear) override;
    void bindPostBuffer(int index) override { bindRenderTarget(index, false); }
    void resizeRenderTarget(int index, int width, int height) override;
    const RenderTarget& renderTarget(int index) { return targets_[index]; }

    // --- Drawing ---
    void applyMaterialState(Material& material) override;
    // The blending, depth-write, fog and alpha-test state of a mode, as materials, particles and interface
    // items use it.
    void applyBlendState(BlendMode mode, bool alphaTest, float alphaRef);
    void setupLights(const Scene& scene, Unit& unit) override;
    void renderMesh(RenderItem& item, Unit& unit) override;
    // Only the triangles, from their arrays, in whatever state is current.
    static void drawItem(const RenderItem& item, const VertexData& vertices);
    void renderBackground(const Camera& camera) override;
    void renderPostEffect(const PostEffectParameters& effect) override;
    int createMeshBuffer(const Submesh&) override { return -1; }
    // Shadow casters of the lights last set up, 0..4.
    int shadowCasterCount() const { return shadowCasterCount_; }

    // Draws guiList.
    void renderGuiObject(bool tint) override;
    void renderParticles(ParticleSystem& system) override;
    void drawBillboards(const BillboardVertex* first, int count, Material& material,
                        BlendMode blend) override;

    // Nothing calls the first, and the second belongs to a shadow pass, which is never drawn.
    void buildStaticBatch(const Scene&) override {}
    void renderStaticBatch(int) override {}

  private:
    struct Viewport {
        float x = 0, y = 0, width = 1, height = 1; // pixels
    };

    // Window and context.
    bool createWindow(int width, int height);
    // Switches the display; asks what to do when it cannot. False: the player wants to stop.
    bool enterFullscreen(int width, int height, int bits);
    bool askAboutMissingFeatures();
    void destroyWindow();
    void releaseContextResources();
    void setInitialState(int width, int height);
    void activate(bool front);

    // View.
    void selectProjection();
    void resetProjectionForWindow();
    void beginLines();
    void endLines();
    RenderTarget& currentTarget() { return targets_[currentTarget_]; }
    bool canUseFramebuffers() const;

    // Materials.
    void uploadParameters(Material& material);
    void uploadColours(const Material& material);
    void bindTextureUnits(const Material& material);
    void bindTextureUnit(const TextureUnit& unit, int index);
    const ShaderProgram* boundProgram() const;

    void setGuiTexture(const GuiBatch& batch);

    // Meshes.
    Material& edgeMaterial();
    Material& materialInUse(RenderItem& item, const Unit& unit);
    void beginSilhouette(const Vec4& colour);
    void endSilhouette();

    Probe probe_;
    std::unique_ptr<platform::Window> window_;
    platform::DisplayMode savedMode_; // of the full screen, taken up again when the program comes back
    ShaderTable shaders_;
    int boundShader_ = -1;
    TextureList textures_;
    int texturedUnits_ = 0; // units from this one on are off
    RenderTargets targets_;
    int currentTarget_ = 0;
    Viewport viewport_;
    bool projectionPushed_ = false;
    Vec3 cameraPosition_; // of applyCamera
    Quat cameraOrientation_;
    int lightCount_ = 0;
    int shadowCasterCount_ = 0;
    Material* edge_ = nullptr;
    std::vector<BillboardVertex> billboards_; // of the particle system drawn last
    bool outlining_ = false;
    int guiBatchesInFrame_ = 0; // drawn since the last present
};

} // namespace Zelkor
