#include "gui/GuiWorkspace.h"

#include "core/EngineManagers.h"
#include "gui/OverlayManager.h"
#include "render/Renderer.h"

namespace Zelkor {

GuiWorkspace::GuiWorkspace(bool registered) {
    if (registered) engineManagers()->overlayManager->addWorkspace(*this);
}

GuiWorkspace::~GuiWorkspace() {
    if (engineManagers() && engineManagers()->overlayManager)
        engineManagers()->overlayManager->removeWorkspace(*this);
}

GuiScreenWorkspace::GuiScreenWorkspace(void* of, const std::array<float, 3>& values, float wide, float high,
                                       bool registered)
    : GuiWorkspace(registered) {
    GuiScreenWorkspace::setScreen(of, values, wide, high);
}

void GuiScreenWorkspace::setScreen(void* newOwner, const std::array<float, 3>& newParameters, float newWidth,
                                   float newHeight) {
    owner = newOwner;
    parameters = newParameters;
    root.width = width = newWidth;
    root.height = height = newHeight;
}

void GuiScreenWorkspace::begin() {
    Renderer& renderer = *engineManagers()->renderer;
    renderer.setViewport(0, 0, 1, 1);
    renderer.begin2D();
}

GuiSceneWorkspace::GuiSceneWorkspace(void* of, const std::array<float, 2>& values, const Quat& turn,
                                     const Vec3& at, bool registered)
    : GuiWorkspace(registered) {
    GuiSceneWorkspace::setScene(of, values, turn, at);
}

void GuiSceneWorkspace::setScene(void* newOwner, const std::array<float, 2>& newParameters,
                                 const Quat& newRotation, const Vec3& newPosition) {
    owner = newOwner;
    parameters = newParameters;
    rotation = newRotation;
    position = newPosition;
}

} // namespace Zelkor
