// Where trees of interface objects live: flat on the screen, or on a plane in the world.
#pragma once

#include "gui/GuiPanel.h"

#include <array>
#include <memory>

namespace Zelkor {

class GuiWorkspace {
  public:
    virtual ~GuiWorkspace();
    GuiWorkspace(const GuiWorkspace&) = delete;

    // Owner and parameters are only kept.
    virtual void setScreen(void*, const std::array<float, 3>&, float, float) {}
    virtual void setScene(void*, const std::array<float, 2>&, const Quat&, const Vec3&) {}
    // Prepares the renderer for the objects; before each drawGuiWorkspace.
    virtual void begin() = 0;
    // Whether it lies in the world, under the camera's view.
    virtual bool inScene() const { return false; }

    GuiPanel root{{0, 0, 0}, 1, 1};
    void* owner = nullptr;

  protected:
    // registered: from now on the overlay manager draws it every frame.
    explicit GuiWorkspace(bool registered);
};

// x and y in fractions of the viewport, (0, 0) top left, y down.
class GuiScreenWorkspace final : public GuiWorkspace {
  public:
    // The whole screen.
    explicit GuiScreenWorkspace(bool registered) : GuiScreenWorkspace(nullptr, {}, 1, 1, registered) {}
    GuiScreenWorkspace(void* owner, const std::array<float, 3>& parameters, float width, float height,
                       bool registered);

    void setScreen(void* newOwner, const std::array<float, 3>& newParameters, float newWidth,
                   float newHeight) override;
    void begin() override;

    std::array<float, 3> parameters{};
    float width = 1, height = 1;
};

// Units of the world, y along the plane's second axis.
class GuiSceneWorkspace final : public GuiWorkspace {
  public:
    GuiSceneWorkspace(void* owner, const std::array<float, 2>& parameters, const Quat& rotation,
                      const Vec3& position, bool registered);

    void setScene(void* newOwner, const std::array<float, 2>& newParameters, const Quat& newRotation,
                  const Vec3& newPosition) override;
    void begin() override {}
    bool inScene() const override { return true; }

    std::array<float, 2> parameters{};
    Vec3 position;
    Quat rotation;
};

} // namespace Zelkor
