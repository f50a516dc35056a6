// Rectangles, pictures and texts.
#pragma once

#include "gui/GuiObject.h"

namespace Zelkor {

// Flat colour.
class GuiRect final : public GuiObject {
  public:
    GuiRect(const Vec3& at, float wide, float high)
        : GuiObject(GuiKind::rect, at, wide, high) {}
};

class GuiBitmap final : public GuiObject {
  public:
    GuiBitmap(const Vec3& at, float wide, float high)
        : GuiObject(GuiKind::bitmap, at, wide, high) {}

    void setTexture(const std::string& name) override;
    void setTextureRect(float left, float top, float right, float bottom) override;
    void setCorners(const GuiCorners& corners) override { corners_ = corners; }
    int textureHandle() const override { return texture_; }
    GuiCorners* textureData() override { return &corners_; }
    int resourceHandle() const override { return texture_; }

  private:
    int texture_ = -1;
    GuiCorners corners_{0, 0, 1, 0, 0, 1, 1, 1};
};

// Lines of letters set edge to edge; "\n" begins the next one. Spaces are written "_" in the files of fonts,
// and "_" reads as a space.
class GuiText final : public GuiObject {
  public:
    GuiText(const Vec3& at, float wide, float high)
        : GuiObject(GuiKind::text, at, wide, high) {}

    float textWidth() const override;
    void setText(const std::string& text) override { text_ = text; }
    void setTextParam(float value) override { textParam_ = value; }
    void setCharHeight(float value) override { charHeight_ = value; }
    void setFont(const std::string& name) override;
    bool textFlag() const override { return textFlag_; }
    void setTextFlag(bool value) override { textFlag_ = value; }
    int resourceHandle() const override { return font_; }
    float textParam() const override { return textParam_; }
    float charHeight() const override { return charHeight_; }
    std::string text() const override { return text_; }
    // Without the copy.
    const std::string& characters() const { return text_; }

  private:
    int font_ = 0; // none
    bool textFlag_ = false;
    std::string text_;
    float textParam_ = 20;
    float charHeight_ = 1;
};

// left, top, right, bottom as the four corners of a picture.
GuiCorners cornersOf(float left, float top, float right, float bottom);

} // namespace Zelkor
