// Drawing a workspace by the renderer of the engine.
#pragma once

namespace Zelkor {

class GuiWorkspace;

// After the workspace's begin. pass: 0 for what is opaque, then 1 for what is blended, see drawnInPass. tint:
// blended colours are toned down to the pencil's where they go straight to the window.
void drawGuiWorkspace(GuiWorkspace& workspace, int pass, bool tint);

// begin and pass 0, begin and pass 1.
void drawBothPasses(GuiWorkspace& workspace, bool tint);

} // namespace Zelkor
