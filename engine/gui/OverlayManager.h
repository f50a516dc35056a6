// The GUI workspaces and the order in which they are drawn; the definitions of sprites.
#pragma once

#include "gui/SpriteDef.h"

#include <list>
#include <string>
#include <vector>

namespace Zelkor {

class GuiWorkspace;

class OverlayManager {
  public:
    // Workspaces are not owned; they add and remove themselves. Later ones cover earlier ones of equal depth.
    void addWorkspace(GuiWorkspace& workspace);
    void removeWorkspace(const GuiWorkspace& workspace);
    // Draws it after the others from now on.
    void bringToFront(GuiWorkspace& workspace);
    const std::vector<GuiWorkspace*>& workspaces() const { return workspaces_; }

    // "data/spritedef/" + name + ".spritedef", read once; valid as long as the manager. Null while there is no
    // such file: the next call looks again.
    const SpriteDef* spriteDef(const std::string& name);

    // Plays the sprites of all workspaces on.
    void update(float seconds);
    // Once a frame, over the finished scene whose depth has been cleared and whose camera is still applied:
    // first what lies in the world, then the screens.
    void draw();

  private:
    std::vector<GuiWorkspace*> workspaces_;
    std::list<SpriteDef> spriteDefs_; // sprites keep pointers
};

} // namespace Zelkor
