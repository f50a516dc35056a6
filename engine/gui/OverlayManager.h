// The GUI workspaces and the order in which they are drawn.
#pragma once

namespace Zelkor {

class OverlayManager {};

} // namespace Zelkor
