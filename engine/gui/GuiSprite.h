// A picture that plays the animations of its definition.
#pragma once

#include "gui/GuiObject.h"
#include "gui/SpriteDef.h"

namespace Zelkor {

class GuiSprite final : public GuiObject {
  public:
    GuiSprite(const Vec3& at, float wide, float high)
        : GuiObject(GuiKind::sprite, at, wide, high) {}

    // Takes texture and size of the definition, which must outlive the sprite, and plays its first animation.
    // Null: no picture.
    void setDefinition(const SpriteDef* def);
    const SpriteDef* definition() const { return def_; }

    // Plays from the first frame. An animation that is already playing goes on undisturbed, so that this can
    // be called every frame. False when the definition has none of that name: the old one goes on.
    bool setAnimation(const std::string& name);
    // The one playing, changed by redirections; empty for none.
    const std::string& animation() const { return animationName_; }
    // The last frame of an animation that neither loops nor redirects has been shown for its time.
    bool finished() const { return finished_; }
    // The part of the texture that is shown.
    int cell() const { return cell_; }
    // Plays on by so many seconds, times speed.
    void advance(float seconds);

    void setTexture(const std::string& name) override;
    int textureHandle() const override { return texture_; }
    GuiCorners* textureData() override { return &corners_; }

    float speed = 1; // below 0 as 0

  private:
    void begin(const SpriteAnimation& animation);
    float skipWholeLoops(float seconds) const;
    void showCell(int cell);

    int texture_ = -1;
    const SpriteDef* def_ = nullptr;
    const SpriteAnimation* playing_ = nullptr;
    std::string animationName_;
    float time_ = 0; // seconds into the frame
    std::size_t frame_ = 0;
    int cell_ = 0;
    bool finished_ = false;
    GuiCorners corners_{0, 0, 1, 0, 0, 1, 1, 1};
};

} // namespace Zelkor
