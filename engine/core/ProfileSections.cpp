#include "core/ProfileSections.h"

#include "core/DebugManager.h"
#include "core/EngineManagers.h"

namespace Zelkor {

namespace {

constexpr int profileIdCount = 36;

constexpr auto profileNames = [] {
    std::array<std::string_view, profileIdCount> names{};
    const auto set = [&names](ProfileId id, std::string_view name) {
        names[static_cast<std::size_t>(id)] = name;
    };
    set(ProfileId::renderPostEffect, "render_postEffect");
    set(ProfileId::renderGui, "render_gui");
    set(ProfileId::updateRenderLists, "updateRenderLists");
    set(ProfileId::renderUnit, "RenderUnit");
    set(ProfileId::renderDebug, "render_debug");
    set(ProfileId::updateSkeleton, "updateSkeleton");
    set(ProfileId::updateAnimations, "updateAnimations");
    set(ProfileId::frame, "Frame");
    set(ProfileId::renderMesh, "RenderMesh");
    set(ProfileId::renderGuiObject, "render_guiObj");
    set(ProfileId::updateGuiList, "updateGuiList");
    set(ProfileId::addToGuiList, "addToGuiList");
    set(ProfileId::processGuiText, "processGUIText");
    set(ProfileId::allocateGuiTextData, "allocateGuiTextData");
    set(ProfileId::update, "update");
    set(ProfileId::copyTexture, "copytexture");
    set(ProfileId::setMaterial, "set_material");
    set(ProfileId::getUniformLocation, "getUniformLoc");
    return names;
}();

} // namespace

std::string_view profileName(int id) {
    return id >= 0 && id < profileIdCount ? profileNames[static_cast<std::size_t>(id)] : std::string_view();
}

ProfileSection::ProfileSection(ProfileId id)
    : manager_(engineManagers() ? engineManagers()->debugManager.get() : nullptr) {
    if (manager_) manager_->beginSection(id);
}

ProfileSection::~ProfileSection() {
    if (manager_) manager_->endSection();
}

} // namespace Zelkor
