// The list of textures: pictures of "data/textures/", empty ones made at run time and the colour textures of
// render targets. Indices stay valid for the life of the list; records are never removed.
#pragma once

#include "render/Image.h"
#include "render/Material.h"

#include <string>
#include <vector>

namespace Zelkor {

struct Texture {
    static constexpr int fromFile = -1;

    unsigned glName = 0;
    std::string name;          // as requested: no folder, no extension
    int width = 0, height = 0; // pixels
    bool loaded = false;       // the GL object exists
    int renderTarget = -1;     // the render target that owns it, -1 for none
    TextureKind kind = TextureKind::flat;
    int emptyFormat = fromFile; // of a texture made by create; such a one has no file
};

class TextureList {
  public:
    // Reads the named picture into a new record, or into slot when that is an index. -1 when there is no such
    // picture.
    int load(const std::string& name, TextureKind kind, int slot);
    // The first record of that name, or a newly loaded one.
    int get(const std::string& name, TextureKind kind);
    // A texture of unspecified contents. format 0: RGBA bytes, 1: depth, 2: 16-bit float RGB.
    int createEmpty(const std::string& name, int format, int width, int height);
    // A record for a texture that a render target makes.
    int addForTarget(const std::string& name, int target);
    // Makes the GL object of a record again, unless it belongs to a render target.
    void restore(int index);
    // Deletes every GL object; each is made again at its next use.
    void release();

    bool contains(int index) const { return index >= 0 && index < static_cast<int>(textures_.size()); }
    Texture& operator[](int index) { return textures_[static_cast<std::size_t>(index)]; }

  private:
    void makeEmpty(Texture& texture);

    std::vector<Texture> textures_;
};

} // namespace Zelkor
