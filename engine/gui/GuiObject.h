// The flat things on the screen: one interface for all of them, in which every class answers only for the
// properties it has.
#pragma once

#include "math/Math.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace Zelkor {

class GuiObject;
using GuiChildren = std::vector<std::unique_ptr<GuiObject>>;

enum class GuiKind { rect = 1, bitmap = 2, text = 3, panel = 4, sprite = 5, tileArray = 6 };

// Texture coordinates of four corners: top-left, top-right, bottom-left, bottom-right, u before v.
using GuiCorners = std::array<float, 8>;

class GuiObject {
  public:
    // Position and size in the units of the workspace: fractions of the viewport on a screen, y down.
    GuiObject(GuiKind what, const Vec3& at, float wide, float high)
        : position(at), width(wide), height(high), kind(what) {}
    virtual ~GuiObject() = default;
    GuiObject(const GuiObject&) = delete;

    // --- The virtual operations, in their fixed order. -----------------------------------------------------
    // Width of the text were it set one unit high: its place on the screen is textExtent wide.
    virtual float textWidth() const { return 0; }
    virtual void setTexture(const std::string&) {}
    // Left, top, right, bottom in the texture: all four corners.
    virtual void setTextureRect(float, float, float, float) {}
    virtual void setCorners(const GuiCorners&) {}
    virtual int textureHandle() const { return -1; }
    // The corners that are drawn, null for objects without a picture.
    virtual GuiCorners* textureData() { return nullptr; }
    virtual void setText(const std::string&) {}
    // Height of a line, in the units of the workspace.
    virtual void setTextParam(float) {}
    // Width of the letters relative to their height: 1 over the aspect of the screen keeps their shape.
    virtual void setCharHeight(float) {}
    virtual void setFont(const std::string&) {}
    virtual bool textFlag() const { return false; }
    virtual void setTextFlag(bool) {}
    // The font of a text, 0 for none; the texture of a bitmap.
    virtual int resourceHandle() const { return 0; }
    virtual float textParam() const { return 0; }
    virtual float charHeight() const { return 0; }
    virtual std::string text() const { return {}; }
    // Null for objects that have none.
    virtual const GuiChildren* children() const { return nullptr; }
    // The new object, owned here; null for kinds that do not exist.
    virtual GuiObject* createChild(GuiKind, float, float, float, float, float) { return nullptr; }
    // Deletes it; one that is not among the children is left alone.
    virtual void removeChild(const GuiObject*) {}
    virtual void deleteChildren() {}

    Vec3 position; // relative to the parent; z is the depth, larger is nearer
    float width, height;
    Vec4 colour{1, 1, 1, 1}; // multiplies the picture, and the colours of the children
    float angle = 0;         // radians, about the top left corner
    const GuiKind kind;
    bool visible = true; // if not, neither are the children
    int drawMode = 3;    // a BlendMode, and 0x100 for no depth test; decides the pass, see GuiDrawList
    int drawFlag = 1;    // 0: nearest texels, else linear
};

// Width of the text on its workspace: textWidth times the height of a line.
inline float textExtent(const GuiObject& object) {
    return object.textParam() * object.textWidth();
}

// Plays the animations of every sprite below and including this object on by so many seconds.
void advanceSprites(GuiObject& object, float seconds);

} // namespace Zelkor
