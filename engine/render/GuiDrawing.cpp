#include "render/GuiDrawing.h"

#include "core/EngineManagers.h"
#include "gui/GuiWorkspace.h"
#include "render/Renderer.h"

namespace Zelkor {

void drawGuiWorkspace(GuiWorkspace& workspace, int pass, bool tint) {
    Renderer& renderer = *engineManagers()->renderer;
    renderer.guiList.clear();
    renderer.guiList.updateGuiList(workspace, pass);
    if (renderer.guiList.order().empty()) return;
    if (!workspace.inScene()) {
        renderer.renderGuiObject(tint);
        return;
    }
    const auto& scene = static_cast<const GuiSceneWorkspace&>(workspace);
    renderer.pushTransform(scene.position, scene.rotation, {1, 1, 1});
    renderer.renderGuiObject(tint);
    const Camera view = renderer.currentCamera;
    renderer.applyCamera(view); // takes the transform away
}

void drawBothPasses(GuiWorkspace& workspace, bool tint) {
    for (const int pass : {0, 1}) {
        workspace.begin();
        drawGuiWorkspace(workspace, pass, tint);
    }
}

} // namespace Zelkor
