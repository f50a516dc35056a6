#include "FullscreenKeys.h"

#include "Platform.h"
#include "game/Settings.h"
#include "input/ControllerManager.h"
#include "render/Renderer.h"

#include <algorithm>

void FullscreenKeys::toggle(Zelkor::Renderer& renderer, Settings& settings,
                            Zelkor::ControllerManager& controllers) {
    const auto desktop = platform::current()->currentDisplayMode();
    if (!desktop) return; // nothing that could be filled
    if (renderer.fullscreen) {
        renderer.setDisplayMode(false, std::min(windowWidth_, desktop->width),
                                std::min(windowHeight_, desktop->height));
    } else {
        windowWidth_ = renderer.windowWidth;
        windowHeight_ = renderer.windowHeight;
        renderer.setDisplayMode(true, desktop->width, desktop->height);
    }
    settings.followDisplay();
    controllers.clearAll(); // key-up messages can be lost during the switch
}
