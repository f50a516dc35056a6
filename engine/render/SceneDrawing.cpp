#include "render/SceneDrawing.h"

#include "animation/SkeletonInstance.h"
#include "core/EngineManagers.h"
#include "core/ProfileSections.h"
#include "fx/ParticleManager.h"
#include "render/RenderLists.h"
#include "render/Renderer.h"
#include "resources/Scene.h"
#include "resources/UnitManager.h"

namespace Zelkor {

namespace {

// Changes a material for one draw.
class PassOverride {
  public:
    // A surface that is both tested and blended is drawn twice: its solid part in the main pass, its
    // translucent rim in the special one.
    PassOverride(Material& material, bool special) : material_(material), saved_(material.blendMode) {
        material_.specialAlpha = special;
        if (special) return;
        material_.blendMode = BlendMode::opaque;
        material_.alphaTest = true;
    }
    ~PassOverride() {
        material_.blendMode = saved_;
        material_.alphaTest = true;
    }
    PassOverride(const PassOverride&) = delete;

  private:
    Material& material_;
    BlendMode saved_;
};

void renderItem(RenderItem& item, Unit& unit, bool special) {
    Renderer& renderer = *engineManagers()->renderer;
    Material& material = item.drawnMaterial();
    if (!material.alphaTest || material.blendMode == BlendMode::opaque) {
        renderer.renderMesh(item, unit);
        return;
    }
    unit.inMainList = unit.inSpecialList = true;
    PassOverride pass(material, special);
    renderer.renderMesh(item, unit);
}

void pushJoint(const Unit& unit, int joint) {
    const Mat4& skin = unit.skeleton->skinMatrices[static_cast<std::size_t>(joint)];
    Quat rotation;
    quatFromMat3(rotation, Mat3{{skin.m[0], skin.m[1], skin.m[2], skin.m[4], skin.m[5], skin.m[6], skin.m[8],
                                 skin.m[9], skin.m[10]}});
    quatNormalize(rotation);
    engineManagers()->renderer->pushTransform({skin.m[3], skin.m[7], skin.m[11]}, rotation, {1, 1, 1});
}

bool attachedToJoint(const RenderItem& item, const Unit& unit) {
    return item.joint >= 0 && unit.skeleton &&
           item.joint < static_cast<int>(unit.skeleton->skinMatrices.size());
}

} // namespace

void renderUnit(Unit& unit, const Scene& scene, const Camera& camera, bool special) {
    ProfileSection section(ProfileId::renderUnit);
    Renderer& renderer = *engineManagers()->renderer;
    renderer.setupLights(scene, unit);
    renderer.pushTransform(unit.position, unit.orientation, unit.scale);
    for (RenderItem& item : unit.items) {
        const bool onJoint = attachedToJoint(item, unit);
        if (onJoint) pushJoint(unit, item.joint);
        renderItem(item, unit, special);
        if (!onJoint) continue;
        renderer.applyCamera(camera);
        renderer.pushTransform(unit.position, unit.orientation, unit.scale);
    }
    renderer.applyCamera(camera);
}

void renderScene(Scene& scene, Camera& camera) {
    EngineManagers& managers = *engineManagers();
    Renderer& renderer = *managers.renderer;
    camera.scene = &scene;
    // The background stands behind everything and has a projection of its own, which it resets.
    if (camera.backgroundShader >= 0 || camera.backgroundTexture >= 0) {
        renderer.beginScene(camera);
        renderer.applyCamera(camera);
        renderer.renderBackground(camera);
    }
    renderer.beginScene(camera);
    renderer.applyCamera(camera);

    RenderLists lists;
    lists.update(scene, camera, managers.unitManager->frameNumber);
    renderer.drawnUnits = static_cast<int>(lists.main.size() + lists.special.size());
    if (renderer.sceneHidden) return;
    // Solid things near to far, so that what they hide is never shaded; then what shows things through it,
    // far to near.
    for (Unit* unit : lists.main)
        renderUnit(*unit, scene, camera, false);
    for (Unit* unit : lists.special)
        renderUnit(*unit, scene, camera, true);
    // Over all of it: smoke is tested against what is solid, and nothing is tested against smoke.
    if (scene.showsEffects) managers.particleManager->render(renderer);
}

} // namespace Zelkor
