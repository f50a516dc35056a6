// The sections of the profiler and the objects that measure them.
#pragma once

#include <array>
#include <string_view>

namespace Zelkor {

enum class ProfileId {
    renderPostEffect = 4,
    renderGui = 5,
    updateRenderLists = 6,
    renderUnit = 7,
    renderDebug = 8,
    updateSkeleton = 9,
    updateAnimations = 10,
    frame = 11,
    renderMesh = 12,
    renderGuiObject = 13,
    updateGuiList = 15,
    addToGuiList = 16,
    processGuiText = 17,
    allocateGuiTextData = 18,
    update = 19,
    copyTexture = 21,
    setMaterial = 34,
    getUniformLocation = 35,
};

// As the overlay shows it; empty for ids without a section.
std::string_view profileName(int id);

// Measures from here to the end of the scope; nothing while there is no DebugManager.
class ProfileSection {
  public:
    explicit ProfileSection(ProfileId id);
    ~ProfileSection();
    ProfileSection(const ProfileSection&) = delete;

  private:
    class DebugManager* manager_;
};

} // namespace Zelkor
