#include "MenuView.h"

#include "render/GlRenderer.h"
#include "render/MaterialManager.h"
#include "resources/Unit.h"

#include <cstdio>

using namespace Zelkor;

namespace viewer {

namespace {

// Of the 100 units that the menus' camera sees at z = 0; the stage's shows 96.46.
constexpr Vec3 middle{0, 50, 0};
constexpr float zoom = 0.9646f;

Vec3 placeOf(const std::string& description) {
    Vec3 place;
    const std::size_t at = description.find('@');
    if (at != std::string::npos) std::sscanf(description.c_str() + at, "@%f,%f", &place.x, &place.y);
    return place;
}

} // namespace

bool writeMenuView(Studio& studio, const MenuViewOptions& options) {
    for (const std::string& description : options.units) {
        const std::string name = description.substr(0, description.find('@'));
        Unit* unit = studio.scene.createUnit(name);
        if (unit->items.empty()) {
            std::fprintf(stderr, "rustpike-viewer: there is no unit %s\n", name.c_str());
            return false;
        }
        unit->position = placeOf(description);
        for (RenderItem& item : unit->items)
            MaterialManager::setShaderParam(item.ownMaterial(), "erase", options.erase);
    }
    studio.aim(middle, zoom);
    studio.renderer().present(); // clears
    studio.draw();
    if (studio.renderer().readFramebuffer().writePng(options.file)) return true;
    std::fprintf(stderr, "rustpike-viewer: cannot write %s\n", options.file.c_str());
    return false;
}

} // namespace viewer
