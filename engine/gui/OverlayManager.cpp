#include "gui/OverlayManager.h"

#include "core/EngineManagers.h"
#include "gui/GuiWorkspace.h"
#include "io/DataFiles.h"
#include "io/TokenReader.h"
#include "render/GuiDrawing.h"
#include "render/Renderer.h"

#include <algorithm>

namespace Zelkor {

void OverlayManager::addWorkspace(GuiWorkspace& workspace) {
    workspaces_.push_back(&workspace);
}

void OverlayManager::removeWorkspace(const GuiWorkspace& workspace) {
    std::erase(workspaces_, &workspace);
}

void OverlayManager::bringToFront(GuiWorkspace& workspace) {
    const auto found = std::find(workspaces_.begin(), workspaces_.end(), &workspace);
    if (found != workspaces_.end()) std::rotate(found, found + 1, workspaces_.end());
}

const SpriteDef* OverlayManager::spriteDef(const std::string& name) {
    for (const SpriteDef& def : spriteDefs_)
        if (def.name == name) return &def;
    const auto reader = openDataTokens("spritedef/" + name + ".spritedef");
    if (!reader) return nullptr;
    SpriteDef& def = spriteDefs_.emplace_back(readSpriteDef(*reader));
    def.name = name;
    if (!def.textureName.empty()) def.texture = engineManagers()->renderer->getTexture(def.textureName);
    return &def;
}

void OverlayManager::update(float seconds) {
    for (GuiWorkspace* workspace : workspaces_)
        advanceSprites(workspace->root, seconds);
}

void OverlayManager::draw() {
    // A screen's begin takes the camera's view away.
    for (const bool inScene : {true, false})
        for (GuiWorkspace* workspace : workspaces_) {
            if (workspace->inScene() != inScene) continue;
            // What lies in the world is drawn with its pencils.
            drawBothPasses(*workspace, inScene);
        }
}

} // namespace Zelkor
